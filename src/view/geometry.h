// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/drawing/lengths.h"

#include <cstdint>
#include <optional>

namespace sixtrace {

inline constexpr int kScreenWidth = 600;  ///< screen units; X runs 0..600
inline constexpr int kScreenHeight = 400; ///< screen units; Y runs 0..400
inline constexpr int kSurfaceWidth = 601; ///< pixels of the surface that shows them all
inline constexpr int kSurfaceHeight = 401;

/// Divisions across the graticule: 10 for captures of FileKind 2 and 3, otherwise 12. Times are always computed with
/// 12.
[[nodiscard]] int divisionsAcross(int fileKind);

/// ChannelYPos for a marker with this top: the place of its centre on the strip as a row of the screen, halves to even.
/// Nothing where that does not fit 16 bits.
[[nodiscard]] std::optional<std::int16_t> zeroLineOfMarker(Twips top);
/// How far a marker goes along the strip when its zero line goes that far on the screen.
[[nodiscard]] Twips wayOnStrip(ScreenY way);

/// Sets ChannelYPos of all six channels from the tops of their markers. False where one does not fit 16 bits; those of
/// the channels before it are set all the same.
[[nodiscard]] bool deriveZeroLines(publicM& model, const PerChannel<Twips>& markerTops);

/// The map from a channel's samples to the screen, for the present state of the model. After a change it has to be
/// computed again.
struct TraceScale {
    double zoom = 0;               ///< time base of the capture by that of the view
    double x0 = 0;                 ///< X of sample 0; zooming keeps the middle of the screen, X = 300, in place
    double dx = 0;                 ///< X per sample
    double yPos = 0;               ///< ChannelYPos
    double perCount = 0;           ///< VoltPerCount
    double divisor = 0;            ///< of the Y formula: millivolts of the eight divisions; 0 without a volt range
    double height = kScreenHeight; ///< of the picture that the eight divisions fill

    /// Whether y() may be used. A scale for picking may lack a volt range, which X and times do not need.
    [[nodiscard]] bool placesHeights() const { return divisor != 0; }
    /// X of a sample index, which may have a fraction. Not rounded, not clipped.
    [[nodiscard]] double x(double sample) const { return x0 + sample * dx; }
    /// Y of a count. Not rounded, not clipped; a count of 0 lies on the zero line, positive ones above it.
    [[nodiscard]] double y(double count) const { return yPos - count * perCount * height / divisor; }
    /// The sample index under a column of the screen, with its fraction.
    [[nodiscard]] double sampleAt(ScreenX column) const { return (column.number() - x0) / dx; }
};

/// The scale for plotting, with a step by ScreenPoints; nothing where TimeIndex, TimeIndexView or VoltIndexView name no
/// table row or ScreenPoints is 0.
[[nodiscard]] std::optional<TraceScale> plotScale(const publicM& model, int channel);

/// The scale for picking and for time readouts, with a step by SampleCount; nothing where TimeIndex or TimeIndexView
/// name no table row or SampleCount is 0. Where SampleCount and ScreenPoints differ it addresses another sample than
/// the one that is drawn under a pointer. Its y() may be used only where placesHeights() is true: a capture whose
/// VoltIndexView names no row has times all the same.
[[nodiscard]] std::optional<TraceScale> pickScale(const publicM& model, int channel);

/// The frame of a printed page, and where a channel's zero line lies in it, counted from its top.
struct PageArea {
    Twips width;
    Twips height;
    Twips zeroLine;
};

/// The scale for plotting on a page, whose X, Y and steps are twips. Two things differ from the screen: the shift
/// enters the scale unchanged, so that a screen unit of it counts as a twip, and the step comes from the number of
/// samples held, not from those per screen. Nothing where a table row does not exist or SampleCount is 0.
[[nodiscard]] std::optional<TraceScale> pageScale(const publicM& model, int channel, const PageArea& page);

/// Milliseconds and volts per unit of a channel as it is shown: per screen unit, or per twip of a page. Nothing where
/// the row does not exist.
[[nodiscard]] std::optional<float> msPerPixel(const publicM& model, int channel);
[[nodiscard]] std::optional<float> msPerPixel(const publicM& model, int channel, const PageArea& page);
[[nodiscard]] std::optional<float> voltPerPixel(const publicM& model, int channel);
[[nodiscard]] std::optional<float> voltPerPixel(const publicM& model, int channel, const PageArea& page);

} // namespace sixtrace
