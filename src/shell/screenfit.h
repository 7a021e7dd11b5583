// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QMainWindow;
class QWidget;

namespace sixtrace {

/// Gives a window its client area of a fixed size below a bar. Where the free part of the screen is smaller, the window
/// is as large as fits and the client area is reached by scrolling.
void fitToScreen(QMainWindow& form, QWidget& client, const QSize& clientSize, int barHeight, const QRect& freeArea);

/// Where a window stands in the middle of the screen, or as near to it as leaves its title inside the free area.
[[nodiscard]] QPoint centredPlace(const QSize& window, const QRect& screen, const QRect& freeArea);

} // namespace sixtrace
