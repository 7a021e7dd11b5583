// SPDX-License-Identifier: MIT
#include "capture/samplespread.h"

#include "capture/bytesource.h"

#include <algorithm>
#include <limits>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace sixtrace {

namespace {

/// Samples first to end - 1 of one channel.
void spread(std::int16_t* target, const std::byte* bytes, std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i) {
        target[i * kChannels] = ByteSource::decode<std::int16_t>(bytes + 2 * i);
    }
}

SampleExtremes extremesOneByOne(const std::byte* bytes, std::size_t first, std::size_t count, SampleExtremes extremes) {
    for (std::size_t i = first; i < count; ++i) {
        const int sample = ByteSource::decode<std::int16_t>(bytes + 2 * i);
        extremes.least = std::min(extremes.least, sample);
        extremes.greatest = std::max(extremes.greatest, sample);
    }
    return extremes;
}

constexpr SampleExtremes kNoExtremes{std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};

#if defined(__x86_64__)

#define SIXTRACE_WIDE gnu::target("avx512f,avx512dq,avx512bw,avx512vl")

constexpr std::size_t kWide = 32; ///< samples in a vector

constexpr std::size_t kPairs = kChannels / 2;
constexpr std::size_t kWideRows = kWide / 2; ///< rows of a pair in a vector

/// Where the elements of the six vectors come from that hold 32 rows of three pairs of channels: for each the row among
/// the even or, 16 further, among the odd ones, and the second and third pair as masks.
struct Weave {
    alignas(64) std::array<std::array<std::int32_t, kWideRows>, kChannels> source{};
    std::array<std::uint16_t, kChannels> ofSecondPair{};
    std::array<std::uint16_t, kChannels> ofThirdPair{};
};

constexpr Weave makeWeave() {
    Weave weave;
    for (std::size_t vector = 0; vector < kChannels; ++vector) {
        for (std::size_t i = 0; i < kWideRows; ++i) {
            const std::size_t row = (vector * kWideRows + i) / kPairs;
            const std::size_t pair = (vector * kWideRows + i) % kPairs;
            weave.source[vector][i] = static_cast<std::int32_t>(row / 2 + row % 2 * kWideRows);
            const auto bit = static_cast<std::uint16_t>(1U << i);
            weave.ofSecondPair[vector] = static_cast<std::uint16_t>(weave.ofSecondPair[vector] | (pair == 1 ? bit : 0));
            weave.ofThirdPair[vector] = static_cast<std::uint16_t>(weave.ofThirdPair[vector] | (pair == 2 ? bit : 0));
        }
    }
    return weave;
}

constexpr Weave kWeave = makeWeave();

constexpr std::uint32_t kUpperHalves = 0xAAAAAAAA;
constexpr std::uint16_t kAll = 0xFFFF; ///< (The forms without a mask make the compiler see an uninitialised value.)

/// Samples 0, 2, 4 ... of two channels in pairs.
[[SIXTRACE_WIDE]] inline __m512i evenPairs(__m512i first, __m512i second) {
    return _mm512_mask_blend_epi16(kUpperHalves, first, _mm512_maskz_slli_epi32(kAll, second, 16));
}

/// Samples 1, 3, 5 ... of two channels in pairs.
[[SIXTRACE_WIDE]] inline __m512i oddPairs(__m512i first, __m512i second) {
    return _mm512_mask_blend_epi16(kUpperHalves, _mm512_maskz_srli_epi32(kAll, first, 16), second);
}

/// The first `rows` rows of all six channels, a multiple of 32. Samples of two channels are paired by shifts first:
/// moving pairs about costs a third of what moving single samples does.
[[SIXTRACE_WIDE]] void weave(std::int16_t* target, const PerChannel<const std::byte*>& from, std::size_t rows) {
    for (std::size_t row = 0; row < rows; row += kWide) {
        const auto load = [&](std::size_t channel) __attribute__((target("avx512f,avx512dq,avx512bw,avx512vl"))) {
            return _mm512_loadu_si512(from[channel] + 2 * row);
        };
        const __m512i s0 = load(0);
        const __m512i s1 = load(1);
        const __m512i s2 = load(2);
        const __m512i s3 = load(3);
        const __m512i s4 = load(4);
        const __m512i s5 = load(5);
        const __m512i even0 = evenPairs(s0, s1);
        const __m512i odd0 = oddPairs(s0, s1);
        const __m512i even1 = evenPairs(s2, s3);
        const __m512i odd1 = oddPairs(s2, s3);
        const __m512i even2 = evenPairs(s4, s5);
        const __m512i odd2 = oddPairs(s4, s5);
        for (std::size_t vector = 0; vector < kChannels; ++vector) {
            const __m512i source = _mm512_load_si512(kWeave.source[vector].data());
            __m512i woven = _mm512_permutex2var_epi32(even0, source, odd0);
            woven = _mm512_mask_mov_epi32(woven, kWeave.ofSecondPair[vector],
                                          _mm512_permutex2var_epi32(even1, source, odd1));
            woven = _mm512_mask_mov_epi32(woven, kWeave.ofThirdPair[vector],
                                          _mm512_permutex2var_epi32(even2, source, odd2));
            _mm512_storeu_si512(target + row * kChannels + vector * kWide, woven);
        }
    }
}

/// The extremes of the first `count` samples, a multiple of 32 and not 0.
[[SIXTRACE_WIDE]] SampleExtremes extremesInVectors(const std::byte* bytes, std::size_t count) {
    // Two of each, so that a step need not wait for the one before.
    __m512i least = _mm512_loadu_si512(bytes);
    __m512i greatest = least;
    __m512i least2 = least;
    __m512i greatest2 = least;
    std::size_t i = kWide;
    for (; i + kWide < count; i += 2 * kWide) {
        const __m512i samples = _mm512_loadu_si512(bytes + 2 * i);
        const __m512i samples2 = _mm512_loadu_si512(bytes + 2 * (i + kWide));
        least = _mm512_min_epi16(least, samples);
        greatest = _mm512_max_epi16(greatest, samples);
        least2 = _mm512_min_epi16(least2, samples2);
        greatest2 = _mm512_max_epi16(greatest2, samples2);
    }
    if (i < count) {
        const __m512i samples = _mm512_loadu_si512(bytes + 2 * i);
        least = _mm512_min_epi16(least, samples);
        greatest = _mm512_max_epi16(greatest, samples);
    }
    least = _mm512_min_epi16(least, least2);
    greatest = _mm512_max_epi16(greatest, greatest2);
    std::array<std::int16_t, 2 * kWide> lanes{};
    _mm512_storeu_si512(lanes.data(), least);
    _mm512_storeu_si512(lanes.data() + kWide, greatest);
    return {*std::min_element(lanes.begin(), lanes.begin() + kWide),
            *std::max_element(lanes.begin() + kWide, lanes.end())};
}

#undef SIXTRACE_WIDE
#endif

} // namespace

SampleExtremes extremesOf(const std::byte* bytes, std::size_t count, [[maybe_unused]] Vectors vectors) {
#if defined(__x86_64__)
    if (count >= kWide && vectors == Vectors::Allowed && hasWideVectors()) {
        const std::size_t whole = count / kWide * kWide;
        return extremesOneByOne(bytes, whole, count, extremesInVectors(bytes, whole));
    }
#endif
    return extremesOneByOne(bytes, 0, count, kNoExtremes);
}

SampleSpread::SampleSpread(SampleArray<std::int16_t>& target, Vectors vectors)
    : m_target(target)
    , m_wide(vectors == Vectors::Allowed && hasWideVectors()) {}

void SampleSpread::add(int channel, const std::byte* bytes, std::size_t count) {
    Gathered& gathered = m_gathered[static_cast<std::size_t>(channel)];
    if (gathered.count > 0) {
        flush();
    }
    gathered = {bytes, std::min<std::size_t>(count, kSampleRows)};
}

std::size_t SampleSpread::rowsOfAll() const {
    std::size_t rows = kSampleRows;
    for (const Gathered& gathered : m_gathered) {
        rows = std::min(rows, gathered.count);
    }
    return rows;
}

void SampleSpread::flush() {
    std::size_t done = 0;
#if defined(__x86_64__)
    if (m_wide) {
        PerChannel<const std::byte*> from{};
        std::transform(m_gathered.begin(), m_gathered.end(), from.begin(), [](const Gathered& g) { return g.bytes; });
        done = rowsOfAll() / kWide * kWide;
        weave(m_target.channel(0), from, done);
    }
#endif
    // Blocks whose rows stay in the fastest cache while each channel adds its samples.
    constexpr std::size_t kBlock = 1024;
    for (std::size_t first = done; first < kSampleRows; first += kBlock) {
        for (std::size_t c = 0; c < kChannels; ++c) {
            const std::size_t end = std::min(first + kBlock, m_gathered[c].count);
            if (first < end) {
                spread(m_target.channel(static_cast<int>(c)), m_gathered[c].bytes, first, end);
            }
        }
    }
    m_gathered = {};
}

} // namespace sixtrace
