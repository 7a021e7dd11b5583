// SPDX-License-Identifier: MIT
#include "platform/desktop/windowtofront.h"

#include <QWidget>

namespace sixtrace {

void bringToFront(QWidget& window) {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace sixtrace
