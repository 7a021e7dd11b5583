// SPDX-License-Identifier: MIT
#include "shell/screenreader.h"

#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/ticklist.h"

#include <QAction>
#include <QWidget>

#include <array>

namespace sixtrace {

namespace {

struct Name {
    const char16_t* control;
    const char16_t* chinese;
    const char16_t* english;
};

constexpr std::array kNames{
    Name{u"Toolbar1", u"工具栏", u"Toolbar"},
    Name{u"List1", u"通道", u"Channels"},
    Name{u"Combo1", u"每格时间", u"Time per division"},
    Name{u"UpDown2", u"改变每格时间", u"Step time per division"},
    Name{u"Combo2", u"每格电压", u"Volts per division"},
    Name{u"UpDown1", u"改变每格电压", u"Step volts per division"},
    Name{u"Combo3", u"光标类型", u"Cursor type"},
    Name{u"VScroll1", u"零线位置", u"Zero line position"},
    Name{u"Picture2", u"波形屏幕", u"Screen"},
    Name{u"Picture3", u"零线标记", u"Zero markers"},
    Name{u"Line1Keys(0)", u"电压光标 1", u"Voltage cursor 1"},
    Name{u"Line1Keys(1)", u"电压光标 2", u"Voltage cursor 2"},
    Name{u"Line2Keys(0)", u"时间光标 1", u"Time cursor 1"},
    Name{u"Line2Keys(1)", u"时间光标 2", u"Time cursor 2"},
    Name{u"image1(0)", u"ch1 零线", u"Zero line of ch1"},
    Name{u"image1(1)", u"ch2 零线", u"Zero line of ch2"},
    Name{u"image1(2)", u"A 零线", u"Zero line of A"},
    Name{u"image1(3)", u"B 零线", u"Zero line of B"},
    Name{u"image1(4)", u"C 零线", u"Zero line of C"},
    Name{u"image1(5)", u"D 零线", u"Zero line of D"},
    Name{u"ZLabel(0)", u"ch1 零线在屏幕外", u"Zero line of ch1, outside the screen"},
    Name{u"ZLabel(1)", u"ch2 零线在屏幕外", u"Zero line of ch2, outside the screen"},
    Name{u"ZLabel(2)", u"A 零线在屏幕外", u"Zero line of A, outside the screen"},
    Name{u"ZLabel(3)", u"B 零线在屏幕外", u"Zero line of B, outside the screen"},
    Name{u"ZLabel(4)", u"C 零线在屏幕外", u"Zero line of C, outside the screen"},
    Name{u"ZLabel(5)", u"D 零线在屏幕外", u"Zero line of D, outside the screen"},
};

void giveNames(QWidget& form, bool chinese) {
    for (const Name& name : kNames) {
        if (auto* control = form.findChild<QWidget*>(QString::fromUtf16(name.control))) {
            control->setAccessibleName(QString::fromUtf16(chinese ? name.chinese : name.english));
        }
    }
}

/// "y1 25.00 mV"; empty while the readout is hidden or empty.
QString wordsOf(const Readout& readout) {
    const auto shown = shownTexts(readout);
    return shown ? QStringLiteral("%1 %2 %3").arg(shown->name, shown->value, shown->unit).trimmed() : QString();
}

} // namespace

void keepAccessibleNames(QWidget& form, QAction& mnuChinese) {
    giveNames(form, mnuChinese.isChecked());
    QObject::connect(&mnuChinese, &QAction::toggled, &form, [&form](bool chinese) { giveNames(form, chinese); });
}

ScreenDescription::ScreenDescription(const FrmComControls& controls, const QAction& mnuChinese, QObject* parent)
    : QObject(parent)
    , m_controls(controls)
    , m_mnuChinese(mnuChinese) {
    m_afterEvent.setSingleShot(true);
    m_afterEvent.setInterval(0);
    connect(&m_afterEvent, &QTimer::timeout, this, &ScreenDescription::announceChange);
    controls.Picture2->setSpokenText([this] { return text(); });
    watchControls();
    m_announced = text();
}

void ScreenDescription::watchControls() {
    const FrmComControls& c = m_controls;
    const auto lookAfterEvent = [this] { m_afterEvent.start(); };
    connect(c.List1, &TickList::Click, this, lookAfterEvent);
    for (const ListCombo* list : {c.Combo1, c.Combo2}) {
        connect(list, &ListCombo::currentTextChanged, this, lookAfterEvent);
    }
    connect(c.Combo3, &ListCombo::Click, this, lookAfterEvent);
    for (const Readout& readout : cursorReadouts(c)) {
        connect(readout.value, &ReadoutLabel::captionChanged, this, lookAfterEvent);
        connect(readout.unit, &ReadoutLabel::captionChanged, this, lookAfterEvent);
    }
    connect(&m_mnuChinese, &QAction::toggled, this, lookAfterEvent);
}

QString ScreenDescription::text() const {
    const FrmComControls& c = m_controls;
    const int row = c.List1->ListIndex();
    if (row < 0) {
        return {};
    }
    const bool chinese = m_mnuChinese.isChecked();
    QStringList words{
        c.List1->List(row).left(3).trimmed(),
        (chinese ? QStringLiteral("每格时间 %1") : QStringLiteral("%1 per division")).arg(c.Combo1->Text()),
        (chinese ? QStringLiteral("每格电压 %1") : QStringLiteral("%1 per division")).arg(c.Combo2->Text())};
    for (const Readout& readout : cursorReadouts(c)) {
        words.append(wordsOf(readout));
    }
    words.removeAll(QString());
    return words.join(chinese ? QStringLiteral("，") : QStringLiteral(", "));
}

void ScreenDescription::announceChange() {
    const QString now = text();
    if (now != m_announced) {
        m_announced = now;
        m_controls.Picture2->announceSpokenText(now);
    }
}

} // namespace sixtrace
