// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <cstdint>
#include <optional>

namespace sixtrace {

inline constexpr int kScreenWidth = 600;   ///< screen units; X runs 0..600
inline constexpr int kScreenHeight = 400;  ///< screen units; Y runs 0..400
inline constexpr int kSurfaceWidth = 601;  ///< pixels of the surface that shows them all
inline constexpr int kSurfaceHeight = 401;
inline constexpr int kTwipsPerPixel = 15;

/// Divisions across the graticule: 10 for captures of FileKind 2 and 3, otherwise 12. Times are always reckoned with 12.
[[nodiscard]] int divisionsAcross(int fileKind);

/// Screen Y of the zero line of a marker whose top stands at `top` twips: its centre's share of the strip. Nothing
/// where that does not fit 16 bits.
[[nodiscard]] std::optional<std::int16_t> zeroLineOfMarker(double top);

/// How a channel's samples lie on the screen, from the model's present state. Make it afresh after every change.
///
/// X of sample i is x0 + i dxPlot, Y is yPos - sample * VoltPerCount * 400 / (vView * 8000); both in 64-bit reals,
/// rounded to the nearest integer, halves to even.
struct TraceScale {
    double x0 = 0;      ///< X of sample 0: the zoom keeps the middle of the screen, X = 300, in place
    double dxPlot = 0;  ///< X per sample when plotting, by ScreenPoints
    double dxPick = 0;  ///< X per sample when picking and reading times, by SampleCount
    double yPos = 0;    ///< ChannelYPos
    double vpc = 0;     ///< VoltPerCount
    double yDivisor = 0; ///< vView * 8000

    [[nodiscard]] double x(double sample) const { return x0 + sample * dxPlot; }
    [[nodiscard]] double y(double count) const { return yPos - count * vpc * 400 / yDivisor; }
    /// The sample index under an X, with its fraction.
    [[nodiscard]] double sampleAt(double screenX) const { return (screenX - x0) / dxPick; }
};

} // namespace sixtrace
