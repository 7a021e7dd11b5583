// SPDX-License-Identifier: MIT
#include "platform/drawing/paper.h"
#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

namespace sixtrace::test {
namespace {

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
    EXPECT_EQ(picture.Point(38, 3), 0x102030); // the last point of a line is not drawn
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
