// SPDX-License-Identifier: MIT
#include "output/frmdata.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "output/tableview.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"
#include "platform/desktop/windowtofront.h"
#include "platform/files/filenames.h"
#include "platform/files/programfolder.h"
#include "platform/text/numbers.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>

namespace sixtrace {

namespace {

constexpr int kWidth = 760;
constexpr int kHeight = 560;
constexpr int kLeastHeight = 320;
constexpr int kMargin = 16;
constexpr int kUnitTop = 12;
constexpr int kUnitHeight = 20;
constexpr int kTableTop = 36;
constexpr int kFrameWidth = 520;
constexpr int kFrameHeight = 64;
constexpr int kButtonWidth = 92;
constexpr int kButtonHeight = 28;
constexpr int kGap = 8;
constexpr std::array<int, TableCells::kCols> kCheckLeft{16, 120, 192, 264, 328, 392, 456};
constexpr int kCheckTop = 26;

constexpr int kTimer1Interval = 1;
/// How long the fill may run in one turn of the event loop: less than a tenth of the time of a frame of the display.
constexpr qint64 kStretchNanoseconds = 500'000;
constexpr int kRowsBetweenLooks = 16; ///< rows that are filled between two looks at the clock

constexpr int kTextFilter = 1;
constexpr int kWorkbookFilter = 2;

} // namespace

frmData::frmData(publicM& model, Dialogs& dialogs)
    : m_model(model)
    , m_dialogs(dialogs)
    , m_cells(NumberMarks::system().decimal)
    , m_fill(m_cells, model) {
    setObjectName(QStringLiteral("frmData"));
    setWindowTitle(QStringLiteral("数值列表"));
    m_Label1 = new QLabel(kUnitCaption, this);
    m_Label1->setObjectName(QStringLiteral("Label1"));
    m_Label1->setTextFormat(Qt::PlainText);
    setInk(*m_Label1, bench::kMuted);
    makeTable();
    makeSaveFrame();
    makeSelectMenu();
    const auto addButton = [this](const char* name, const QString& caption) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        return button;
    };
    m_CmdSave = addButton("CmdSave", QStringLiteral("Save As ..."));
    m_CmdSave->setDefault(true);
    m_CmdExit = addButton("CmdExit", QStringLiteral("Exit"));
    connect(m_CmdSave, &QPushButton::clicked, this, &frmData::CmdSave_Click);
    connect(m_CmdExit, &QPushButton::clicked, this, &frmData::CmdExit_Click);
    setMinimumSize(kWidth, kLeastHeight);
    resize(kWidth, kHeight);
    m_Timer1.setObjectName(QStringLiteral("Timer1"));
    m_Timer1.setInterval(kTimer1Interval);
    m_Timer1.setSingleShot(true);
    connect(&m_Timer1, &QTimer::timeout, this, &frmData::Timer1_Timer);
    connect(&m_turns, &QTimer::timeout, this, &frmData::fillOn);
    Form_Load();
}

void frmData::makeTable() {
    m_tableModel = new TableModel(m_cells, this);
    m_MSFlexGrid1 = new TableView(this);
    m_MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    m_MSFlexGrid1->setAccessibleName(windowTitle());
    m_MSFlexGrid1->setModel(m_tableModel);
}

void frmData::makeSaveFrame() {
    m_Frame1 = new FramePanel(QStringLiteral("Save"), this);
    m_Frame1->setObjectName(QStringLiteral("Frame1"));
    m_Frame1->installEventFilter(this);
    constexpr std::array kCaptions{u"sequence", u" ch1", u" ch2", u" A", u" B", u" C", u" D"};
    for (std::size_t col = 0; col < m_SaveCheck.size(); ++col) {
        auto* box = new QCheckBox(QString::fromUtf16(kCaptions[col]), m_Frame1);
        box->setObjectName(QStringLiteral("SaveCheck(%1)").arg(col));
        const int right = col + 1 < kCheckLeft.size() ? kCheckLeft[col + 1] : kFrameWidth;
        box->setGeometry(kCheckLeft[col], kCheckTop, right - kCheckLeft[col], TableView::kRowHeight);
        box->setChecked(true);
        box->installEventFilter(this);
        m_SaveCheck[col] = box;
    }
}

void frmData::makeSelectMenu() {
    m_mnuSelect = new QMenu(QStringLiteral("Select"), this);
    m_mnuSelect->setObjectName(QStringLiteral("mnuSelect"));
    m_mnuSelect->menuAction()->setObjectName(m_mnuSelect->objectName());
    const auto addItem = [this](const char* name, const QString& caption, auto handler) {
        QAction* item = m_mnuSelect->addAction(caption, this, handler);
        item->setObjectName(QLatin1String(name));
    };
    addItem("mnuSelectAll", QStringLiteral("Select All"), &frmData::mnuSelectAll_Click);
    addItem("mnuSelectNone", QStringLiteral("Select None"), &frmData::mnuSelectNone_Click);
}

void frmData::Form_Load() {
    const QRect area = screen()->geometry();
    move(area.left() + (area.width() - width()) / 2, area.top() + (area.height() - height()) / 2);
    m_Timer1.start();
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    m_tableModel->setHeadTip(GetLanString(m_model, objectName(), QStringLiteral("HeadTip"),
                                          QStringLiteral("数值为仪器输入端的电压，未乘以探头系数。")));
}

void frmData::Timer1_Timer() {
    m_tableModel->beginRows();
    const bool more = m_fill.step();
    m_tableModel->endRows();
    if (more) {
        m_turns.start(0);
    }
}

void frmData::fillOn() {
    QElapsedTimer stretch;
    stretch.start();
    const int first = m_fill.rowsWritten() + 1;
    bool more = true;
    while (more && stretch.nsecsElapsed() < kStretchNanoseconds) {
        for (int row = 0; more && row < kRowsBetweenLooks; ++row) {
            more = m_fill.step();
        }
    }
    m_tableModel->rowsWritten(first, m_fill.rowsWritten());
    if (!more) {
        m_turns.stop();
    }
}

void frmData::CmdExit_Click() {
    hide();
}

void frmData::mnuSelectAll_Click() {
    tickAll(true);
}

void frmData::mnuSelectNone_Click() {
    tickAll(false);
}

void frmData::tickAll(bool ticked) {
    for (QCheckBox* box : m_SaveCheck) {
        box->setChecked(ticked);
    }
}

TableExport frmData::exported() const {
    TableExport table{m_cells, m_Label1->text()};
    for (std::size_t col = 0; col < m_SaveCheck.size(); ++col) {
        table.ticked[col] = m_SaveCheck[col]->isChecked();
    }
    return table;
}

Outcome frmData::save() {
    const QString folder = m_model.AppDir + QStringLiteral("dat");
    ensureFolder(folder);
    const auto choice = m_dialogs.ShowSave({.fileName = withSeparator(folder) + dateName(QDateTime::currentDateTime()),
                                            .filter = QStringLiteral("Text file (*.txt)|*.TXT|Excel file|*.xls"),
                                            .filterIndex = kTextFilter,
                                            .initialFolder = folder});
    if (!choice) {
        return RuntimeError::of(ErrorNumber::CancelSelected);
    }
    const bool asWorkbook = choice->filterIndex == kWorkbookFilter;
    m_model.ReceivedFile =
        withExtension(choice->fileName, asWorkbook ? QStringLiteral(".xls") : QStringLiteral(".txt"));
    const QString path = m_model.ReceivedFile;
    if (!mayReplace(m_dialogs, path)) {
        return success();
    }
    Outcome written = asWorkbook ? SaveExcelTable(exported(), path) : SaveTextTable(exported(), path);
    if (written) {
        m_dialogs.message(QStringLiteral("文件保存成功"), MessageIcon::Plain);
    }
    return written;
}

void frmData::CmdSave_Click() {
    m_saving = true;
    const Outcome saved = save();
    if (!saved) {
        m_dialogs.message(QString::number(saved.error().code()) + u':' + saved.error().description, MessageIcon::Plain);
    }
    m_saving = false;
    if (m_unloaded) {
        deleteLater();
    }
}

void frmData::unload(std::unique_ptr<frmData> form) {
    if (form == nullptr) {
        return;
    }
    form->hide();
    form->m_Timer1.stop();
    form->m_turns.stop();
    if (form->m_saving) {
        form->m_unloaded = true;
        static_cast<void>(form.release()); // CmdSave_Click deletes it
    }
}

bool frmData::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* press = static_cast<QMouseEvent*>(event);
        if (press->button() == Qt::RightButton) {
            m_mnuSelect->popup(press->globalPosition().toPoint());
            return true;
        }
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* asked = static_cast<QContextMenuEvent*>(event);
        if (asked->reason() == QContextMenuEvent::Keyboard) {
            m_mnuSelect->popup(asked->globalPos());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmData::resizeEvent(QResizeEvent*) {
    const int frameTop = height() - kMargin - kFrameHeight;
    m_Label1->setGeometry(kMargin, kUnitTop, width() - 2 * kMargin, kUnitHeight);
    m_MSFlexGrid1->setGeometry(kMargin, kTableTop, width() - 2 * kMargin, frameTop - kGap - kTableTop);
    m_Frame1->setGeometry(kMargin, frameTop, kFrameWidth, kFrameHeight);
    const int buttonTop = frameTop + 22;
    m_CmdExit->setGeometry(width() - kMargin - kButtonWidth, buttonTop, kButtonWidth, kButtonHeight);
    m_CmdSave->setGeometry(m_CmdExit->x() - kGap - kButtonWidth, buttonTop, kButtonWidth, kButtonHeight);
}

DataTable::DataTable(publicM& model, Dialogs& dialogs, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_dialogs(dialogs) {}

DataTable::~DataTable() {
    unloadTable();
}

void DataTable::mnuTabular_Click() {
    loadTable();
    bringToFront(*m_window);
}

void DataTable::loadTable() {
    if (m_window == nullptr) {
        m_window = std::make_unique<frmData>(m_model, m_dialogs);
    }
}

void DataTable::unloadTable() {
    frmData::unload(std::move(m_window));
}

} // namespace sixtrace
