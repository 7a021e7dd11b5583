// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/vectors.h"
#include "view/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace sixtrace {

/// A bit for each pixel of a screen row, the lowest for the leftmost.
inline constexpr std::size_t kRowWords = (kSurfaceWidth + 63) / 64;
inline constexpr std::size_t kRowRoom = (kSurfaceWidth + 31) / 32 * 32; ///< pixels that the memory of a row has
using RowBits = std::array<std::uint64_t, kRowWords>;

/// One trace in a row. A toggle is set where the trace begins or ends to cover its column in this row.
struct RowLayer {
    RowBits* covered; ///< in the row above
    RowBits* toggles; ///< of this row
    std::uint32_t pixel;
};

/// Composes a row of the screen into `out`: its ground, and over it the layers, the lowest first. Brings what each
/// layer covers to this row and clears its toggles. `ground` and `out` have room for kRowRoom pixels.
using ComposeRow = void (*)(std::span<const RowLayer> layers, const std::uint32_t* ground, std::uint32_t* out);

/// The way with the vectors of the running processor; rowcomposer.cpp has the plain one, with the same result.
[[nodiscard]] ComposeRow wideComposer();
[[nodiscard]] ComposeRow rowComposer(Vectors vectors);

} // namespace sixtrace
