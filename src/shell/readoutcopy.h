// SPDX-License-Identifier: MIT
#pragma once

#include "shell/frmcomcontrols.h"

#include <QObject>

class QAction;

namespace sixtrace {

/// Copies readouts of the main window to the clipboard, as text that a spreadsheet takes. Ctrl+C copies the cursor
/// readouts and the measurements; the context menu of a frame copies the readouts in that frame. Owned by the window.
class ReadoutCopy : public QObject {
public:
    ReadoutCopy(const FrmComControls& controls, QWidget& form);

    /// One line for each readout: name, value and unit, separated by tabs. A readout that is hidden or empty has no
    /// line.
    [[nodiscard]] QString cursorLines() const;
    [[nodiscard]] QString measurementLines() const;

private:
    void offerOn(FramePanel& frame, QString (ReadoutCopy::*text)() const);

    FrmComControls m_controls;
    QAction* m_mnuCopy;
};

} // namespace sixtrace
