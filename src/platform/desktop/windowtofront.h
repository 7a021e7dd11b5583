// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace sixtrace {

/// Shows a window in front of the others and gives it the keys, also one that is minimised.
void bringToFront(QWidget& window);

} // namespace sixtrace
