// SPDX-License-Identifier: MIT
#include "output/frmprintpreview.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "output/pagesetup.h"
#include "output/pageview.h"
#include "output/previewgeometry.h"
#include "output/printerchoice.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"

#include <QCloseEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include <cmath>

namespace sixtrace {

namespace {

constexpr int kWidth = 760;
constexpr int kHeight = 640;
constexpr std::int32_t kPaperHeightA4 = 16840; // twips
constexpr std::int32_t kPaperWidthA4 = 11907;
constexpr double kDisplayDotsPerInch = 96;
constexpr Twips kKeyStep{600}; // that an arrow key moves the page by
/// The preview offers neither to print a selection nor to print to a file.
constexpr int kPreviewPrintFlags = PrinterDialog::kNoSelection | PrinterDialog::kDisablePrintToFile;
// The decimal mark of typed numbers is a point on every system.
constexpr NumberMarks kFieldMarks{};

QAction* addItem(QMenu& menu, const char* name, const QString& caption) {
    QAction* item = menu.addAction(caption);
    item->setObjectName(QLatin1String(name));
    return item;
}

QMenu* addMenu(QMenuBar& bar, const char* name, const QString& caption) {
    QMenu* menu = bar.addMenu(caption);
    menu->setObjectName(QLatin1String(name));
    menu->menuAction()->setObjectName(QLatin1String(name));
    return menu;
}

Twips rounded(Twips place) {
    return Twips(std::nearbyint(place.number()));
}

} // namespace

frmPrintPreview::frmPrintPreview(publicM& model, MdlPrinter& settings, PreviewScale& scale, Dialogs& dialogs,
                                 Printer& printer, std::function<void(QWidget& owner)> showSetup)
    : m_model(model)
    , m_settings(settings)
    , m_scale(scale)
    , m_dialogs(dialogs)
    , m_printer(printer)
    , m_showSetup(std::move(showSetup)) {
    setObjectName(QStringLiteral("frmPrintPreview"));
    setWindowTitle(QStringLiteral("打印预览"));
    menuBar()->setNativeMenuBar(false);
    menuBar()->setFixedHeight(kMenuBarHeight);
    makeMenus();
    m_frameA = new PageDesk(this);
    m_frameA->setObjectName(QStringLiteral("frameA"));
    setCentralWidget(m_frameA);
    m_imgView = new PageView(m_frameA);
    m_imgView->setObjectName(QStringLiteral("imgView(1)"));
    m_imgView->setAccessibleName(QStringLiteral("Page"));
    m_frameA->setPage(m_imgView);
    m_picPrint = new PageBox(kDisplayDotsPerInch * devicePixelRatioF(), this);
    m_picPrint->setObjectName(QStringLiteral("picPrint"));
    m_picPrint->page().showPicture = [this](const QImage& page) { m_imgView->setPicture(page); };
    for (const PagePointing* pointedAt :
         {static_cast<PagePointing*>(m_frameA), static_cast<PagePointing*>(m_imgView)}) {
        connect(pointedAt, &PagePointing::mouseDown, this, &frmPrintPreview::frameA_MouseDown);
        connect(pointedAt, &PagePointing::mouseMove, this, &frmPrintPreview::frameA_MouseMove);
    }
    resize(kWidth, kHeight);
    Form_Load();
}

void frmPrintPreview::makeMenus() {
    QMenu* mnuFile = addMenu(*menuBar(), "mnuFile", QStringLiteral("文件(&F)"));
    const auto on = [this](QAction* item, auto handler) { connect(item, &QAction::triggered, this, handler); };
    on(addItem(*mnuFile, "mnuSetup", QStringLiteral("页面设定 ...")), &frmPrintPreview::mnuSetup_Click);
    on(addItem(*mnuFile, "mnuPrint", QStringLiteral("打印 ...")), &frmPrintPreview::mnuPrint_Click);
    on(addItem(*mnuFile, "mnuClose", QStringLiteral("关闭")), &QWidget::close);
    m_mnuView = addMenu(*menuBar(), "mnuView", QStringLiteral("检视(&V)"));
    on(addItem(*m_mnuView, "mnuView100", QStringLiteral("100%")), &frmPrintPreview::mnuView100_Click);
    on(addItem(*m_mnuView, "mnuViewFullPage", QStringLiteral("整页")), &frmPrintPreview::mnuViewFullPage_Click);
    on(addItem(*m_mnuView, "mnuViewCustomize", QStringLiteral("自订百分比 ...")),
       &frmPrintPreview::mnuViewCustomize_Click);
    on(addItem(*m_mnuView, "mnuViewPage", QStringLiteral("切换页码 ...")), &frmPrintPreview::mnuViewPage_Click);
    QAction* mnuHelp = menuBar()->addAction(QStringLiteral("说明"));
    mnuHelp->setObjectName(QStringLiteral("mnuHelp"));
    on(mnuHelp, &frmPrintPreview::mnuHelp_Click);
}

void frmPrintPreview::Form_Load() {
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    takePaper();
    m_imgView->setSize(Twips(m_settings.PaperWidth), Twips(m_settings.PaperHeight));
    m_scale.BaseZoom = m_scale.baseZoom(); // it is 0 before the first use of the page setup
    if (!m_scale.RePrintOnZoom) {
        compose(m_scale.BaseZoom);
    }
    mnuView100_Click();
}

/// Takes the size of the printer's sheet, or A4 without a printer.
void frmPrintPreview::takePaper() {
    m_settings.PaperHeight = kPaperHeightA4;
    m_settings.PaperWidth = kPaperWidthA4;
    if (const auto sheet = m_printer.sheet(); sheet && sheet.value().Width > 0 && sheet.value().Height > 0) {
        m_settings.PaperHeight = sheet.value().Height;
        m_settings.PaperWidth = sheet.value().Width;
    }
}

void frmPrintPreview::showPresent() {
    const std::int32_t width = m_settings.PaperWidth;
    const std::int32_t height = m_settings.PaperHeight;
    takePaper();
    compose(m_scale.RePrintOnZoom ? ViewPercent : m_scale.BaseZoom);
    if (m_settings.PaperWidth != width || m_settings.PaperHeight != height) {
        takeViewSize();
    }
}

/// After an error the preview shows what has been drawn so far, without a message.
void frmPrintPreview::compose(std::int32_t percent) {
    if (m_settings.PreviewOwner == nullptr) {
        return;
    }
    PicturePage& picPrint = m_picPrint->page();
    const Outcome done = m_settings.PreviewOwner->PrintResult(picPrint, percent);
    if (!done) {
        qCDebug(printLog) << "Preview:" << done.error().code() << done.error().description;
        m_imgView->setPicture(picPrint.Image());
    }
}

Twips frmPrintPreview::windowWidth() const {
    return twipsOfPixels(width());
}
Twips frmPrintPreview::windowHeight() const {
    return twipsOfPixels(height() - kMenuBarHeight);
}

/// Gives the picture the size of the paper at the scale of the view, and places it.
void frmPrintPreview::takeViewSize() {
    m_imgView->setSize(Twips(m_settings.PaperWidth / 100.0 * ViewPercent),
                       Twips(m_settings.PaperHeight / 100.0 * ViewPercent));
    PlacePage();
}

void frmPrintPreview::applyScale() {
    if (m_scale.RePrintOnZoom) {
        compose(ViewPercent);
    }
    takeViewSize();
    changeCaption();
}

void frmPrintPreview::PlacePage() {
    m_imgView->Move(placeOnAxis(m_imgView->Width(), windowWidth()), placeOnAxis(m_imgView->Height(), windowHeight()));
}

void frmPrintPreview::changeCaption() {
    const bool chinese = m_model.LanguageId == 0;
    setWindowTitle((chinese ? QStringLiteral("打印预览") : QStringLiteral("Print preview")) +
                   (chinese ? QStringLiteral(" ( 显示比例：") : QStringLiteral(" ( Show Scale：")) +
                   QString::number(ViewPercent) + QStringLiteral("%)"));
}

void frmPrintPreview::mnuView100_Click() {
    ViewPercent = 100;
    applyScale();
}

void frmPrintPreview::mnuViewFullPage_Click() {
    ViewPercent =
        fullPagePercent(windowWidth(), windowHeight(), Twips(m_settings.PaperWidth), Twips(m_settings.PaperHeight));
    applyScale();
}

void frmPrintPreview::mnuViewCustomize_Click() {
    const bool chinese = m_model.LanguageId == 0;
    const QString prompt =
        chinese ? QStringLiteral("请输入欲显示的百分比，") : QStringLiteral("Please input the percent:");
    const QString refusal =
        chinese ? QStringLiteral("您输入的数值有误，请重新输入") : QStringLiteral("Input error ,please try again");
    for (;;) {
        const auto answer = m_dialogs.input(prompt, {}, QString::number(ViewPercent));
        if (!answer || answer->isEmpty()) {
            return;
        }
        if (const auto percent = viewPercentOfText(*answer, kFieldMarks)) {
            if (*percent != ViewPercent) {
                ViewPercent = *percent;
                applyScale();
            }
            return;
        }
        m_dialogs.message(refusal, MessageIcon::Critical);
    }
}

void frmPrintPreview::mnuViewPage_Click() {
    const auto answer = m_dialogs.input(QStringLiteral("请输入欲显示的页码，"), {}, QStringLiteral("1"));
    if (!answer || answer->isEmpty()) {
        return;
    }
    if (const auto page = pageOfText(*answer, PageCount, kFieldMarks)) {
        PageNow = *page;
        return;
    }
    m_dialogs.message(QStringLiteral("请输入大于 0 并且不大于 ") + QString::number(PageCount) +
                          QStringLiteral(" 之整数"),
                      MessageIcon::Critical);
}

void frmPrintPreview::mnuSetup_Click() {
    const auto noted = [this] {
        return std::array{m_settings.PrintMarginTop, m_settings.PrintMarginBottom, m_settings.PrintMarginLeft,
                          m_settings.PrintMarginRight, m_scale.BaseZoom};
    };
    const auto before = noted();
    m_showSetup(*this);
    if (noted() != before && !m_scale.RePrintOnZoom) {
        compose(m_scale.BaseZoom);
    }
    applyScale();
}

void frmPrintPreview::mnuPrint_Click() {
    const auto chosen = showPrinterForPreview(m_printer, kPreviewPrintFlags, winId());
    if (!chosen) {
        showPrintError(m_dialogs, chosen.error());
        return;
    }
    Outcome printed = success();
    for (int copy = 0; copy < chosen.value() && printed && m_settings.PreviewOwner != nullptr; ++copy) {
        printed = m_settings.PreviewOwner->PrintResult(m_printer, m_scale.BaseZoom);
    }
    // Each document was one copy; the setting of the user stays.
    setCopies(m_printer, chosen.value());
    if (!printed) {
        showPrintError(m_dialogs, printed.error());
    }
}

void frmPrintPreview::mnuHelp_Click() {
    const QStringList lines{
        QStringLiteral("1. 虚线是代表列印的边界，真正列印时不会印出来。"),
        QStringLiteral("2. 这个程式没有卷轴，但是用滑鼠拖曳图片就可以看到所有的列印资料。"),
        QStringLiteral("3.如果要在每次改变显示比例时都重新绘图，请至功能表的 /档案/版面设定/ 内设定。"),
        QStringLiteral("4. 在表单上按滑鼠右键亦可显示 \"检视\" 功能表。"),
    };
    m_dialogs.message(lines.join(QStringLiteral("\r\n")), MessageIcon::Plain);
}

void frmPrintPreview::frameA_MouseDown(Qt::MouseButton Button, Twips X, Twips Y) {
    X0 = rounded(X);
    Y0 = rounded(Y);
    if (Button == Qt::RightButton) {
        m_mnuView->popup(QCursor::pos());
    }
}

void frmPrintPreview::frameA_MouseMove(Qt::MouseButtons Button, Twips X, Twips Y) {
    if (!Button.testFlag(Qt::LeftButton)) {
        return;
    }
    movePage(X - X0, Y - Y0);
}

void frmPrintPreview::movePage(Twips dx, Twips dy) {
    const Twips left = m_imgView->Left();
    const Twips top = m_imgView->Top();
    m_imgView->Move(rounded(left) + dragOnAxis(dx, left, m_imgView->Width(), windowWidth()),
                    rounded(top) + dragOnAxis(dy, top, m_imgView->Height(), windowHeight()));
}

void frmPrintPreview::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        break;
    // The page moves against the direction of the key, so that the view moves in that direction.
    case Qt::Key_Left:
        movePage(kKeyStep, Twips{0});
        break;
    case Qt::Key_Right:
        movePage(-kKeyStep, Twips{0});
        break;
    case Qt::Key_Up:
        movePage(Twips{0}, kKeyStep);
        break;
    case Qt::Key_Down:
        movePage(Twips{0}, -kKeyStep);
        break;
    default:
        QMainWindow::keyPressEvent(event);
    }
}

void frmPrintPreview::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    PlacePage();
}

void frmPrintPreview::closeEvent(QCloseEvent* event) {
    m_scale = {};
    event->accept();
}

} // namespace sixtrace
