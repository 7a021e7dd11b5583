// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>

#include <cmath>

namespace sixtrace {

/// Twips of a pixel. Places of the main window are designed in twips.
inline constexpr double kTwips = 15;

/// The pixel nearest to a place in twips.
[[nodiscard]] inline int pixelsOfTwips(double twips) {
    return static_cast<int>(std::lround(twips / kTwips));
}

/// The pixels of a designed place, all four in twips.
[[nodiscard]] inline QRect rectOfTwips(double left, double top, double width, double height) {
    return {pixelsOfTwips(left), pixelsOfTwips(top), pixelsOfTwips(width), pixelsOfTwips(height)};
}

} // namespace sixtrace
