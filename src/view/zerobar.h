// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// The bar beside the marker strip: one step of its value is one division, Max / 2 the zero line at the middle of the
/// screen, and it runs downward as the marker does.

/// Value that a marker top (twips) stands for, with its fraction; may lie outside 0..max.
[[nodiscard]] double barValueOfMarker(double top, int max);

/// Value of the bar after its range has changed to 0..max: the marker's value rounded, halves to even, or the end of
/// the range on the marker's side. A marker below the middle whose value is negative goes to `max`.
[[nodiscard]] int carriedBarValue(double top, int max);

/// Marker top in twips for a value of the bar.
[[nodiscard]] double markerTopOfBar(int value, int max);

} // namespace sixtrace
