// SPDX-License-Identifier: MIT
#pragma once

#include "shell/frmcomcontrols.h"

#include <QObject>

class QAction;

namespace sixtrace {

/// Copies what the main window has measured, as text for a table: by Ctrl+C the readouts of the cursors and the
/// measurements, by the context menu of their frame the one or the other. Owned by the window.
class ReadoutCopy : public QObject {
public:
    ReadoutCopy(const FrmComControls& controls, QWidget& form);

    /// One line each, what it is, its value and its unit parted by tabs; nothing of a readout that is hidden or empty.
    [[nodiscard]] QString cursorReadouts() const;
    [[nodiscard]] QString measurements() const;

private:
    void offerOn(FramePanel& frame, QString (ReadoutCopy::*text)() const);

    FrmComControls m_controls;
    QAction* m_mnuCopy;
};

} // namespace sixtrace
