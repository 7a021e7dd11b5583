// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/drawing/colour.h"

#include <array>

namespace sixtrace {

/// What the settings file says when it says nothing.
namespace defaults {
inline constexpr PerChannel<Colour> kLineColor{255, 65535, 16711935, 16711808, 4227072, 33023};
inline constexpr Colour kGridColor = 16776960;
inline constexpr Colour kStripColor = 16776960;
inline constexpr Colour kScreenColor = 4194368;
} // namespace defaults

/// Colours of a program that has no settings file.
void applyDefaultColours(publicM& model);

} // namespace sixtrace
