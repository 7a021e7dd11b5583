// SPDX-License-Identifier: MIT
#include "output/previewgeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sixtrace {

namespace {
/// The nearest whole number, halves to even. A page at some million percent leaves the range of the type; then it is
/// the nearer end of that range.
double whole(double value) {
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    return std::nearbyint(std::clamp(value, -kMost, kMost));
}
Twips whole(Twips length) {
    return Twips(whole(length.number()));
}
} // namespace

std::int32_t fullPagePercent(Twips windowWidth, Twips windowHeight, Twips paperWidth, Twips paperHeight) {
    const Twips width = windowWidth - 2 * kPreviewGap;
    const Twips height = windowHeight - 2 * kPreviewGap;
    if (std::min({width, height, paperWidth, paperHeight}) <= Twips{0}) {
        return 1;
    }
    const bool widthDecides = height / width >= paperHeight / paperWidth;
    const double percent = whole((widthDecides ? width / paperWidth : height / paperHeight) * 100);
    return percent > 0 ? static_cast<std::int32_t>(percent) : 1;
}

Twips placeOnAxis(Twips pictureSize, Twips windowSize) {
    const Twips picture = whole(pictureSize);
    const Twips window = whole(windowSize);
    return picture < window ? whole((window - picture) / 2) : Twips{0};
}

Twips dragOnAxis(Twips delta, Twips picturePlace, Twips pictureSize, Twips windowSize) {
    const Twips moved = whole(delta);
    const Twips place = whole(picturePlace);
    if (place > Twips{0}) {
        return Twips{0};
    }
    const Twips hiddenBefore = -place;
    const Twips hiddenBehind = whole(pictureSize - hiddenBefore - windowSize);
    if (moved < Twips{0}) {
        return -moved > hiddenBehind ? -hiddenBehind : moved;
    }
    return moved > hiddenBefore ? hiddenBefore : moved;
}

} // namespace sixtrace
