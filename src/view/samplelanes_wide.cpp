// SPDX-License-Identifier: MIT
// This file is compiled once for each kind of vectors that a processor may have; the best one is chosen at run time.
#include "view/samplelanes.h"

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
constexpr std::size_t kInLastPart = kChannels - (kParts - 1) * kLanes;
/// A row of counts and two more are one vector, or single counts where there are no vectors.
using NarrowCounts = hn::CappedTag<std::int16_t, 8>;
constexpr std::size_t kNarrowLanes = hn::MaxLanes(NarrowCounts());
using RowOfCounts = std::array<hn::Vec<NarrowCounts>, 8 / kNarrowLanes>;
using RowOfDoubles = std::array<hn::Vec<Doubles>, kParts>;

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
HWY_INLINE void store(const RowOfCounts& row, std::int16_t* counts) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        hn::StoreU(row[i], NarrowCounts(), counts + i * kNarrowLanes);
    }
}

/// Stores the values of a row's part, and nothing after the row.
template<class Values>
HWY_INLINE void store(Values values, std::size_t part, std::int32_t* row) {
    const Integers tag;
    if (kInLastPart == kLanes || part + 1 < kParts) {
        hn::StoreU(values, tag, row + part * kLanes);
    } else if constexpr (kInLastPart * 2 == kLanes) {
        hn::StoreU(hn::LowerHalf(values), hn::Half<Integers>(), row + part * kLanes);
    } else {
        hn::BlendedStore(values, hn::FirstN(tag, kInLastPart), tag, row + part * kLanes);
    }
}

void computeRows(LaneRows& lanes, const std::int16_t* samples, std::int32_t* plotX, std::int32_t* plotY, int rows) {
    RowOfDoubles step;
    RowOfDoubles zeroLine;
    std::array<hn::Vec<Integers>, kParts> x;
    for (std::size_t part = 0; part < kParts; ++part) {
        step[part] = hn::LoadU(Doubles(), lanes.step.data() + part * kLanes);
        zeroLine[part] = hn::Add(hn::LoadU(Doubles(), lanes.yPos.data() + part * kLanes), hn::Set(Doubles(), kFine));
        x[part] = hn::LoadU(Integers(), lanes.x.data() + part * kLanes);
    }
    RowOfCounts least = load(lanes.least.data());
    RowOfCounts greatest = load(lanes.greatest.data());
    for (int row = 0; row < rows; ++row) {
        const RowOfCounts counts = load(samples);
        for (std::size_t i = 0; i < counts.size(); ++i) {
            least[i] = hn::Min(least[i], counts[i]);
            greatest[i] = hn::Max(greatest[i], counts[i]);
        }
        for (std::size_t part = 0; part < kParts; ++part) {
            const auto integers = hn::PromoteTo(Integers(), hn::LoadU(Counts(), samples + part * kLanes));
            const auto values = hn::PromoteTo(Doubles(), integers);
            store(x[part], part, plotX);
            store(heightsOf(values, step[part], zeroLine[part]), part, plotY);
        }
        samples += kChannels;
        plotX += kChannels;
        plotY += kChannels;
    }
    store(least, lanes.least.data());
    store(greatest, lanes.greatest.data());
}

} // namespace sixtrace::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace sixtrace {

HWY_EXPORT(stepGives);
HWY_EXPORT(computeRows);

bool wideStepGives(double step, double yPos, const HeightsOfCounts& heights) {
    return HWY_DYNAMIC_DISPATCH(stepGives)(step, yPos, heights);
}

void computeRowsWide(LaneRows& lanes, const std::int16_t* samples, std::int32_t* plotX, std::int32_t* plotY, int rows) {
    HWY_DYNAMIC_DISPATCH(computeRows)(lanes, samples, plotX, plotY, rows);
}

} // namespace sixtrace
#endif
