// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace {

/// Free space that a full page leaves to each edge of the window, twips.
inline constexpr double kPreviewGap = 100;

/// The percentage at which a whole sheet shows in a window, rounded: the width decides where the window is relatively
/// taller than the sheet. All sizes in twips.
[[nodiscard]] std::int32_t fullPagePercent(double windowWidth, double windowHeight, double paperWidth,
                                           double paperHeight);

/// Where a picture stands along one axis of the window: centred where it is smaller, else at 0.
[[nodiscard]] std::int32_t placeOnAxis(double pictureSize, double windowSize);

/// How far a picture follows a drag by `delta` along one axis. A centred picture stays; any other neither shows its
/// near edge inside the window nor loses its far one.
[[nodiscard]] std::int32_t dragOnAxis(double delta, double picturePlace, double pictureSize, double windowSize);

} // namespace sixtrace
