// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

class QProgressBar;
class QWidget;

namespace sixtrace {

/// Places in pixels that the two transfer windows share: captions at the left, fields from x = 120 to 464, and rows 36
/// pixels apart.
namespace rows {
inline constexpr int kWidth = 480;
inline constexpr int kFieldLeft = 120;
inline constexpr int kFieldRight = 464;
inline constexpr int kShortField = 88;
inline constexpr int kPitch = 36;

[[nodiscard]] constexpr int top(int row) {
    return 16 + kPitch * row;
}
[[nodiscard]] constexpr QRect caption(int row) {
    return {16, top(row), 100, 26};
}
[[nodiscard]] constexpr QRect field(int row) {
    return {kFieldLeft, top(row), kFieldRight - kFieldLeft, 26};
}
/// A field with a button to its right.
[[nodiscard]] constexpr QRect fieldBesideButton(int row) {
    return {kFieldLeft, top(row), 248, 26};
}
[[nodiscard]] constexpr QRect shortField(int left, int row) {
    return {left, top(row), kShortField, 26};
}
inline constexpr int kButtonColumn = 376;
} // namespace rows

/// Adds the bar of a row and, below it, the "/" between the two amounts.
[[nodiscard]] QProgressBar* addProgressBar(QWidget& window, int row);

/// Sets the bar to 0 of `maximum`. A maximum of 0 gives an empty bar.
void setBarRange(QProgressBar& bar, int maximum);

} // namespace sixtrace
