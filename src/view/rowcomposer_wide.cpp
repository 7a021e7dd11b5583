// SPDX-License-Identifier: MIT
// This file is compiled once for each kind of vectors that a processor may have; the best one is chosen at run time.
#include "view/rowcomposer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

// Vectors whose length only the running processor knows do not fit into arrays.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128 | HWY_RVV)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "view/rowcomposer_wide.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace sixtrace::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

using Pixels = hn::CappedTag<std::uint32_t, 16>;
constexpr std::size_t kLanes = hn::MaxLanes(Pixels());
constexpr std::size_t kChunk = kLanes == 16 ? 64 : 32; ///< pixels that are composed in registers and written once
constexpr std::size_t kVectors = kChunk / kLanes;
constexpr std::size_t kRowVectors = kRowRoom / kLanes;
constexpr std::size_t kWholeChunks = kRowVectors / kVectors;

/// For each vector of 32 pixels, the bits of its pixels.
using PixelBits = std::array<hn::Vec<Pixels>, 32 / kLanes>;

HWY_INLINE PixelBits bitsOfPixels() {
    const Pixels tag;
    PixelBits bits;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        bits[i] = hn::Shl(hn::Set(tag, 1), hn::Iota(tag, static_cast<std::uint32_t>(i * kLanes)));
    }
    return bits;
}

/// Composes the first vectors of a chunk, the topmost layer first. What lies below pixels that are covered already is
/// not looked at.
template<std::size_t Vectors>
HWY_INLINE void composeChunk(std::span<const RowLayer> layers, std::size_t first, const PixelBits& bitsOfPixel,
                             const std::uint32_t* ground, std::uint32_t* out) {
    const Pixels tag;
    std::array<hn::Vec<Pixels>, Vectors> pixels;
    for (std::size_t i = 0; i < Vectors; ++i) {
        pixels[i] = hn::LoadU(tag, ground + first + i * kLanes);
    }
    std::uint64_t open = ~std::uint64_t{0} >> (64 - Vectors * kLanes);
    for (std::size_t index = layers.size(); index-- > 0 && open != 0;) {
        const std::uint64_t visible = ((*layers[index].covered)[first / 64] >> (first % 64)) & open;
        if (visible == 0) {
            continue;
        }
        open &= ~visible;
        const auto fill = hn::Set(tag, layers[index].pixel);
        for (std::size_t i = 0; i < Vectors; ++i) {
            const auto bits = hn::Set(tag, static_cast<std::uint32_t>(visible >> (i * kLanes / 32 * 32)));
            pixels[i] = hn::IfThenElse(hn::TestBit(bits, bitsOfPixel[i % bitsOfPixel.size()]), fill, pixels[i]);
        }
    }
    for (std::size_t i = 0; i < Vectors; ++i) {
        hn::StoreU(pixels[i], tag, out + first + i * kLanes);
    }
}

void composeRow(std::span<const RowLayer> layers, const std::uint32_t* ground, std::uint32_t* out) {
    for (const RowLayer& layer : layers) {
        for (std::size_t word = 0; word < kRowWords; ++word) {
            (*layer.covered)[word] ^= std::exchange((*layer.toggles)[word], 0);
        }
    }
    const PixelBits bitsOfPixel = bitsOfPixels();
    for (std::size_t chunk = 0; chunk < kWholeChunks; ++chunk) {
        composeChunk<kVectors>(layers, chunk * kChunk, bitsOfPixel, ground, out);
    }
    if constexpr (kRowVectors % kVectors != 0) {
        composeChunk<kRowVectors % kVectors>(layers, kWholeChunks * kChunk, bitsOfPixel, ground, out);
    }
}

} // namespace sixtrace::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace sixtrace {

HWY_EXPORT(composeRow);

ComposeRow wideComposer() {
    return [](std::span<const RowLayer> layers, const std::uint32_t* ground, std::uint32_t* out) {
        HWY_DYNAMIC_DISPATCH(composeRow)(layers, ground, out);
    };
}

} // namespace sixtrace
#endif
