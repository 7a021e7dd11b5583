// SPDX-License-Identifier: MIT
#include "output/previewgeometry.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {
/// The nearest whole number, halves to even. A page at some million percent leaves the range of the type; then it is
/// the nearer end of that range.
std::int32_t whole(double value) {
    constexpr double kMost = 2147483647;
    return static_cast<std::int32_t>(std::nearbyint(std::clamp(value, -kMost, kMost)));
}
} // namespace

std::int32_t fullPagePercent(double windowWidth, double windowHeight, double paperWidth, double paperHeight) {
    const double width = windowWidth - 2 * kPreviewGap;
    const double height = windowHeight - 2 * kPreviewGap;
    if (width <= 0 || height <= 0 || paperWidth <= 0 || paperHeight <= 0) {
        return 1;
    }
    const bool widthDecides = height / width >= paperHeight / paperWidth;
    const std::int32_t percent = whole((widthDecides ? width / paperWidth : height / paperHeight) * 100);
    return percent > 0 ? percent : 1;
}

std::int32_t placeOnAxis(double pictureSize, double windowSize) {
    const std::int32_t picture = whole(pictureSize);
    const std::int32_t window = whole(windowSize);
    return picture < window ? whole((static_cast<double>(window) - picture) / 2) : 0;
}

std::int32_t dragOnAxis(double delta, double picturePlace, double pictureSize, double windowSize) {
    const std::int32_t moved = whole(delta);
    const std::int32_t place = whole(picturePlace);
    const std::int32_t spare = whole(pictureSize - std::abs(static_cast<double>(place)) - windowSize);
    if (place > 0) {
        return 0;
    }
    if (moved < 0) {
        return -static_cast<double>(moved) > spare ? -spare : moved;
    }
    return moved > -static_cast<double>(place) ? -place : moved;
}

} // namespace sixtrace
