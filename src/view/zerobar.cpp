// SPDX-License-Identifier: MIT
#include "view/zerobar.h"

#include "capture/capturefile.h"

#include <cmath>

namespace sixtrace {

namespace {
constexpr double kDivisions = 8;
}

double barValueOfMarker(double top, int max) { return (top - kCentreTop) / kStripHeight * kDivisions + max / 2.0; }

int carriedBarValue(double top, int max) {
    const double value = barValueOfMarker(top, max);
    if (value < 0) {
        return top > kCentreTop ? max : 0;
    }
    return value > max ? max : static_cast<int>(std::nearbyint(value));
}

double markerTopOfBar(int value, int max) {
    return (value - max / 2.0) * kStripHeight / kDivisions + kCentreTop;
}

} // namespace sixtrace
