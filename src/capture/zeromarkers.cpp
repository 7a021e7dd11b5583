// SPDX-License-Identifier: MIT
#include "capture/zeromarkers.h"

#include "platform/text/numbers.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

void standOutMarker(const Scope& scope, int channel) {
    for (int c = 0; c < kChannels; ++c) {
        scope.screen.markers[c].back = c == channel ? scope.model.LineColor[c] : scope.screen.stripColor;
    }
}

void MarkerClamp(ScreenState& screen, int Index) {
    if (Index < 0 || Index >= kChannels) {
        return;
    }
    ZeroMarker& marker = screen.markers[Index];
    const bool above = marker.top < strip::kStandByTop;
    marker.standInShown = above || marker.top > strip::kStandByBottom;
    marker.shown = !marker.standInShown;
    if (marker.standInShown) {
        marker.standInTop = above ? strip::kStandByTop : strip::kStandByBottom;
        marker.standInBack = marker.back;
    }
}

void hideStandIns(ScreenState& screen) {
    for (ZeroMarker& marker : screen.markers) {
        marker.standInShown = false;
    }
}

void takeBarRange(const Scope& scope, int channel) {
    const int row = scope.model.VoltIndexView[channel];
    if (row >= 0 && row < kVoltRows) {
        scope.screen.bar.maximum = 2 * scope.model.VoltRange[row];
        scope.screen.bar.value = std::min(scope.screen.bar.value, scope.screen.bar.maximum);
    }
}

void placeBarAtMarker(ScreenState& screen, int channel) {
    const double middle = screen.bar.maximum / 2.0;
    const double value =
        (screen.markers[channel].top - strip::kCentreTop) / strip::kHeight * strip::kDivisions + middle;
    if (!std::isnan(value)) {
        screen.bar.value = toInt32(std::clamp(value, 0.0, static_cast<double>(screen.bar.maximum))).value_or(0);
    }
}

Twips markerTopOfBar(const PositionBarState& bar) {
    return (bar.value - bar.maximum / 2.0) * strip::kHeight / strip::kDivisions + strip::kCentreTop;
}

} // namespace sixtrace
