// SPDX-License-Identifier: MIT
// Lines of any length and style follow the rule of linerule.h, and are clipped exactly.
#include "platform/drawing/paper.h"
#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>
#include <set>
#include <vector>

namespace sixtrace::test {
namespace {

/// The visible pixels of a line, computed step by step along its longer axis. `lit` says which steps are drawn.
template<typename Lit>
Pixels naiveLine(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, int width, int height,
                 bool withLast, Lit lit) {
    const std::int64_t dx = x2 - x1;
    const std::int64_t dy = y2 - y1;
    const bool alongX = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t n = alongX ? std::llabs(dx) : std::llabs(dy);
    const std::int64_t d = alongX ? std::llabs(dy) : std::llabs(dx);
    Pixels pixels;
    // Only the visible part of the longer axis is walked: a whole line may have 2^32 steps.
    const std::int64_t size = alongX ? width : height;
    for (std::int64_t place = 0; place < size; ++place) {
        const std::int64_t k = alongX ? (dx >= 0 ? place - x1 : x1 - place) : (dy >= 0 ? place - y1 : y1 - place);
        if (k < 0 || k > n || (k == n && !withLast) || !lit(k)) {
            continue;
        }
        const auto moved = n == 0 ? 0 : static_cast<std::int64_t>((Wide{2} * k * d + n) / (Wide{2} * n));
        const std::int64_t x = alongX ? place : x1 + (dx >= 0 ? moved : -moved);
        const std::int64_t y = alongX ? y1 + (dy >= 0 ? moved : -moved) : place;
        if (x >= 0 && y >= 0 && x < width && y < height) {
            pixels.emplace_back(static_cast<int>(x), static_cast<int>(y));
        }
    }
    return pixels;
}

bool always(std::int64_t) {
    return true;
}

std::set<Pixel> asSet(const Pixels& pixels) {
    return {pixels.begin(), pixels.end()};
}

TEST(Picture, ALineWorkedOutByHand) {
    Paper picture(8, 8);
    picture.Line(1, 1, 6, 3); // offsets (4k+5) div 10 for k 0..5: 0 0 1 1 2 2
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{1, 1}, {2, 1}, {3, 2}, {4, 2}, {5, 3}, {6, 3}}));
}

TEST(Picture, HalvesGoTowardsTheEndPoint) {
    Paper picture(8, 8);
    picture.Line(0, 0, 2, 1); // at k = 1 the offset is 0.5, rounded to 1
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 0}, {1, 1}, {2, 1}}));
    picture.Cls();
    picture.Line(2, 1, 0, 0); // the reversed line has another middle pixel
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{2, 1}, {1, 0}, {0, 0}}));
}

TEST(Picture, ALineFromAPointToItselfLeavesOneDot) {
    Paper picture(5, 5);
    picture.Line(2, 3, 2, 3);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{2, 3}}));
}

TEST(Picture, LineAndPSetMoveTheCurrentPointEvenWhenTheyLieOutside) {
    Paper picture(5, 5);
    picture.Line(-10, -20, -30, -40);
    EXPECT_EQ(picture.CurrentX(), -30);
    EXPECT_EQ(picture.CurrentY(), -40);
    picture.PSet(1000, -7);
    EXPECT_EQ(picture.CurrentX(), 1000);
    EXPECT_EQ(picture.CurrentY(), -7);
    EXPECT_TRUE(drawn(picture).empty());
}

TEST(Picture, LineFromTheCurrentPointContinues) {
    Paper picture(5, 5);
    picture.PSet(0, 4);
    picture.Line(3, 4);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 4}, {1, 4}, {2, 4}, {3, 4}}));
}

TEST(Picture, RandomLinesNearTheSurfaceFollowTheRule) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> place(-40, 90);
    for (int i = 0; i < 3000; ++i) {
        Paper picture(50, 37);
        const int x1 = place(random);
        const int y1 = place(random);
        const int x2 = place(random);
        const int y2 = place(random);
        picture.Line(x1, y1, x2, y2);
        ASSERT_EQ(drawn(picture), asSet(naiveLine(x1, y1, x2, y2, 50, 37, true, always)))
            << x1 << ',' << y1 << " to " << x2 << ',' << y2;
    }
}

TEST(Picture, RandomLinesThroughTheSurfaceFromFarOutsideAreClippedExactly) {
    std::mt19937_64 random(2);
    std::uniform_int_distribution<std::int64_t> far(-2147483648LL, 2147483647LL);
    std::uniform_int_distribution<std::int64_t> near(-100, 150);
    const auto any = [&](int i) { return static_cast<std::int32_t>(i % 3 == 0 ? near(random) : far(random)); };
    int visible = 0;
    for (int i = 0; i < 6000; ++i) {
        Paper picture(50, 37);
        std::int32_t x1 = any(i);
        std::int32_t y1 = any(i);
        std::int32_t x2 = any(i + 1);
        std::int32_t y2 = any(i + 2);
        if (i % 2 == 1) { // the second end is mirrored at a point near the middle, so that the line crosses the picture
            x2 = static_cast<std::int32_t>(
                std::max<std::int64_t>(-2147483647LL, 49 - std::int64_t{x1} + near(random) / 10));
            y2 = static_cast<std::int32_t>(
                std::max<std::int64_t>(-2147483647LL, 36 - std::int64_t{y1} + near(random) / 10));
        }
        picture.Line(x1, y1, x2, y2);
        const auto expected = asSet(naiveLine(x1, y1, x2, y2, 50, 37, true, always));
        visible += expected.empty() ? 0 : 1;
        ASSERT_EQ(drawn(picture), expected) << x1 << ',' << y1 << " to " << x2 << ',' << y2;
    }
    EXPECT_GT(visible, 1000); // enough of the lines are visible
}

TEST(Picture, TheLongestLinesOfAllAreClippedExactly) {
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const std::vector<std::array<std::int32_t, 4>> lines{
        {least, least, most, most}, {most, least + 20, least + 20, most},
        {least, 20, most, 20},      {20, most, 20, least},
        {least, 0, most, 36},       {least, 36, most, 0},
        {0, least, 49, most},       {most, most, least, least},
    };
    for (const auto& [x1, y1, x2, y2] : lines) {
        Paper picture(50, 37);
        picture.Line(x1, y1, x2, y2);
        EXPECT_EQ(drawn(picture), asSet(naiveLine(x1, y1, x2, y2, 50, 37, true, always)))
            << x1 << ',' << y1 << " to " << x2 << ',' << y2;
        EXPECT_FALSE(drawn(picture).empty());
    }
}

TEST(Picture, DottedLinesShowOnePixelOfFiveFromTheFirstPointOn) {
    Paper picture(12, 3);
    picture.drawStyle = DrawStyle::Dot;
    picture.Line(0, 1, 11, 1);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 1}, {5, 1}, {10, 1}}));
}

TEST(Picture, DashedLinesShowThreePixelsOfSix) {
    Paper picture(12, 3);
    picture.drawStyle = DrawStyle::Dash;
    picture.Line(0, 1, 9, 1);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 1}, {1, 1}, {2, 1}, {6, 1}, {7, 1}, {8, 1}}));
}

TEST(Picture, PatternsAreCountedFromAFirstPointThatLiesOutside) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(-3000, 3000);
    const auto dots = [](std::int64_t k) { return k % 5 == 0; };
    const auto dashes = [](std::int64_t k) { return k % 6 < 3; };
    for (int i = 0; i < 1000; ++i) {
        const int x1 = place(random);
        const int y1 = place(random);
        const int x2 = 49 - x1 + i % 7;
        const int y2 = 36 - y1 - i % 5;
        Paper picture(50, 37);
        picture.drawStyle = i % 2 == 0 ? DrawStyle::Dot : DrawStyle::Dash;
        picture.Line(x1, y1, x2, y2);
        const Pixels expected = i % 2 == 0 ? naiveLine(x1, y1, x2, y2, 50, 37, true, dots)
                                           : naiveLine(x1, y1, x2, y2, 50, 37, true, dashes);
        ASSERT_EQ(drawn(picture), asSet(expected)) << x1 << ',' << y1 << " to " << x2 << ',' << y2;
    }
}

} // namespace
} // namespace sixtrace::test
