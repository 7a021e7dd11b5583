// SPDX-License-Identifier: MIT
#include "view/tracepoints.h"

#include "platform/numbers.h"

#include <algorithm>
#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace sixtrace {

namespace {

constexpr double kLargest = 2147483647.0;

bool fitsInt32(double value) { return value > -kLargest && value < kLargest; }

/// What a point needs, as plain numbers.
struct Mapping {
    double x0;
    double dx;
    double yPos;
    double perCount;
    double divisor;
};

/// Points of `count` samples from `samples` on, one per row, counters first, first + 1 ... The caller has made sure
/// that none of them overflows. Conversion rounds to the nearest integer, halves to even, as the processor does by
/// default; X and Y are computed as TraceScale::x and y do, operation by operation.
void computePoints(const Mapping& map, double first, const std::int16_t* samples, int count, std::int32_t* xs,
                   std::int32_t* ys) {
    int i = 0;
#if defined(__SSE2__)
    const __m128d x0 = _mm_set1_pd(map.x0);
    const __m128d dx = _mm_set1_pd(map.dx);
    const __m128d yPos = _mm_set1_pd(map.yPos);
    const __m128d perCount = _mm_set1_pd(map.perCount);
    const __m128d height = _mm_set1_pd(kScreenHeight);
    const __m128d divisor = _mm_set1_pd(map.divisor);
    const __m128d two = _mm_set1_pd(2.0);
    __m128d index = _mm_set_pd(first + 1, first);
    for (; i + 2 <= count; i += 2) {
        const std::int16_t* const sample = samples + static_cast<std::ptrdiff_t>(i) * kChannels;
        const __m128d counts = _mm_cvtepi32_pd(_mm_set_epi32(0, 0, sample[kChannels], sample[0]));
        const __m128d x = _mm_add_pd(x0, _mm_mul_pd(index, dx));
        const __m128d y =
            _mm_sub_pd(yPos, _mm_div_pd(_mm_mul_pd(_mm_mul_pd(counts, perCount), height), divisor));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(xs + i), _mm_cvtpd_epi32(x));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(ys + i), _mm_cvtpd_epi32(y));
        index = _mm_add_pd(index, two);
    }
#endif
    for (; i < count; ++i) {
        const double counter = first + i;
        const double sample = samples[static_cast<std::ptrdiff_t>(i) * kChannels];
        xs[i] = static_cast<std::int32_t>(std::nearbyint(map.x0 + counter * map.dx));
        ys[i] = static_cast<std::int32_t>(
            std::nearbyint(map.yPos - sample * map.perCount * kScreenHeight / map.divisor));
    }
}

} // namespace

bool isSampleRow(double index) { return index >= 0 && index <= kSampleRows - 1; }

PointRun TracePoints::compute(publicM& model, int channel, const TraceScale& scale, double first, double last) {
    PointRun run{m_xs.data(), m_ys.data(), 0, true};
    if (!(first <= last)) {
        return run;
    }
    // Rows are rint(first), one more each: no half can occur on the way, since the fraction never changes.
    const double firstRow = std::nearbyint(first);
    if (!isSampleRow(firstRow)) {
        run.complete = false;
        return run;
    }
    const double wanted = std::floor(last - first) + 1;
    const double held = kSampleRows - firstRow;
    run.complete = wanted <= held;
    const int count = static_cast<int>(std::min(wanted, held));

    std::int32_t* const plotX = model.PlotX.channel(channel) + static_cast<std::ptrdiff_t>(firstRow) * kChannels;
    std::int32_t* const plotY = model.PlotY.channel(channel) + static_cast<std::ptrdiff_t>(firstRow) * kChannels;
    const std::int16_t* const samples =
        model.SampleData.channel(channel) + static_cast<std::ptrdiff_t>(firstRow) * kChannels;

    // X lies between its ends, Y between those of the sample type: if these fit, all do.
    const bool fits = fitsInt32(scale.x(first)) && fitsInt32(scale.x(first + count)) && fitsInt32(scale.y(32767)) &&
                      fitsInt32(scale.y(-32768));
    if (fits) {
        computePoints({scale.x0, scale.dxPlot, scale.yPos, scale.perCount, scale.divisor}, first, samples, count,
                      m_xs.data(), m_ys.data());
        for (int i = 0; i < count; ++i) {
            plotX[i * kChannels] = m_xs[static_cast<std::size_t>(i)];
            plotY[i * kChannels] = m_ys[static_cast<std::size_t>(i)];
        }
        run.count = count;
        return run;
    }
    for (int i = 0; i < count; ++i) {
        const auto x = toInt32(scale.x(first + i));
        if (!x) {
            run.complete = false;
            return run;
        }
        plotX[i * kChannels] = *x;
        const auto y = toInt32(scale.y(samples[i * kChannels]));
        if (!y) {
            run.complete = false;
            return run;
        }
        plotY[i * kChannels] = *y;
        m_xs[static_cast<std::size_t>(run.count)] = *x;
        m_ys[static_cast<std::size_t>(run.count)] = *y;
        ++run.count;
    }
    return run;
}

} // namespace sixtrace
