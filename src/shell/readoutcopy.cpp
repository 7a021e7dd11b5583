// SPDX-License-Identifier: MIT
#include "shell/readoutcopy.h"

#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>

#include <span>

namespace sixtrace {

namespace {

/// One line for each readout that is shown: name and value, and the unit where the readout has a label for it,
/// separated by tabs.
QString linesOf(std::span<const Readout> readouts) {
    QStringList lines;
    for (const Readout& readout : readouts) {
        if (const auto shown = shownTexts(readout)) {
            QStringList cells{shown->name, shown->value};
            if (readout.unit != nullptr) {
                cells.append(shown->unit);
            }
            lines.append(cells.join(u'\t'));
        }
    }
    return lines.join(u'\n');
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
    connect(m_mnuCopy, &QAction::triggered, this, [this] {
        QStringList parts{cursorLines(), measurementLines()};
        parts.removeAll(QString());
        copy(parts.join(u'\n'));
    });
    offerOn(*controls.Frame1, &ReadoutCopy::cursorLines);
    offerOn(*controls.Frame4, &ReadoutCopy::measurementLines);
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

QString ReadoutCopy::cursorLines() const {
    return linesOf(cursorReadouts(m_controls));
}

QString ReadoutCopy::measurementLines() const {
    const FrmComControls& c = m_controls;
    return linesOf(std::array{Readout{c.LabP, c.LabPe}, Readout{c.LabPP, c.labPPe}, Readout{c.LabMax, c.LabMaxx}});
}

} // namespace sixtrace
