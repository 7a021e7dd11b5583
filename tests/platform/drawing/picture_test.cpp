// SPDX-License-Identifier: MIT
#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace sixtrace::test {
namespace {

__extension__ using Wide = __int128;
using Pixel = std::pair<int, int>;
using Pixels = std::vector<Pixel>;

constexpr Colour kRed = 0x000000FF;
constexpr Colour kWhite = 0x00FFFFFF;

/// The visible pixels of a line, step by step along its longer axis, the rule taken at its word. `lit` says by the step
/// which ones are drawn.
template<typename Lit>
Pixels naiveLine(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, int width, int height,
                 bool withLast, Lit lit) {
    const std::int64_t dx = x2 - x1;
    const std::int64_t dy = y2 - y1;
    const bool alongX = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t n = alongX ? std::llabs(dx) : std::llabs(dy);
    const std::int64_t d = alongX ? std::llabs(dy) : std::llabs(dx);
    Pixels pixels;
    // Walk over the visible stretch of the longer axis only; a whole line may have 2^32 steps.
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

/// All pixels of a picture that differ from its background.
std::set<Pixel> drawn(const Picture& picture) {
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

std::set<Pixel> asSet(const Pixels& pixels) {
    return {pixels.begin(), pixels.end()};
}

/// A picture that draws in red.
struct Paper : Picture {
    Paper(int width, int height)
        : Picture(width, height) {
        ForeColor = kRed;
    }
};

TEST(Colour, RedStandsInTheLowByte) {
    EXPECT_EQ(rgb(1, 2, 3), 0x030201);
    EXPECT_EQ(pixelOfColour(0x030201), 0xFF010203U);
    EXPECT_EQ(colourOfPixel(0xFF010203U), 0x030201);
}

TEST(Colour, BitsAboveTwentyFourAreIgnored) {
    EXPECT_EQ(pixelOfColour(static_cast<Colour>(0x80000005U)), 0xFF050000U);
}

TEST(Picture, ANewPictureIsFilledWithTheBackground) {
    const Picture picture(3, 2);
    EXPECT_EQ(picture.Point(2, 1), kWhite);
    EXPECT_EQ(picture.view().size(), QSize(3, 2));
    EXPECT_EQ(picture.view().pixel(2, 1), 0xFFFFFFFFU);
}

TEST(Picture, ClsFillsAndMovesThePenToTheOrigin) {
    Paper picture(4, 4);
    picture.Line(0, 0, 3, 3);
    picture.BackColor = 0x112233;
    picture.Cls();
    EXPECT_TRUE(drawn(picture).empty());
    EXPECT_EQ(picture.CurrentX(), 0);
    EXPECT_EQ(picture.CurrentY(), 0);
}

TEST(Picture, ALineWorkedOutByHand) {
    Paper picture(8, 8);
    picture.Line(1, 1, 6, 3); // offsets (4k+5) div 10 for k 0..5: 0 0 1 1 2 2
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{1, 1}, {2, 1}, {3, 2}, {4, 2}, {5, 3}, {6, 3}}));
}

TEST(Picture, HalvesGoTowardsTheEndPoint) {
    Paper picture(8, 8);
    picture.Line(0, 0, 2, 1); // at k = 1 the offset is a half: 1
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 0}, {1, 1}, {2, 1}}));
    picture.Cls();
    picture.Line(2, 1, 0, 0); // the same line backwards ends elsewhere
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
        if (i % 2 == 1) { // mirrored at a point near the middle, so that it surely crosses
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
    EXPECT_GT(visible, 1000); // the comparison is about lines that can be seen
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

TEST(Picture, LineToLeavesOutItsLastPixel) {
    Paper picture(8, 3);
    picture.MoveToEx(1, 1);
    picture.LineTo(4, 1);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{1, 1}, {2, 1}, {3, 1}}));
    EXPECT_EQ(picture.CurrentX(), 4);
}

TEST(Picture, LineToIsSolidWhateverTheStyle) {
    Paper picture(8, 3);
    picture.drawStyle = DrawStyle::Dot;
    picture.LineTo(6, 0);
    EXPECT_EQ(drawn(picture).size(), 6U);
}

TEST(Picture, MoveToExGivesBackThePositionBefore) {
    Paper picture(8, 3);
    picture.PSet(5, 2);
    EXPECT_EQ(picture.MoveToEx(1, 1), QPoint(5, 2));
    EXPECT_EQ(picture.MoveToEx(0, 0), QPoint(1, 1));
}

TEST(Picture, AnExclusiveOrPolylineTouchesEachVertexOnce) {
    Picture picture(40, 40);
    picture.BackColor = 0x102030;
    picture.Cls();
    picture.drawMode = DrawMode::XorPen;
    picture.ForeColor = 0x0000FF;
    const std::vector<Pixel> vertices{{2, 2}, {12, 5}, {20, 30}, {33, 31}, {38, 3}};
    picture.MoveToEx(vertices[0].first, vertices[0].second);
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        picture.LineTo(vertices[i].first, vertices[i].second);
    }
    for (std::size_t i = 0; i + 1 < vertices.size(); ++i) {
        EXPECT_EQ(picture.Point(vertices[i].first, vertices[i].second), 0x102030 ^ 0x0000FF);
    }
    EXPECT_EQ(picture.Point(38, 3), 0x102030); // the last point stays with the pen
}

TEST(Picture, AnExclusiveOrPolylineDrawnTwiceVanishes) {
    Picture picture(40, 40);
    picture.BackColor = 0x804000;
    picture.Cls();
    picture.drawMode = DrawMode::XorPen;
    picture.ForeColor = 0x00FFFF;
    for (int pass = 0; pass < 2; ++pass) {
        picture.MoveToEx(-5, 3);
        for (const auto& [x, y] : std::vector<Pixel>{{10, 35}, {11, 2}, {11, 2}, {30, 50}, {39, 0}, {12, 12}}) {
            picture.LineTo(x, y);
        }
        EXPECT_EQ(drawn(picture).empty(), pass == 1);
    }
}

TEST(Picture, ExclusiveOrLinesAndDotsFlipThePixelsBelow) {
    Picture picture(4, 1);
    picture.BackColor = 0x0F0F0F;
    picture.Cls();
    picture.drawMode = DrawMode::XorPen;
    picture.ForeColor = 0xFFFFFF;
    picture.PSet(0, 0);
    EXPECT_EQ(picture.Point(0, 0), 0xF0F0F0);
    picture.Line(0, 0, 1, 0);
    EXPECT_EQ(picture.Point(0, 0), 0x0F0F0F);
    EXPECT_EQ(picture.Point(1, 0), 0xF0F0F0);
}

TEST(Picture, LineBoxIsTheOutlineFromAnyTwoCorners) {
    const std::set<Pixel> outline{{1, 1}, {2, 1}, {3, 1}, {1, 2}, {3, 2}, {1, 3}, {2, 3}, {3, 3}};
    for (const auto& [x1, y1, x2, y2] : std::vector<std::array<int, 4>>{{1, 1, 3, 3}, {3, 3, 1, 1}, {1, 3, 3, 1}}) {
        Paper picture(6, 6);
        picture.LineBox(x1, y1, x2, y2);
        EXPECT_EQ(drawn(picture), outline);
        EXPECT_EQ(picture.CurrentX(), x2);
        EXPECT_EQ(picture.CurrentY(), y2);
    }
}

TEST(Picture, AnExclusiveOrBoxIsWholeAndVanishesWhenDrawnTwice) {
    Paper picture(6, 6);
    picture.drawMode = DrawMode::XorPen;
    picture.LineBox(1, 1, 4, 3);
    EXPECT_EQ(drawn(picture).size(), 10U);
    picture.LineBox(1, 1, 4, 3);
    EXPECT_TRUE(drawn(picture).empty());
}

TEST(Picture, AnEmptyBoxIsOneDot) {
    Paper picture(6, 6);
    picture.LineBox(2, 2, 2, 2);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{2, 2}}));
}

TEST(Picture, BitBltCopiesARectangle) {
    Paper source(10, 10);
    source.PSet(4, 5);
    Picture target(10, 10);
    target.BitBlt(1, 1, 3, 3, source, 3, 4);
    EXPECT_EQ(drawn(target), (std::set<Pixel>{{2, 2}}));
}

TEST(Picture, BitBltLeavesOutWhatLiesOutsideEither) {
    std::mt19937 random(4);
    std::uniform_int_distribution<int> place(-12, 14);
    std::uniform_int_distribution<int> extent(-2, 20);
    Picture source(9, 7);
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 9; ++x) {
            source.ForeColor = 1 + x + 16 * y;
            source.PSet(x, y);
        }
    }
    for (int i = 0; i < 2000; ++i) {
        const int x = place(random);
        const int y = place(random);
        const int width = extent(random);
        const int height = extent(random);
        const int sourceX = place(random);
        const int sourceY = place(random);
        Picture target(8, 11);
        target.BitBlt(x, y, width, height, source, sourceX, sourceY);
        for (int row = 0; row < 11; ++row) {
            for (int column = 0; column < 8; ++column) {
                const int fromX = column - x + sourceX;
                const int fromY = row - y + sourceY;
                const bool copied = column >= x && column < x + width && row >= y && row < y + height && fromX >= 0 &&
                                    fromX < 9 && fromY >= 0 && fromY < 7;
                ASSERT_EQ(target.Point(column, row), copied ? 1 + fromX + 16 * fromY : kWhite);
            }
        }
    }
}

TEST(Picture, BitBltOntoItselfMovesARowsPixels) {
    Paper picture(10, 2);
    picture.PSet(0, 0);
    picture.PSet(3, 0);
    picture.BitBlt(2, 0, 8, 1, picture, 0, 0);
    EXPECT_EQ(drawn(picture), (std::set<Pixel>{{0, 0}, {2, 0}, {5, 0}}));
}

} // namespace
} // namespace sixtrace::test
