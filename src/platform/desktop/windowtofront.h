// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace sixtrace {

/// Shows a window in front of all others and gives it the keyboard focus. A minimised window is restored.
inline void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace sixtrace
