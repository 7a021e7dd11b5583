// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/tracecolumn.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace sixtrace {

/// The heights of the counts -2048 to 2047, which is what converters of up to 12 bits give. The entry of a count is its
/// lowest twelve bits: any count names an entry, but only counts in this range name their own.
using HeightsOfCounts = std::array<std::int32_t, 4096>;
inline constexpr int kLeastCount = -2048;
inline constexpr int kGreatestCount = 2047;
[[nodiscard]] constexpr std::size_t entryOfCount(int count) {
    return static_cast<unsigned>(count) & (std::tuple_size_v<HeightsOfCounts> - 1);
}

/// A whole trace: its samples 0, 1 ... up to the end of its last column.
struct SampleLane {
    int channel = 0;
    const HeightsOfCounts* heights = nullptr; ///< monotonic: all rising or all falling with the count
    double yPos = 0;                          ///< the height of a count of 0, not rounded
    std::optional<double> step;               ///< pixels a count, where wideStepGives has said so
    std::span<const ColumnEnd> columns;       ///< which samples fall on which column; not empty
    TraceColumn* out = nullptr;               ///< room for as many columns
};

/// Computes the points of several whole traces side by side. The sample arrays are sample-major: one pass through
/// memory does for all channels, where computing one channel after the other takes six. Stores PlotX and PlotY of every
/// sample visited. False where a count lies outside -2048 to 2047; what is stored then is not to be used.
[[nodiscard]] bool computeLanes(publicM& model, std::span<const SampleLane> lanes);

/// Whole traces of all six channels whose columns end at the same samples: one time scale for all.
struct SixLanes {
    /// Eight values where vectors read them; two stand for no channel.
    template<typename T>
    using Values = NumberedArray<T, 8>;

    const std::int16_t* samples = nullptr; ///< the first row of samples; two more elements stand after the last row
    std::int32_t* plotX = nullptr;
    std::int32_t* plotY = nullptr;
    Values<double> yPos{};              ///< as in SampleLane
    Values<double> step{};              ///< as in SampleLane
    std::span<const ColumnEnd> columns; ///< not empty
    PerChannel<TraceColumn*> out{};     ///< room for as many columns
};

/// Whether vectors compute exactly the given heights, for every count, from a step and the height of a count of 0.
[[nodiscard]] bool wideStepGives(double step, double yPos, const HeightsOfCounts& heights);
/// The same as computeLanes, by vectors.
[[nodiscard]] bool computeSixLanesWide(const SixLanes& lanes);

} // namespace sixtrace
