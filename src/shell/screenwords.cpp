// SPDX-License-Identifier: MIT
#include "shell/screenwords.h"

#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/spokentext.h"
#include "platform/controls/ticklist.h"

#include <QAction>

namespace sixtrace {

namespace {

/// One readout: its caption, value and unit.
struct Readout {
    const ReadoutLabel* caption;
    const ReadoutLabel* value;
    const ReadoutLabel* unit;
};

/// "y1 25.00 mV"; nothing while the readout is hidden or empty.
QString wordsOf(const Readout& readout) {
    if (readout.value->isHidden() || readout.value->caption().isEmpty()) {
        return {};
    }
    QString caption = readout.caption->caption().trimmed();
    if (caption.endsWith(QLatin1Char(':')) || caption.endsWith(u'：')) {
        caption.chop(1);
    }
    const QString unit = readout.unit->caption().trimmed();
    return QStringLiteral("%1 %2 %3").arg(caption, readout.value->caption(), unit).trimmed();
}

} // namespace

ScreenWords::ScreenWords(const FrmComControls& controls, const QAction& mnuChinese, QObject* parent)
    : QObject(parent)
    , m_controls(controls)
    , m_mnuChinese(mnuChinese) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &ScreenWords::announce);
    setSpokenText(*controls.Picture2, [this] { return text(); });
    follow();
    m_announced = text();
}

void ScreenWords::follow() {
    const FrmComControls& c = m_controls;
    const auto soon = [this] { m_soon.start(); };
    connect(c.List1, &TickList::Click, this, soon);
    for (const ListCombo* list : {c.Combo1, c.Combo2}) {
        connect(list, &ListCombo::currentTextChanged, this, soon);
    }
    connect(c.Combo3, &ListCombo::Click, this, soon);
    for (const ReadoutLabel* label :
         {c.LabY1, c.LabY2, c.LabDy, c.LabX1, c.LabX2, c.LabDx, c.LabYY11, c.LabYY22, c.LabXX11, c.LabXX22}) {
        connect(label, &ReadoutLabel::captionChanged, this, soon);
    }
    connect(&m_mnuChinese, &QAction::toggled, this, soon);
}

QString ScreenWords::text() const {
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
    for (const Readout& readout : {Readout{c.LabYY1, c.LabY1, c.LabYY11}, Readout{c.LabYY2, c.LabY2, c.LabYY22},
                                   Readout{c.Labddy, c.LabDy, c.LabDDYY}, Readout{c.LabXX1, c.LabX1, c.LabXX11},
                                   Readout{c.LabXX2, c.LabX2, c.LabXX22}, Readout{c.labDDx, c.LabDx, c.LabDDXX}}) {
        words.append(wordsOf(readout));
    }
    words.removeAll(QString());
    return words.join(chinese ? QStringLiteral("，") : QStringLiteral(", "));
}

void ScreenWords::announce() {
    const QString now = text();
    if (now != m_announced) {
        m_announced = now;
        announceSpokenText(*m_controls.Picture2, now);
    }
}

} // namespace sixtrace
