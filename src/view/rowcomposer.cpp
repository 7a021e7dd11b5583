// SPDX-License-Identifier: MIT
#include "view/rowcomposer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace sixtrace {

namespace {

/// All ones in the pixels of the bits that are set, for each value of eight bits.
using ByteMasks = std::array<std::array<std::uint32_t, 8>, 256>;

constexpr ByteMasks makeByteMasks() {
    ByteMasks masks{};
    for (std::size_t bits = 0; bits < masks.size(); ++bits) {
        for (std::size_t i = 0; i < 8; ++i) {
            masks[bits][i] = ((bits >> i) & 1U) != 0 ? 0xFFFFFFFFU : 0U;
        }
    }
    return masks;
}

constexpr ByteMasks kByteMasks = makeByteMasks();

/// Paints the pixels of the set bits, lowest bit at `pixels`.
void paintWord(std::uint32_t* pixels, std::uint64_t bits, std::uint32_t colour) {
    if (bits == ~std::uint64_t{0}) {
        std::fill_n(pixels, 64, colour);
        return;
    }
    constexpr int kFew = 12;
    if (std::popcount(bits) <= kFew) {
        for (; bits != 0; bits &= bits - 1) {
            pixels[std::countr_zero(bits)] = colour;
        }
        return;
    }
    for (; bits != 0; bits >>= 8, pixels += 8) {
        const auto& mask = kByteMasks[bits & 0xFFU];
        for (std::size_t i = 0; i < 8; ++i) {
            pixels[i] = (pixels[i] & ~mask[i]) | (colour & mask[i]);
        }
    }
}

/// Paints the topmost layer first and each pixel once.
void composeByWords(std::span<const RowLayer> layers, const std::uint32_t* ground, std::uint32_t* out) {
    std::memcpy(out, ground, kSurfaceWidth * sizeof(std::uint32_t));
    RowBits above{};
    for (std::size_t index = layers.size(); index-- > 0;) {
        const RowLayer& layer = layers[index];
        RowBits& covered = *layer.covered;
        for (std::size_t word = 0; word < kRowWords; ++word) {
            covered[word] ^= std::exchange((*layer.toggles)[word], 0);
            const std::uint64_t visible = covered[word] & ~above[word];
            if (visible != 0) {
                paintWord(out + word * 64, visible, layer.pixel);
                above[word] |= visible;
            }
        }
    }
}

#if defined(__x86_64__)

#define SIXTRACE_WIDE gnu::target("avx512f,avx512dq,avx512bw,avx512vl")

constexpr std::size_t kBlock = 16;                                              ///< pixels in a vector
constexpr std::size_t kLastBlocks = (kSurfaceWidth % 64 + kBlock - 1) / kBlock; ///< blocks of a row's last word

/// Composes the pixels of a word, one to four blocks, in registers, so that each is written once.
template<std::size_t Blocks>
[[SIXTRACE_WIDE]] inline void composeWord(std::span<const RowLayer> layers, std::size_t word,
                                          const std::uint32_t* ground, std::uint32_t* out) {
    // Nothing below the topmost layer that covers the whole word can be seen.
    std::size_t index = layers.size();
    while (index > 0 && (*layers[index - 1].covered)[word] != ~std::uint64_t{0}) {
        --index;
    }
    __m512i block0;
    __m512i block1;
    __m512i block2 = _mm512_setzero_si512();
    __m512i block3 = _mm512_setzero_si512();
    if (index > 0) {
        block0 = block1 = block2 = block3 = _mm512_set1_epi32(static_cast<int>(layers[index - 1].pixel));
    } else {
        block0 = _mm512_loadu_si512(ground);
        block1 = _mm512_loadu_si512(ground + kBlock);
        if constexpr (Blocks == 4) {
            block2 = _mm512_loadu_si512(ground + 2 * kBlock);
            block3 = _mm512_loadu_si512(ground + 3 * kBlock);
        }
    }
    for (; index < layers.size(); ++index) {
        const std::uint64_t bits = (*layers[index].covered)[word];
        if (bits == 0) {
            continue;
        }
        const __m512i fill = _mm512_set1_epi32(static_cast<int>(layers[index].pixel));
        block0 = _mm512_mask_mov_epi32(block0, static_cast<__mmask16>(bits), fill);
        block1 = _mm512_mask_mov_epi32(block1, static_cast<__mmask16>(bits >> kBlock), fill);
        if constexpr (Blocks == 4) {
            block2 = _mm512_mask_mov_epi32(block2, static_cast<__mmask16>(bits >> 2 * kBlock), fill);
            block3 = _mm512_mask_mov_epi32(block3, static_cast<__mmask16>(bits >> 3 * kBlock), fill);
        }
    }
    _mm512_storeu_si512(out, block0);
    _mm512_storeu_si512(out + kBlock, block1);
    if constexpr (Blocks == 4) {
        _mm512_storeu_si512(out + 2 * kBlock, block2);
        _mm512_storeu_si512(out + 3 * kBlock, block3);
    }
}

[[SIXTRACE_WIDE]] void composeByVectors(std::span<const RowLayer> layers, const std::uint32_t* ground,
                                        std::uint32_t* out) {
    static_assert(kRowWords == 10 && kLastBlocks == 2, "a row's bits are a vector of eight words and one of two");
    for (const RowLayer& layer : layers) {
        std::uint64_t* const covered = layer.covered->data();
        std::uint64_t* const toggles = layer.toggles->data();
        const __m512i first = _mm512_xor_si512(_mm512_loadu_si512(covered), _mm512_loadu_si512(toggles));
        const __m128i last = _mm_xor_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(covered + 8)),
                                           _mm_loadu_si128(reinterpret_cast<const __m128i*>(toggles + 8)));
        _mm512_storeu_si512(covered, first);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(covered + 8), last);
        _mm512_storeu_si512(toggles, _mm512_setzero_si512());
        _mm_storeu_si128(reinterpret_cast<__m128i*>(toggles + 8), _mm_setzero_si128());
    }
    for (std::size_t word = 0; word < kRowWords; ++word) {
        if (word < kRowWords - 1) {
            composeWord<4>(layers, word, ground + word * 64, out + word * 64);
        } else {
            composeWord<kLastBlocks>(layers, word, ground + word * 64, out + word * 64);
        }
    }
}

#undef SIXTRACE_WIDE
#endif

} // namespace

ComposeRow fastestComposer([[maybe_unused]] Vectors vectors) {
#if defined(__x86_64__)
    if (vectors == Vectors::Allowed && hasWideVectors()) {
        return composeByVectors;
    }
#endif
    return composeByWords;
}

} // namespace sixtrace
