// SPDX-License-Identifier: MIT
#include "shell/readoutcopy.h"

#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

namespace sixtrace {

namespace {

/// "y1", its value and its unit, parted by tabs; nothing while the readout is hidden or empty.
QString lineOf(const ReadoutLabel& caption, const ReadoutLabel& value, const ReadoutLabel* unit) {
    if (value.isHidden() || value.caption().trimmed().isEmpty()) {
        return {};
    }
    QString name = caption.caption().trimmed();
    if (name.endsWith(u':') || name.endsWith(u'：')) {
        name.chop(1);
    }
    const QString line = name + QLatin1Char('\t') + value.caption().trimmed();
    return unit == nullptr ? line : line + QLatin1Char('\t') + unit->caption().trimmed();
}

QString linesOf(QStringList lines) {
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

void copy(const QString& text) {
    if (!text.isEmpty()) {
        QApplication::clipboard()->setText(text);
    }
}

} // namespace

ReadoutCopy::ReadoutCopy(const FrmComControls& controls, QWidget& form)
    : QObject(&form)
    , m_controls(controls)
    , m_mnuCopy(new QAction(QStringLiteral("复制"), &form)) {
    m_mnuCopy->setObjectName(QStringLiteral("mnuCopy"));
    m_mnuCopy->setShortcut(QKeySequence::Copy);
    form.addAction(m_mnuCopy);
    connect(m_mnuCopy, &QAction::triggered, this, [this] { copy(linesOf({cursorReadouts(), measurements()})); });
    offerOn(*controls.Frame1, &ReadoutCopy::cursorReadouts);
    offerOn(*controls.Frame4, &ReadoutCopy::measurements);
}

void ReadoutCopy::offerOn(FramePanel& frame, QString (ReadoutCopy::*text)() const) {
    frame.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&frame, &QWidget::customContextMenuRequested, this, [this, &frame, text](const QPoint& at) {
        auto* menu = new QMenu(&frame);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        QAction* item = menu->addAction(m_mnuCopy->text(), this, [this, text] { copy((this->*text)()); });
        item->setEnabled(!(this->*text)().isEmpty());
        menu->popup(frame.mapToGlobal(at));
    });
}

QString ReadoutCopy::cursorReadouts() const {
    const FrmComControls& c = m_controls;
    return linesOf({lineOf(*c.LabYY1, *c.LabY1, c.LabYY11), lineOf(*c.LabYY2, *c.LabY2, c.LabYY22),
                    lineOf(*c.Labddy, *c.LabDy, c.LabDDYY), lineOf(*c.LabXX1, *c.LabX1, c.LabXX11),
                    lineOf(*c.LabXX2, *c.LabX2, c.LabXX22), lineOf(*c.labDDx, *c.LabDx, c.LabDDXX)});
}

QString ReadoutCopy::measurements() const {
    const FrmComControls& c = m_controls;
    return linesOf({lineOf(*c.LabP, *c.LabPe, nullptr), lineOf(*c.LabPP, *c.labPPe, nullptr),
                    lineOf(*c.LabMax, *c.LabMaxx, nullptr)});
}

} // namespace sixtrace
