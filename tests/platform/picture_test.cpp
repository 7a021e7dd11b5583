// SPDX-License-Identifier: MIT
#include "platform/picture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <set>
#include <utility>

namespace sixtrace {
namespace {

using Points = std::set<std::pair<int, int>>;

/// The pixels of a line by the documented rule, step by step on an endless surface, kept where they are visible.
Points naiveLine(std::int64_t x1, std::int64_t y1, std::int64_t x2, std::int64_t y2, int width, int height, int period,
                 int lit, bool last) {
    Points points;
    const std::int64_t dx = std::abs(x2 - x1);
    const std::int64_t dy = std::abs(y2 - y1);
    const std::int64_t n = std::max(dx, dy);
    for (std::int64_t k = 0; k <= (last ? n : n - 1); ++k) {
        const std::int64_t alongX = dx >= dy ? k : (2 * k * dx + n) / (2 * n);
        const std::int64_t alongY = dx >= dy ? (n == 0 ? 0 : (2 * k * dy + n) / (2 * n)) : k;
        const std::int64_t x = x2 < x1 ? x1 - alongX : x1 + alongX;
        const std::int64_t y = y2 < y1 ? y1 - alongY : y1 + alongY;
        if (x >= 0 && y >= 0 && x < width && y < height && k % period < lit) {
            points.insert({static_cast<int>(x), static_cast<int>(y)});
        }
    }
    return points;
}

Points drawn(const Picture& picture) {
    Points points;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.Point(x, y) != picture.BackColor) {
                points.insert({x, y});
            }
        }
    }
    return points;
}

TEST(Picture, LinesFollowTheRuleForEndPointsNearAndFar) {
    std::mt19937 random(7);
    for (int round = 0; round < 4000; ++round) {
        const int reach = round % 3 == 0 ? 12 : round % 3 == 1 ? 60 : 3000;
        std::uniform_int_distribution<int> place(-reach, reach + 20);
        const int x1 = place(random);
        const int y1 = place(random);
        const int x2 = place(random);
        const int y2 = place(random);
        Picture picture(23, 17);
        picture.Line(x1, y1, x2, y2);
        ASSERT_EQ(drawn(picture), naiveLine(x1, y1, x2, y2, 23, 17, 1, 1, true))
            << x1 << ',' << y1 << " to " << x2 << ',' << y2;
        EXPECT_EQ(picture.CurrentX(), x2);
        EXPECT_EQ(picture.CurrentY(), y2);
    }
}

TEST(Picture, PatternsAreCountedFromTheFirstPointAlsoWhenItIsOutside) {
    std::mt19937 random(11);
    std::uniform_int_distribution<int> place(-40, 60);
    for (int round = 0; round < 1000; ++round) {
        const int x1 = place(random);
        const int y1 = place(random);
        const int x2 = place(random);
        const int y2 = place(random);
        Picture dots(23, 17);
        dots.drawStyle = DrawStyle::Dot;
        dots.Line(x1, y1, x2, y2);
        ASSERT_EQ(drawn(dots), naiveLine(x1, y1, x2, y2, 23, 17, 5, 1, true));
        Picture dashes(23, 17);
        dashes.drawStyle = DrawStyle::Dash;
        dashes.Line(x1, y1, x2, y2);
        ASSERT_EQ(drawn(dashes), naiveLine(x1, y1, x2, y2, 23, 17, 6, 3, true));
    }
}

TEST(Picture, HugeCoordinatesAreClippedExactly) {
    constexpr std::int32_t kLeast = INT32_MIN;
    constexpr std::int32_t kGreatest = INT32_MAX;
    Picture diagonal(20, 20);
    diagonal.Line(kLeast, kLeast, kGreatest, kGreatest);
    Points expected;
    for (int i = 0; i < 20; ++i) {
        expected.insert({i, i});
    }
    EXPECT_EQ(drawn(diagonal), expected);

    Picture upright(20, 20);
    upright.Line(5, kGreatest, 5, kLeast);
    EXPECT_EQ(drawn(upright).size(), 20U);
    // A line that falls by one over 2^32 - 1 steps: the step from row 3 to row 4 comes after half of them, at x = -0.5,
    // that is at x = 0.
    Picture flat(20, 20);
    flat.Line(kLeast, 3, kGreatest, 4);
    for (int x = 0; x < 20; ++x) {
        EXPECT_NE(flat.Point(x, 4), flat.BackColor) << x;
    }
    Picture beside(20, 20);
    beside.Line(kLeast, -1, kGreatest, -1);
    EXPECT_TRUE(drawn(beside).empty());
}

TEST(Picture, ALineFromAPointToItselfLeavesOneDot) {
    Picture picture(5, 5);
    picture.Line(2, 3, 2, 3);
    EXPECT_EQ(drawn(picture), (Points{{2, 3}}));
}

TEST(Picture, LineToLeavesOutItsLastPixelAndMovesThePen) {
    Picture picture(10, 10);
    picture.MoveToEx(1, 1);
    picture.LineTo(4, 1);
    EXPECT_EQ(drawn(picture), (Points{{1, 1}, {2, 1}, {3, 1}}));
    EXPECT_EQ(picture.MoveToEx(7, 7), QPoint(4, 1));
    picture.LineTo(7, 7);
    EXPECT_EQ(drawn(picture).size(), 3U) << "a line to itself has no pixel but its last";
}

TEST(Picture, AnExclusiveOrPolylineTouchesEachVertexOnceAndVanishesWhenDrawnAgain) {
    Picture picture(30, 30);
    picture.BackColor = rgb(64, 0, 64);
    picture.Cls();
    picture.ForeColor = rgb(0, 0, 255);
    picture.drawMode = DrawMode::XorPen;
    const auto draw = [&] {
        picture.MoveToEx(2, 2);
        picture.LineTo(10, 20);
        picture.LineTo(25, 5);
        picture.LineTo(28, 28);
    };
    draw();
    EXPECT_EQ(picture.Point(10, 20), rgb(64, 0, 64 ^ 255));
    EXPECT_EQ(picture.Point(28, 28), rgb(64, 0, 64)) << "the last point is left out";
    draw();
    EXPECT_TRUE(drawn(picture).empty());
}

TEST(Picture, LineBoxDrawsTheOutlineOnceAlsoByExclusiveOr) {
    Picture picture(10, 10);
    picture.BackColor = 0;
    picture.Cls();
    picture.ForeColor = rgb(255, 255, 255);
    picture.drawMode = DrawMode::XorPen;
    picture.LineBox(2, 3, 6, 7);
    Points outline;
    for (int i = 0; i <= 4; ++i) {
        outline.insert({2 + i, 3});
        outline.insert({2 + i, 7});
        outline.insert({2, 3 + i});
        outline.insert({6, 3 + i});
    }
    EXPECT_EQ(drawn(picture), outline);
    EXPECT_EQ(picture.CurrentX(), 6);
    EXPECT_EQ(picture.CurrentY(), 7);
}

TEST(Picture, LineFromTheCurrentPointContinuesAPolyline) {
    Picture picture(10, 10);
    picture.PSet(1, 1);
    picture.Line(3, 1);
    picture.Line(3, 3);
    EXPECT_EQ(drawn(picture), (Points{{1, 1}, {2, 1}, {3, 1}, {3, 2}, {3, 3}}));
}

TEST(Picture, PSetOutsideDrawsNothingButMovesThePoint) {
    Picture picture(4, 4);
    picture.PSet(-1, 2);
    picture.PSet(4, 0);
    picture.PSet(0, 400);
    EXPECT_TRUE(drawn(picture).empty());
    EXPECT_EQ(picture.CurrentY(), 400);
}

TEST(Picture, ColoursHaveRedInTheLowByte) {
    Picture picture(2, 1);
    picture.BackColor = 255;
    picture.Cls();
    EXPECT_EQ(picture.row(0)[0], 0xFFFF0000U);
    EXPECT_EQ(picture.view().pixel(1, 0), 0xFFFF0000U);
    EXPECT_EQ(rgb(1, 2, 3), 0x030201);
}

TEST(Picture, BitBltCopiesWhatLiesInsideBoth) {
    Picture source(6, 6);
    source.BackColor = rgb(10, 20, 30);
    source.Cls();
    source.ForeColor = rgb(200, 0, 0);
    source.PSet(5, 5);
    Picture target(6, 6);
    target.BitBlt(3, 3, 100, 100, source, 4, 4);
    EXPECT_EQ(target.Point(4, 4), rgb(200, 0, 0));
    EXPECT_EQ(target.Point(3, 3), rgb(10, 20, 30));
    EXPECT_EQ(target.Point(5, 5), target.BackColor) << "the source ends there";
    EXPECT_EQ(drawn(target).size(), 4U);
    target.BitBlt(-2, -2, 3, 3, source, 0, 0);
    EXPECT_EQ(target.Point(0, 0), rgb(10, 20, 30));
    EXPECT_EQ(target.Point(1, 1), target.BackColor);
}

} // namespace
} // namespace sixtrace
