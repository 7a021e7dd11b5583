// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace {

/// Space between a full page and each edge of the window, in twips.
inline constexpr double kPreviewGap = 100;

/// The rounded percentage at which a whole sheet fits a window, at least 1. The width decides when the window is taller
/// than the sheet in proportion. All sizes are in twips.
[[nodiscard]] std::int32_t fullPagePercent(double windowWidth, double windowHeight, double paperWidth,
                                           double paperHeight);

/// The place of a picture along one axis of the window, in twips: centred when it is smaller than the window, otherwise
/// 0.
[[nodiscard]] std::int32_t placeOnAxis(double pictureSize, double windowSize);

/// How far a picture moves along one axis when it is dragged by `delta`; all lengths in twips. A centred picture does
/// not move. Of any other picture, no edge moves further into the window than its border.
[[nodiscard]] std::int32_t dragOnAxis(double delta, double picturePlace, double pictureSize, double windowSize);

} // namespace sixtrace
