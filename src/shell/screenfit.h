// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QMainWindow;
class QWidget;

namespace sixtrace {

/// Puts `client`, which has a fixed size, into a window below a menu bar of `barHeight`. Where the free area of the
/// screen is too small for that, the window is as large as it can be and the client area scrolls. All lengths are
/// pixels.
void fitToScreen(QMainWindow& form, QWidget& client, const QSize& clientSize, int barHeight, const QRect& freeArea);

/// The place of a window in the middle of the screen, or as near to the middle as its title stays inside the free area.
[[nodiscard]] QPoint centredPlace(const QSize& window, const QRect& screen, const QRect& freeArea);

} // namespace sixtrace
