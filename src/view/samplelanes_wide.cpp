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

/// Stores the values of a row and two more.
HWY_INLINE void store(const RowOfIntegers& row, std::int32_t* out) {
    for (std::size_t part = 0; part < kParts; ++part) {
        hn::StoreU(row[part], Integers(), out + part * kLanes);
    }
}
/// Stores the values of a row and nothing after them.
HWY_INLINE void storeExactly(const RowOfIntegers& row, std::int32_t* out) {
    std::array<std::int32_t, kParts * kLanes> values;
    store(row, values.data());
    std::copy_n(values.data(), kChannels, out);
}

bool computeSixLanes(const SixLanes& lanes) {
    RowOfDoubles step;
    RowOfDoubles zeroLine;
    for (std::size_t part = 0; part < kParts; ++part) {
        step[part] = hn::LoadU(Doubles(), lanes.step.data() + part * kLanes);
        zeroLine[part] = hn::Add(hn::LoadU(Doubles(), lanes.yPos.data() + part * kLanes), hn::Set(Doubles(), kFine));
    }
    const auto heights = [&](const std::int16_t* counts) HWY_ATTR {
        RowOfIntegers row;
        for (std::size_t part = 0; part < kParts; ++part) {
            const auto integers = hn::PromoteTo(Integers(), hn::LoadU(Counts(), counts + part * kLanes));
            row[part] = heightsOf(hn::PromoteTo(Doubles(), integers), step[part], zeroLine[part]);
        }
        return row;
    };
    const auto heightsOfCounts = [&](const RowOfCounts& counts) HWY_ATTR {
        std::array<std::int16_t, 8> values;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            hn::StoreU(counts[i], NarrowCounts(), values.data() + i * kNarrowLanes);
        }
        return heights(values.data());
    };

    const std::int16_t* samples = lanes.samples;
    std::int32_t* plotX = lanes.plotX;
    std::int32_t* plotY = lanes.plotY;
    PerChannel<TraceColumn*> out = lanes.out;
    RowOfCounts leastOfAll = load(samples);
    RowOfCounts greatestOfAll = leastOfAll;
    const int lastRow = lanes.columns.back().end - 1;
    int row = 0;
    for (const ColumnEnd& column : lanes.columns) {
        RowOfIntegers x;
        x.fill(hn::Set(Integers(), column.x));
        const RowOfIntegers firstY = heights(samples);
        RowOfIntegers y = firstY;
        RowOfCounts least = load(samples);
        RowOfCounts greatest = least;
        for (; row < column.end; ++row) {
            const RowOfCounts counts = load(samples);
            for (std::size_t i = 0; i < counts.size(); ++i) {
                least[i] = hn::Min(least[i], counts[i]);
                greatest[i] = hn::Max(greatest[i], counts[i]);
            }
            y = heights(samples);
            if (row < lastRow) {
                store(x, plotX);
                store(y, plotY);
            } else {
                storeExactly(x, plotX);
                storeExactly(y, plotY);
            }
            samples += kChannels;
            plotX += kChannels;
            plotY += kChannels;
        }
        // The least count has the greatest height, or the least where a scale runs downwards.
        const RowOfIntegers ofLeast = heightsOfCounts(least);
        const RowOfIntegers ofGreatest = heightsOfCounts(greatest);
        std::array<std::array<std::int32_t, kParts * kLanes>, 4> values;
        store(firstY, values[0].data());
        store(y, values[1].data());
        for (std::size_t part = 0; part < kParts; ++part) {
            hn::StoreU(hn::Min(ofLeast[part], ofGreatest[part]), Integers(), values[2].data() + part * kLanes);
            hn::StoreU(hn::Max(ofLeast[part], ofGreatest[part]), Integers(), values[3].data() + part * kLanes);
        }
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            *out[channel]++ = {column.x, values[0][channel], values[1][channel], values[2][channel],
                               values[3][channel]};
        }
        for (std::size_t i = 0; i < least.size(); ++i) {
            leastOfAll[i] = hn::Min(leastOfAll[i], least[i]);
            greatestOfAll[i] = hn::Max(greatestOfAll[i], greatest[i]);
        }
    }
    std::array<std::int16_t, 8> least;
    std::array<std::int16_t, 8> greatest;
    for (std::size_t i = 0; i < leastOfAll.size(); ++i) {
        hn::StoreU(leastOfAll[i], NarrowCounts(), least.data() + i * kNarrowLanes);
        hn::StoreU(greatestOfAll[i], NarrowCounts(), greatest.data() + i * kNarrowLanes);
    }
    return *std::min_element(least.begin(), least.begin() + kChannels) >= kLeastCount &&
           *std::max_element(greatest.begin(), greatest.begin() + kChannels) <= kGreatestCount;
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
