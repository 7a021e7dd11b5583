// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/lengths.h"

#include <cstdint>

namespace sixtrace {

/// Space between a full page and each edge of the window.
inline constexpr Twips kPreviewGap{100};

/// The rounded percentage at which a whole sheet fits a window, at least 1. The width decides when the window is taller
/// than the sheet in proportion.
[[nodiscard]] std::int32_t fullPagePercent(Twips windowWidth, Twips windowHeight, Twips paperWidth, Twips paperHeight);

/// The place of a picture along one axis of the window, rounded: centred when it is smaller than the window, otherwise
/// 0.
[[nodiscard]] Twips placeOnAxis(Twips pictureSize, Twips windowSize);

/// How far a picture moves along one axis when it is dragged by `delta`, rounded. A centred picture does not move. Of
/// any other picture, no edge moves further into the window than its border.
[[nodiscard]] Twips dragOnAxis(Twips delta, Twips picturePlace, Twips pictureSize, Twips windowSize);

} // namespace sixtrace
