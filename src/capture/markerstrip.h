// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// The marker strip left of the screen. Lengths are twips, 15 to the pixel; tops count from the strip's upper edge.
namespace strip {
inline constexpr double kHeight = 6030;
inline constexpr double kMarkerHeight = 210;
inline constexpr double kMarkerWidth = 360;
/// Divisions of the screen, which the strip's height stands for.
inline constexpr double kDivisions = 8;
/// Top of a marker whose zero line lies at the middle of the screen.
inline constexpr double kCentreTop = 3000;
/// Tops at which the stand-by labels stand; a marker beyond them is replaced by its label.
inline constexpr double kStandByTop = -75;
inline constexpr double kStandByBottom = 5865;
/// Tops beyond which a drag does not go: 30 twips further.
inline constexpr double kDragTop = -105;
inline constexpr double kDragBottom = 5895;
} // namespace strip

} // namespace sixtrace
