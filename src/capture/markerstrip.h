// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/lengths.h"

/// The marker strip left of the screen. Tops count from the strip's upper edge.
namespace sixtrace::strip {

inline constexpr Twips kHeight{6030};
inline constexpr Twips kMarkerHeight{210};
inline constexpr Twips kMarkerWidth{360};
/// The strip is as high as the screen, which has eight divisions.
inline constexpr double kDivisions = 8;
/// Top of a marker that the position bar shows at its middle.
inline constexpr Twips kCentreTop{3000};
/// Tops at which the stand-by labels stand; a marker beyond them is replaced by its label.
inline constexpr Twips kStandByTop{-75};
inline constexpr Twips kStandByBottom{5865};
/// Tops beyond which a drag does not go: 30 twips further.
inline constexpr Twips kDragTop{-105};
inline constexpr Twips kDragBottom{5895};

/// The place of the zero line of a marker with this top: 0 at the upper edge of the strip, 1 at the lower one.
[[nodiscard]] constexpr double zeroLine(Twips top) {
    return (kMarkerHeight / 2 + top) / kHeight;
}

} // namespace sixtrace::strip
