// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/quantity.h"

#include <QRect>

#include <cmath>

namespace sixtrace {

/// 1/1440 inch. Places in the main window, tops of zero markers and pages are designed in twips.
using Twips = Quantity<struct TwipUnit>;

/// A column or a row of the scope screen, or a distance between two: 600 units wide and 400 high, with the origin at
/// the top left and Y downward. One unit is one pixel of the screen's picture. Columns and rows are two types, so that
/// they cannot be swapped.
using ScreenX = Quantity<struct ScreenXUnit>;
using ScreenY = Quantity<struct ScreenYUnit>;

/// The length of a pixel.
inline constexpr Twips kPixel{15};

[[nodiscard]] constexpr Twips twipsOfPixels(double pixels) {
    return pixels * kPixel;
}
/// The pixel nearest to a place.
[[nodiscard]] inline int nearestPixel(Twips place) {
    return static_cast<int>(std::lround(place / kPixel));
}

/// The pixels of the place that a control has in the design, whose four numbers are twips.
[[nodiscard]] inline QRect rectOfTwips(double left, double top, double width, double height) {
    return {nearestPixel(Twips(left)), nearestPixel(Twips(top)), nearestPixel(Twips(width)),
            nearestPixel(Twips(height))};
}

} // namespace sixtrace
