// SPDX-License-Identifier: MIT
#include "output/frmprintsetup.h"

#include "capture/applylanguage.h"
#include "capture/mdllan.h"
#include "output/pagesetup.h"
#include "platform/controls/look.h"
#include "platform/desktop/dialogs.h"

#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>

namespace sixtrace {

namespace {

constexpr int kWidth = 440;
constexpr int kHeight = 284;
constexpr int kPitch = 36;
constexpr int kFieldWidth = 72;
constexpr int kCaptionWidth = 84;
constexpr int kUnitGap = 6;
constexpr int kLeftColumn = 16;
constexpr int kRightColumn = 228;
constexpr int kRuleTop = 92;
constexpr int kOptionsTop = 102;
constexpr int kOptionPitch = 32;
constexpr int kZoomLeft = 38; ///< below the text of the option above
constexpr int kZoomTop = 168;

// The decimal mark of the fields is a point on every system, and a comma is refused.
constexpr NumberMarks kFieldMarks{};

QString elementName(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

/// The field of margin 0 to 3. The fields stand in two rows of two.
QRect fieldPlace(int place) {
    const int left = (place % 2 == 0 ? kLeftColumn : kRightColumn) + kCaptionWidth;
    return {left, DialogSheet::kMargin + place / 2 * kPitch, kFieldWidth, DialogSheet::kRowHeight};
}

} // namespace

frmPrintSetup::frmPrintSetup(publicM& model, MdlPrinter& settings, PreviewScale& preview, Dialogs& dialogs)
    : DialogSheet(kWidth, kHeight)
    , m_model(model)
    , m_settings(settings)
    , m_preview(preview)
    , m_dialogs(dialogs) {
    setObjectName(QStringLiteral("frmPrintSetup"));
    setWindowTitle(QStringLiteral("页面设置"));
    makeControls();
    Form_Load();
}

void frmPrintSetup::makeControls() {
    const std::array captions{QStringLiteral("上边界："), QStringLiteral("下边界："), QStringLiteral("左边界："),
                              QStringLiteral("右边界：")};
    int place = 0;
    for (const QString& caption : captions) {
        const QRect at = fieldPlace(place);
        QLabel* label = addLabel("", caption, {at.left() - kCaptionWidth, at.top(), kCaptionWidth, kRowHeight});
        label->setObjectName(elementName("Labela", place));
        QLineEdit* field = addField("", at, Qt::AlignRight);
        field->setObjectName(elementName("txtMargin", place + 1));
        label->setBuddy(field);
        m_txtMargin[place++] = field;
    }
    const std::array options{QStringLiteral("每次改变显示比例时都重新绘图"),
                             QStringLiteral("不重新绘图，但是重新设定原始图片的比例")};
    int index = 0;
    for (QRadioButton*& option : m_optRePrint) {
        option = new QRadioButton(options.at(static_cast<std::size_t>(index)), this);
        option->setObjectName(elementName("optRePrint", index));
        option->setGeometry(kMargin, kOptionsTop + index * kOptionPitch, kWidth - 2 * kMargin, kRowHeight);
        connect(option, &QRadioButton::toggled, this, [this, index](bool chosen) {
            if (chosen) {
                optRePrint_Click(index);
            }
        });
        ++index;
    }
    m_txtZoom = addField("txtZoom", {kZoomLeft, kZoomTop, kFieldWidth, kRowHeight}, Qt::AlignRight);
    m_txtZoom->setAccessibleName(QStringLiteral("%"));
    auto* cmdDefault = addStripButton("cmdDefault", QStringLiteral("预设值"), kMargin);
    auto* cmdYes = addStripButton("cmdYes", QStringLiteral("确定"), kWidth - kMargin - 8 - 2 * kButtonWidth);
    cmdYes->setDefault(true); // so Enter in a field accepts
    auto* cmdNo = addStripButton("cmdNo", QStringLiteral("取消"), kWidth - kMargin - kButtonWidth);
    connect(cmdDefault, &QPushButton::clicked, this, &frmPrintSetup::cmdDefault_Click);
    connect(cmdYes, &QPushButton::clicked, this, &frmPrintSetup::cmdYes_Click);
    connect(cmdNo, &QPushButton::clicked, this, &frmPrintSetup::cmdNo_Click);
}

void frmPrintSetup::Form_Load() {
    SetLanFile(m_model, m_model.LanguageId);
    ApplyLanguage(*this, m_model);
    const std::array margins{m_settings.PrintMarginTop, m_settings.PrintMarginBottom, m_settings.PrintMarginLeft,
                             m_settings.PrintMarginRight};
    for (std::size_t i = 0; i < margins.size(); ++i) {
        m_txtMargin[i]->setText(textOfMargin(margins[i], kFieldMarks));
    }
    m_txtZoom->setText(QString::number(m_preview.baseZoom()));
    m_optRePrint[m_preview.RePrintOnZoom ? 0 : 1]->setChecked(true);
    m_txtMargin[0]->setFocus();
}

void frmPrintSetup::cmdDefault_Click() {
    for (QLineEdit* field : m_txtMargin) {
        field->setText(QStringLiteral("1.0"));
    }
    m_optRePrint[0]->setChecked(true);
    m_txtZoom->setText(QStringLiteral("100"));
}

void frmPrintSetup::optRePrint_Click(int Index) {
    if (Index == 0) {
        m_txtZoom->setText(QString::number(m_preview.baseZoom()));
    }
}

QString frmPrintSetup::text(const QString& key, const QString& chinese) const {
    return m_model.LanguageId == 0 ? chinese : GetLanString(m_model, objectName(), key, chinese);
}

void frmPrintSetup::refuse(QLineEdit& field, const QString& message) {
    m_dialogs.message(message, MessageIcon::Exclamation);
    field.setFocus();
    field.selectAll();
}

void frmPrintSetup::cmdYes_Click() {
    std::array<std::int32_t, 4> margins{};
    for (std::size_t i = 0; i < margins.size(); ++i) {
        const auto margin = marginOfText(m_txtMargin[i]->text(), kFieldMarks);
        if (!margin) {
            refuse(*m_txtMargin[i],
                   text(QStringLiteral("MarginMessage"), QStringLiteral("边界值请输入大于 0 并且不大于 10 的数值。")));
            return;
        }
        margins[i] = *margin;
    }
    const auto zoom = zoomOfText(m_txtZoom->text(), kFieldMarks);
    if (!zoom) {
        refuse(*m_txtZoom,
               text(QStringLiteral("ZoomMessage"), QStringLiteral("您输入的图片比例有误，请输入一个正整数。")));
        return;
    }
    m_preview.BaseZoom = *zoom;
    m_preview.RePrintOnZoom = m_optRePrint[0]->isChecked();
    m_settings.PrintMarginTop = margins[0];
    m_settings.PrintMarginBottom = margins[1];
    m_settings.PrintMarginLeft = margins[2];
    m_settings.PrintMarginRight = margins[3];
    close();
}

void frmPrintSetup::cmdNo_Click() {
    close();
}

void frmPrintSetup::paintEvent(QPaintEvent* event) {
    DialogSheet::paintEvent(event);
    QPainter painter(this);
    painter.fillRect(kMargin, kRuleTop, kWidth - 2 * kMargin, 1, QColor::fromRgb(bench::kRule));
    painter.setPen(QColor::fromRgb(bench::kMuted));
    const auto unit = [&painter](const QLineEdit& field, const QString& text) {
        const QRect place(field.geometry().right() + 1 + kUnitGap, field.y(), 40, field.height());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, text);
    };
    for (const QLineEdit* field : m_txtMargin) {
        unit(*field, QStringLiteral("cm"));
    }
    unit(*m_txtZoom, QStringLiteral("%"));
}

} // namespace sixtrace
