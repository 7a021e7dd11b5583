// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

namespace sixtrace {

/// All markers blend into the strip; the one of `channel` alone takes its trace's colour.
void standOutMarker(const Scope& scope, int channel);

/// Swaps a marker for its stand-by label beyond the strip's ends, and back. Does nothing for a channel that does not
/// exist.
void MarkerClamp(ScreenState& screen, int Index);

void hideStandIns(ScreenState& screen);

/// The bar takes the range of a channel's volt row; a row that does not exist leaves it.
void takeBarRange(const Scope& scope, int channel);
/// The bar takes the place of a channel's marker, at its ends for a marker beyond them. Raises no change.
void placeBarAtMarker(ScreenState& screen, int channel);
/// Top of a marker that stands where the bar says.
[[nodiscard]] Twips markerTopOfBar(const PositionBarState& bar);

} // namespace sixtrace
