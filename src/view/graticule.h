// SPDX-License-Identifier: MIT
#pragma once

#include "platform/picture.h"

namespace sixtrace {

/// Clears `picture` and draws border, graticule and ticks in GridColor: dotted division lines where `dotted`, else the
/// solid centre cross with division ticks. `divisions` across, 8 down.
void drawGraticule(Picture& picture, Colour gridColor, bool dotted, int divisions);

} // namespace sixtrace
