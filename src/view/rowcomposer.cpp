// SPDX-License-Identifier: MIT
#include "view/rowcomposer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

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

} // namespace

ComposeRow rowComposer(Vectors vectors) {
    return vectors == Vectors::Allowed ? wideComposer() : composeByWords;
}

} // namespace sixtrace
