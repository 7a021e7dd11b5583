// SPDX-License-Identifier: MIT
// This file is compiled once for each kind of vectors that a processor may have; the best one is chosen at run time.
#include "view/samplelanes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

// Vectors whose length only the running processor knows do not fit into arrays.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "view/samplelanes_wide.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace sixtrace::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Doubles = hn::CappedTag<double, 8>;
using Integers = hn::Rebind<std::int32_t, Doubles>;
using Counts = hn::Rebind<std::int16_t, Doubles>;
constexpr std::size_t kLanes = hn::MaxLanes(Doubles());
constexpr std::size_t kParts = (kChannels + kLanes - 1) / kLanes; ///< vectors in a row
/// A row of counts and two more are one vector, or single counts where there are no vectors.
using NarrowCounts = hn::CappedTag<std::int16_t, 8>;
constexpr std::size_t kNarrowLanes = hn::MaxLanes(NarrowCounts());
using RowOfCounts = std::array<hn::Vec<NarrowCounts>, 8 / kNarrowLanes>;
using RowOfDoubles = std::array<hn::Vec<Doubles>, kParts>;
using RowOfIntegers = std::array<hn::Vec<Integers>, kParts>;

/// Neighbouring doubles are 1/1048576 apart here, and whole numbers there.
constexpr double kFine = 0x1.8p32;
constexpr double kWhole = 0x1.8p52;

/// The rounded heights of counts. Their distances from the zero line are rounded to 1/1048576 of a pixel first, so that
/// a height that lies exactly between two pixels stays exactly between them. `zeroLine` is the zero line plus kFine.
/// The sum with kWhole rounds halves to even and has the integer in its lowest bits.
HWY_INLINE hn::Vec<Integers> heightsOf(hn::Vec<Doubles> counts, hn::Vec<Doubles> step, hn::Vec<Doubles> zeroLine) {
    const Doubles tag;
    const auto height = hn::Sub(zeroLine, hn::MulAdd(counts, step, hn::Set(tag, kFine)));
    const auto bits = hn::BitCast(hn::RebindToUnsigned<Doubles>(), hn::Add(height, hn::Set(tag, kWhole)));
    return hn::BitCast(Integers(), hn::TruncateTo(hn::RebindToUnsigned<Integers>(), bits));
}

bool stepGives(double step, double yPos, const HeightsOfCounts& heights) {
    const Doubles tag;
    const auto steps = hn::Set(tag, step);
    const auto zeroLine = hn::Set(tag, yPos + kFine);
    for (std::size_t entry = 0; entry < heights.size(); entry += kLanes) {
        const int count = static_cast<int>(entry) <= kGreatestCount
                              ? static_cast<int>(entry)
                              : static_cast<int>(entry) - static_cast<int>(heights.size());
        const auto found = heightsOf(hn::Iota(tag, count), steps, zeroLine);
        if (!hn::AllTrue(Integers(), hn::Eq(found, hn::LoadU(Integers(), heights.data() + entry)))) {
            return false;
        }
    }
    return true;
}

HWY_INLINE RowOfCounts load(const std::int16_t* counts) {
    RowOfCounts row;
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = hn::LoadU(NarrowCounts(), counts + i * kNarrowLanes);
    }
    return row;
}
HWY_INLINE std::array<std::int16_t, 8> countsOf(const RowOfCounts& row) {
    std::array<std::int16_t, 8> counts;
    for (std::size_t i = 0; i < row.size(); ++i) {
        hn::StoreU(row[i], NarrowCounts(), counts.data() + i * kNarrowLanes);
    }
    return counts;
}

/// Stores the values of a row and two more.
HWY_INLINE void store(const RowOfIntegers& row, std::int32_t* out) {
    for (std::size_t part = 0; part < kParts; ++part) {
        hn::StoreU(row[part], Integers(), out + part * kLanes);
    }
}
using StoredRow = std::array<std::int32_t, kParts * kLanes>;
HWY_INLINE StoredRow stored(const RowOfIntegers& row) {
    StoredRow values;
    store(row, values.data());
    return values;
}

/// The extremes of each channel's counts in some rows.
struct Extremes {
    RowOfCounts least;
    RowOfCounts greatest;

    HWY_INLINE void include(const RowOfCounts& low, const RowOfCounts& high) {
        for (std::size_t i = 0; i < least.size(); ++i) {
            least[i] = hn::Min(least[i], low[i]);
            greatest[i] = hn::Max(greatest[i], high[i]);
        }
    }
    /// Whether all counts of the six channels are those that tables and steps hold for.
    [[nodiscard]] HWY_INLINE bool inRange() const {
        const auto low = countsOf(least);
        const auto high = countsOf(greatest);
        return *std::min_element(low.begin(), low.begin() + kChannels) >= kLeastCount &&
               *std::max_element(high.begin(), high.begin() + kChannels) <= kGreatestCount;
    }
};

/// The volt scales of the six channels.
struct Scales {
    RowOfDoubles step;
    RowOfDoubles zeroLine;

    HWY_INLINE explicit Scales(const SixLanes& lanes) {
        for (std::size_t part = 0; part < kParts; ++part) {
            step[part] = hn::LoadU(Doubles(), lanes.step.data() + part * kLanes);
            zeroLine[part] =
                hn::Add(hn::LoadU(Doubles(), lanes.yPos.data() + part * kLanes), hn::Set(Doubles(), kFine));
        }
    }
    [[nodiscard]] HWY_INLINE RowOfIntegers heights(const std::int16_t* counts) const {
        RowOfIntegers row;
        for (std::size_t part = 0; part < kParts; ++part) {
            const auto integers = hn::PromoteTo(Integers(), hn::LoadU(Counts(), counts + part * kLanes));
            row[part] = heightsOf(hn::PromoteTo(Doubles(), integers), step[part], zeroLine[part]);
        }
        return row;
    }
};

/// Hands over a column of each channel.
HWY_INLINE void giveColumns(PerChannel<TraceColumn*>& out, std::int32_t x, const Scales& scales,
                            const Extremes& extremes, const RowOfIntegers& firstY, const RowOfIntegers& lastY) {
    // The least count has the greatest height, or the least where a scale runs downwards.
    const StoredRow ofLeast = stored(scales.heights(countsOf(extremes.least).data()));
    const StoredRow ofGreatest = stored(scales.heights(countsOf(extremes.greatest).data()));
    const StoredRow first = stored(firstY);
    const StoredRow last = stored(lastY);
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        *out[channel]++ = {x, first[channel], last[channel], std::min(ofLeast[channel], ofGreatest[channel]),
                           std::max(ofLeast[channel], ofGreatest[channel])};
    }
}

bool computeSixLanes(const SixLanes& lanes) {
    const Scales scales(lanes);
    const std::int16_t* samples = lanes.samples;
    std::int32_t* plotX = lanes.plotX;
    std::int32_t* plotY = lanes.plotY;
    PerChannel<TraceColumn*> out = lanes.out;
    Extremes ofAll{load(samples), load(samples)};
    const int lastRow = lanes.columns.back().end - 1;
    int row = 0;
    for (const ColumnEnd& column : lanes.columns) {
        RowOfIntegers x;
        x.fill(hn::Set(Integers(), column.x));
        const RowOfIntegers firstY = scales.heights(samples);
        RowOfIntegers y = firstY;
        Extremes extremes{load(samples), load(samples)};
        for (; row < column.end; ++row) {
            const RowOfCounts counts = load(samples);
            extremes.include(counts, counts);
            y = scales.heights(samples);
            if (row < lastRow) {
                // What this stores too much is the beginning of the next row.
                store(x, plotX);
                store(y, plotY);
            } else {
                std::copy_n(stored(x).data(), kChannels, plotX);
                std::copy_n(stored(y).data(), kChannels, plotY);
            }
            samples += kChannels;
            plotX += kChannels;
            plotY += kChannels;
        }
        giveColumns(out, column.x, scales, extremes, firstY, y);
        ofAll.include(extremes.least, extremes.greatest);
    }
    return ofAll.inRange();
}

} // namespace sixtrace::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace sixtrace {

HWY_EXPORT(stepGives);
HWY_EXPORT(computeSixLanes);

bool wideStepGives(double step, double yPos, const HeightsOfCounts& heights) {
    return HWY_DYNAMIC_DISPATCH(stepGives)(step, yPos, heights);
}

bool computeSixLanesWide(const SixLanes& lanes) {
    return HWY_DYNAMIC_DISPATCH(computeSixLanes)(lanes);
}

} // namespace sixtrace
#endif
