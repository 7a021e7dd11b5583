// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace sixtrace {

/// Shows a window in front of all others and gives it the keyboard focus. A minimised window is restored.
void bringToFront(QWidget& window);

} // namespace sixtrace
