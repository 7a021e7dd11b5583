// SPDX-License-Identifier: MIT
#include "view/samplelanes.h"

#include "platform/drawing/vectors.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace sixtrace {

namespace {

constexpr int kLeastCount = -2048; ///< what converters of up to 12 bits give
constexpr int kGreatestCount = 2047;

} // namespace

#if defined(__x86_64__)

namespace {

#define SIXTRACE_LANES gnu::target("avx512f,avx512dq,avx512bw,avx512vl")

constexpr std::size_t kLanes = 8; ///< doubles in a vector; six are used

/// Nearest integers, halves to even, as std::nearbyint has them. (The form without a mask makes the compiler see an
/// uninitialised value; the one that names the rounding does not pass an unoptimised build's conversion warnings.)
[[SIXTRACE_LANES]] inline __m256i nearest(__m512d values) {
    return _mm512_maskz_cvtpd_epi32(0xFF, values);
}

/// Doubles beside it are 1/1048576 apart.
constexpr double kMagic = 0x1.8p32;

/// The rounded heights of eight counts. Their distances from the zero line are rounded to 1/1048576 of a pixel first,
/// so that a height that lies exactly between two pixels stays exactly between them. `magicYPos` is the zero line, a
/// whole number, plus kMagic.
[[SIXTRACE_LANES]] inline __m256i heights(__m512d counts, __m512d step, __m512d magicYPos) {
    return nearest(_mm512_sub_pd(magicYPos, _mm512_fmadd_pd(counts, step, _mm512_set1_pd(kMagic))));
}

/// The columns that the lanes have reached, and where the next of them ends.
struct LaneState {
    alignas(32) std::array<std::int32_t, kLanes> x{};
    alignas(32) std::array<std::int32_t, kLanes> end{}; ///< of the lane's present column
    alignas(32) std::array<std::int32_t, kLanes> first{};
    alignas(32) std::array<std::int32_t, kLanes> last{};
    alignas(32) std::array<std::int32_t, kLanes> least{};
    alignas(32) std::array<std::int32_t, kLanes> greatest{};
    std::array<const ColumnEnd*, kLanes> next{}; ///< the column behind the present one
    std::array<const ColumnEnd*, kLanes> behind{};
    std::array<TraceColumn*, kLanes> out{};
    unsigned active = 0; ///< lanes that have columns left, a bit for each

    explicit LaneState(std::span<const SampleLane> lanes) {
        end.fill(kSampleRows + 1);
        for (const SampleLane& lane : lanes) {
            const auto c = static_cast<std::size_t>(lane.channel);
            x[c] = lane.columns[0].x;
            end[c] = lane.columns[0].end;
            next[c] = lane.columns.data() + 1;
            behind[c] = lane.columns.data() + lane.columns.size();
            out[c] = lane.out;
            active |= 1U << c;
        }
    }
    /// Hands over the columns of the given lanes and begins their next ones.
    void finishColumns(unsigned finished) {
        for (; finished != 0; finished &= finished - 1) {
            const auto c = static_cast<std::size_t>(std::countr_zero(finished));
            *out[c]++ = {x[c], first[c], last[c], least[c], greatest[c]};
            if (next[c] == behind[c]) {
                active &= ~(1U << c);
                end[c] = kSampleRows + 1;
            } else {
                x[c] = next[c]->x;
                end[c] = next[c]->end;
                ++next[c];
            }
        }
    }
};

template<typename T>
[[SIXTRACE_LANES]] inline __m256i loadLanes(const std::array<T, kLanes>& values) {
    return _mm256_load_si256(reinterpret_cast<const __m256i*>(values.data()));
}
template<typename T>
[[SIXTRACE_LANES]] inline void storeLanes(std::array<T, kLanes>& values, __m256i vector) {
    _mm256_store_si256(reinterpret_cast<__m256i*>(values.data()), vector);
}

/// The least of eight integers.
[[SIXTRACE_LANES]] inline std::int32_t leastOf(__m256i values) {
    __m128i four = _mm_min_epi32(_mm256_castsi256_si128(values), _mm256_extracti32x4_epi32(values, 1));
    four = _mm_min_epi32(four, _mm_shuffle_epi32(four, 0b01'00'11'10));
    four = _mm_min_epi32(four, _mm_shuffle_epi32(four, 0b10'11'00'01));
    return _mm_cvtsi128_si32(four);
}

} // namespace

[[SIXTRACE_LANES]] static std::optional<double> tryLaneStep(const TraceScale& scale) {
    const double step = scale.perCount * kScreenHeight / scale.divisor;
    const __m512d yPos = _mm512_set1_pd(scale.yPos);
    const __m512d magicYPos = _mm512_set1_pd(scale.yPos + kMagic);
    __m512d counts = _mm512_add_pd(_mm512_set_pd(7, 6, 5, 4, 3, 2, 1, 0), _mm512_set1_pd(kLeastCount));
    for (int i = kLeastCount; i <= kGreatestCount; i += static_cast<int>(kLanes)) {
        // The very steps of TraceScale::y, which the compiler may not merge: a division lies between them.
        const __m512d scaled =
            _mm512_mul_pd(_mm512_mul_pd(counts, _mm512_set1_pd(scale.perCount)), _mm512_set1_pd(kScreenHeight));
        const __m512d exact = _mm512_sub_pd(yPos, _mm512_div_pd(scaled, _mm512_set1_pd(scale.divisor)));
        const __m256i wanted = nearest(exact);
        if (_mm256_cmpneq_epi32_mask(wanted, heights(counts, _mm512_set1_pd(step), magicYPos)) != 0) {
            return std::nullopt;
        }
        counts = _mm512_add_pd(counts, _mm512_set1_pd(static_cast<double>(kLanes)));
    }
    return step;
}

std::optional<double> laneStep(const TraceScale& scale) {
    return hasWideVectors() ? tryLaneStep(scale) : std::nullopt;
}

[[SIXTRACE_LANES]] static bool computeInVectors(publicM& model, std::span<const SampleLane> lanes) {
    LaneState state(lanes);
    std::array<double, kLanes> steps{};
    std::array<double, kLanes> zeroLines{};
    for (const SampleLane& lane : lanes) {
        steps[static_cast<std::size_t>(lane.channel)] = lane.step;
        zeroLines[static_cast<std::size_t>(lane.channel)] = lane.scale.yPos + kMagic;
    }
    const __m512d step = _mm512_loadu_pd(steps.data());
    const __m512d magicYPos = _mm512_loadu_pd(zeroLines.data());
    const __m256i offset = _mm256_set1_epi32(-kLeastCount);
    __m256i anyCount = _mm256_setzero_si256(); // every bit that a count above the least has shown
    __m256i first = _mm256_setzero_si256();
    __m256i least = first;
    __m256i greatest = first;

    std::ptrdiff_t at = 0;
    const std::int16_t* const samples = model.SampleData.channel(0);
    std::int32_t* const plotX = model.PlotX.channel(0);
    std::int32_t* const plotY = model.PlotY.channel(0);
    auto fresh = static_cast<__mmask8>(state.active); // lanes whose column begins here
    while (state.active != 0) {
        const auto active = static_cast<__mmask8>(state.active);
        const __m256i x = loadLanes(state.x);
        const __m256i ends = loadLanes(state.end);
        const std::int32_t end = leastOf(ends);
        const auto visit = [&]() __attribute__((always_inline, target("avx512f,avx512dq,avx512bw,avx512vl"))) {
            const __m256i counts = _mm256_cvtepi16_epi32(_mm_maskz_loadu_epi16(active, samples + at));
            const __m256i y = heights(_mm512_maskz_cvtepi32_pd(0xFF, counts), step, magicYPos);
            anyCount = _mm256_or_si256(anyCount, _mm256_add_epi32(counts, offset));
            _mm256_mask_storeu_epi32(plotX + at, active, x);
            _mm256_mask_storeu_epi32(plotY + at, active, y);
            at += kChannels;
            return y;
        };
        __m256i last = visit();
        first = _mm256_mask_mov_epi32(first, fresh, last);
        least = _mm256_mask_mov_epi32(_mm256_min_epi32(least, last), fresh, last);
        greatest = _mm256_mask_mov_epi32(_mm256_max_epi32(greatest, last), fresh, last);
        const std::ptrdiff_t behind = std::ptrdiff_t{end} * kChannels;
        while (at < behind) {
            last = visit();
            least = _mm256_min_epi32(least, last);
            greatest = _mm256_max_epi32(greatest, last);
        }
        storeLanes(state.first, first);
        storeLanes(state.last, last);
        storeLanes(state.least, least);
        storeLanes(state.greatest, greatest);
        fresh = _mm256_cmpeq_epi32_mask(ends, _mm256_set1_epi32(end));
        state.finishColumns(fresh);
    }
    constexpr int kOutside = ~(kGreatestCount - kLeastCount);
    return _mm256_test_epi32_mask(anyCount, _mm256_set1_epi32(kOutside)) == 0;
}

bool computeLanes(publicM& model, std::span<const SampleLane> lanes) {
    return hasWideVectors() && computeInVectors(model, lanes);
}

#undef SIXTRACE_LANES

#else

std::optional<double> laneStep(const TraceScale&) {
    return std::nullopt;
}
bool computeLanes(publicM&, std::span<const SampleLane>) {
    return false;
}

#endif

} // namespace sixtrace
