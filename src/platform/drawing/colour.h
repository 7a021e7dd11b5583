// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace {

/// A 24-bit colour with red in the low byte, as settings files and colour dialogs carry it. Bits above 24 are ignored
/// when it is drawn.
using Colour = std::int32_t;

[[nodiscard]] constexpr Colour rgb(int red, int green, int blue) {
    return red | (green << 8) | (blue << 16);
}

/// The pixel 0xffRRGGBB of a colour.
[[nodiscard]] constexpr std::uint32_t pixelOfColour(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return 0xFF000000U | ((bits & 0xFFU) << 16) | (bits & 0xFF00U) | ((bits >> 16) & 0xFFU);
}

/// The colour of a pixel 0xffRRGGBB.
[[nodiscard]] constexpr Colour colourOfPixel(std::uint32_t pixel) {
    return static_cast<Colour>(((pixel & 0xFFU) << 16) | (pixel & 0xFF00U) | ((pixel >> 16) & 0xFFU));
}

} // namespace sixtrace
