// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

namespace sixtrace {

/// Gives the marker of `channel` the colour of its trace, and all others the colour of the strip.
void standOutMarker(const Scope& scope, int channel);

/// Swaps a marker for its stand-by label beyond the strip's ends, and back. Does nothing for a channel that does not
/// exist.
void MarkerClamp(ScreenState& screen, int Index);

void hideStandIns(ScreenState& screen);

/// Gives the bar the range of a channel's volt row. The range stays where that row does not exist.
void takeBarRange(const Scope& scope, int channel);
/// Sets the bar to the place of a channel's marker, or to its nearer end. Raises no event.
void placeBarAtMarker(ScreenState& screen, int channel);
/// Top of the marker at the place that the bar shows.
[[nodiscard]] Twips markerTopOfBar(const PositionBarState& bar);

} // namespace sixtrace
