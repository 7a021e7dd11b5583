// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>
#include <vector>

namespace sixtrace::test {

__extension__ using Wide = __int128;
using Pixel = std::pair<int, int>;
using Pixels = std::vector<Pixel>;

inline constexpr Colour kRed = 0x000000FF;
inline constexpr Colour kWhite = 0x00FFFFFF;

/// All pixels of a picture that differ from its background.
inline std::set<Pixel> drawn(const Picture& picture) {
    std::set<Pixel> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.Point(x, y) != (picture.BackColor & 0xFFFFFF)) {
                pixels.emplace(x, y);
            }
        }
    }
    return pixels;
}

/// A picture that draws in red.
struct Paper : Picture {
    Paper(int width, int height)
        : Picture(width, height) {
        ForeColor = kRed;
    }
};

} // namespace sixtrace::test
