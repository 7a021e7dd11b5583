// SPDX-License-Identifier: MIT
#include "view/frame.h"

#include "view/defaults.h"
#include "view/geometry.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <utility>

namespace sixtrace {
namespace {

constexpr Colour kGrid = 0x00FFFF00;

class Frame : public ::testing::Test {
protected:
    Frame() {
        m->fillTables();
        applyDefaultColours(*m);
        picture2.BackColor = m->BackColor;
        picHidden0.BackColor = 0x123456;
        picHidden0.Cls();
        inputs.markerTop.fill(2910); // zero lines at Y = 200
    }

    /// A channel of `count` samples of 0 counts, one sample a screen unit.
    void channel(std::size_t c, int count, int timeIndex = 15) {
        m->ChannelPresent[c] = 1;
        m->ScreenPoints[c] = 600;
        m->SampleCount[c] = count;
        m->TimeIndex[c] = m->TimeIndexFile[c] = static_cast<std::int16_t>(timeIndex);
        m->TimeIndexView[c] = m->TimeIndexFile[c];
        m->VoltIndexView[c] = 6;
        m->VoltPerCount[c] = 20;
        m->SampleInterval[c] = 3;
        inputs.selected[c] = true;
    }

    void draw() { renderer.PicReDrawT(*m, inputs, picture2, picHidden0); }

    /// Columns in which a pixel of the colour stands at row `y`.
    [[nodiscard]] std::set<int> columns(Colour colour, int y) const {
        std::set<int> found;
        for (int x = 0; x < kSurfaceWidth; ++x) {
            if (picture2.Point(x, y) == colour) {
                found.insert(x);
            }
        }
        return found;
    }
    [[nodiscard]] std::set<int> rows(Colour colour, int x) const {
        std::set<int> found;
        for (int y = 0; y < kSurfaceHeight; ++y) {
            if (picture2.Point(x, y) == colour) {
                found.insert(y);
            }
        }
        return found;
    }
    static std::set<int> range(int first, int last, int step = 1) {
        std::set<int> numbers;
        for (int i = first; i <= last; i += step) {
            numbers.insert(i);
        }
        return numbers;
    }

    std::unique_ptr<publicM> m = std::make_unique<publicM>();
    FrameInputs inputs;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    FrameRenderer renderer;
};

TEST_F(Frame, AChannelSelectedButNotPresentDrawsNothingAndTheLastColourIsLeftInForeColor) {
    channel(0, 600);
    m->ChannelPresent[0] = 0;
    m->SampleData(0, 5) = 75;
    draw();
    EXPECT_TRUE(columns(m->LineColor[0], 50).empty());
    EXPECT_TRUE(columns(m->LineColor[0], 200).empty());
    EXPECT_EQ(picture2.ForeColor, m->LineColor[5]);
}

TEST_F(Frame, AChannelPresentButNotSelectedDrawsNothing) {
    channel(0, 600);
    inputs.selected[0] = false;
    m->SampleStep[0] = 7;
    draw();
    EXPECT_TRUE(columns(m->LineColor[0], 200).empty());
    EXPECT_EQ(m->SampleStep[0], 7.0F);
}

TEST_F(Frame, OnlyAPresenceOf1IsPresence) {
    channel(0, 600);
    m->ChannelPresent[0] = 2;
    draw();
    EXPECT_TRUE(columns(m->LineColor[0], 200).empty());
}

TEST_F(Frame, TheBorderIsSolidOnAllFourSides) {
    draw();
    EXPECT_EQ(columns(kGrid, 0), range(0, 600));
    EXPECT_EQ(columns(kGrid, 400), range(0, 600));
    EXPECT_EQ(rows(kGrid, 0), range(0, 400));
    EXPECT_EQ(rows(kGrid, 600), range(0, 400));
}

TEST_F(Frame, WithTheGraticuleTheDivisionLinesAreDotted) {
    draw();
    // Row 51 meets the vertical lines between two of their dots, row 55 on one: dots stand at multiples of 5.
    EXPECT_EQ(columns(kGrid, 51), (std::set<int>{0, 600}));
    EXPECT_EQ(columns(kGrid, 55), range(0, 600, 50));
    // Row 50: the horizontal line, with ticks of five units at both edges and across the middle.
    std::set<int> expected = range(0, 600, 5);
    expected.merge(range(0, 5));
    expected.merge(range(595, 600));
    expected.merge(range(295, 305));
    EXPECT_EQ(columns(kGrid, 50), expected);
}

TEST_F(Frame, WithoutTheGraticuleTheDottedGridIsGoneAndTheCentreCrossIsSolid) {
    inputs.graticule = false;
    draw();
    EXPECT_EQ(columns(kGrid, 200), range(0, 600));
    EXPECT_EQ(rows(kGrid, 300), range(0, 400));
    EXPECT_EQ(columns(kGrid, 55), (std::set<int>{0, 300, 600}));
    // The division tick at row 50 is ten units long.
    std::set<int> expected = range(0, 10);
    expected.merge(range(590, 600));
    expected.merge(range(290, 310));
    EXPECT_EQ(columns(kGrid, 50), expected);
}

TEST_F(Frame, WithFileKind2DivisionTicksAre60ApartAndFineTicks12) {
    inputs.graticule = false;
    m->FileKind = 2;
    draw();
    std::set<int> divisions = range(0, 600, 60);
    EXPECT_EQ(columns(kGrid, 8), divisions);
    EXPECT_EQ(columns(kGrid, 3), range(0, 600, 12));
}

TEST_F(Frame, WithAnyOtherFileKindDivisionTicksAre50ApartAndFineTicks10) {
    inputs.graticule = false;
    for (const std::int16_t kind : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}, std::int16_t{6}}) {
        m->FileKind = kind;
        draw();
        EXPECT_EQ(columns(kGrid, 8), range(0, 600, 50));
        EXPECT_EQ(columns(kGrid, 3), range(0, 600, 10));
    }
}

TEST_F(Frame, AFlatTraceRunsOverTheWholeScreen) {
    channel(0, 601);
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 600));
    EXPECT_EQ(m->PlotX(0, 600), 600);
    EXPECT_EQ(m->PlotY(0, 600), 200);
}

TEST_F(Frame, HalfwayPositionsAreStoredAsEvenNumbers) {
    channel(0, 12);
    m->ScreenPoints[0] = 1200; // half a unit a sample
    draw();
    EXPECT_EQ(m->PlotX(0, 5), 2); // 2.5
    EXPECT_EQ(m->PlotX(0, 7), 4); // 3.5
    EXPECT_EQ(m->PlotX(0, 1), 0); // 0.5
    EXPECT_EQ(m->PlotX(0, 3), 2); // 1.5
}

TEST_F(Frame, RowsThatAFrameDoesNotVisitKeepTheirOldPositions) {
    channel(0, 10);
    m->PlotX(0, 10) = -77;
    m->PlotY(0, 10) = -78;
    draw();
    EXPECT_EQ(m->PlotX(0, 9), 9);
    EXPECT_EQ(m->PlotX(0, 10), -77);
    EXPECT_EQ(m->PlotY(0, 10), -78);
}

TEST_F(Frame, AFrameLeavesTheWorkingFieldsOfTheChannelsItDrew) {
    channel(0, 10);
    draw();
    EXPECT_EQ(m->SampleStep[0], 3.0F);
    EXPECT_EQ(m->MsPerPixel[0], static_cast<float>(0.5 * 12 / 600));
    EXPECT_EQ(m->VoltPerPixel[0], static_cast<float>(0.5 * 8 / 400));
    EXPECT_EQ(m->MsPerPixel[1], 0.0F);
    EXPECT_EQ(m->ChannelYPos, (PerChannel<std::int16_t>{200, 200, 200, 200, 200, 200}));
}

TEST_F(Frame, TheFirst600By400PixelsGoToTheHiddenPicture) {
    channel(0, 601);
    draw();
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 600; ++x) {
            ASSERT_EQ(picHidden0.Point(x, y), picture2.Point(x, y));
        }
        ASSERT_EQ(picHidden0.Point(600, y), 0x123456);
    }
    EXPECT_EQ(picHidden0.Point(0, 400), 0x123456);
}

TEST_F(Frame, AChannelWithoutSamplesStillSetsItsFirstPoint) {
    channel(0, 0);
    m->SampleData(0, 0) = 25;
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 150), (std::set<int>{0}));
}

TEST_F(Frame, LaterChannelsLieOverEarlierOnes) {
    channel(0, 601);
    channel(3, 601);
    draw();
    EXPECT_EQ(columns(m->LineColor[3], 200), range(0, 600));
    EXPECT_TRUE(columns(m->LineColor[0], 200).empty());
}

// The slow scan: S = 600 points, so the gap is 48 wide.

TEST_F(Frame, ATimeBaseBelow22NeverConsultsScanPoint) {
    channel(0, 601, 21);
    m->ScanPoint[0] = 100;
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 600));
}

TEST_F(Frame, AFirstSweepIsDrawnAsFarAsItHasCome) {
    channel(0, 400, 22);
    m->ScanPoint[0] = 100;
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 399));
}

TEST_F(Frame, AScanDrawsBothSweepsAndLeavesTheGap) {
    channel(0, 600, 22);
    m->ScanPoint[0] = 100;
    m->PlotX(0, 100) = 120; // where an earlier frame left sample P
    m->PlotY(0, 100) = 33;
    draw();
    std::set<int> expected = range(0, 99);
    expected.merge(range(148, 600));
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
    EXPECT_EQ(columns(m->LineColor[0], 33), (std::set<int>{120})); // the stale lift leaves only a dot
    EXPECT_EQ(m->PlotX(0, 100), 120);                              // and is not written
}

TEST_F(Frame, InPointModePItselfIsDrawn) {
    channel(0, 600, 22);
    inputs.line = false;
    m->ScanPoint[0] = 100;
    draw();
    std::set<int> expected = range(0, 100);
    expected.merge(range(148, 600));
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
}

TEST_F(Frame, AScanPointOf0LeavesOneDotAndTheOldSweepFromTheGapsEnd) {
    channel(0, 600, 22);
    m->ScanPoint[0] = 0;
    m->PlotX(0, 0) = 300;
    m->PlotY(0, 0) = 33;
    draw();
    std::set<int> expected = range(48, 600);
    expected.insert(0);
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
    EXPECT_EQ(columns(m->LineColor[0], 33), (std::set<int>{300}));
}

TEST_F(Frame, AScanPointOfExactly92PercentStillDrawsBothSweeps) {
    channel(0, 600, 22);
    m->ScanPoint[0] = 552;
    m->PlotX(0, 552) = -1;
    draw();
    std::set<int> expected = range(0, 551);
    expected.insert(600);
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
}

TEST_F(Frame, BeyondItTheGapHasEatenTheStartOfTheSweep) {
    channel(0, 600, 22);
    m->ScanPoint[0] = 553; // h = 48 - 47 = 1
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 553)); // the first dot, then 1 to P
    m->ScanPoint[0] = 590; // h = 48 - 10 = 38
    draw();
    std::set<int> expected = range(38, 590);
    expected.insert(0); // the dot of sample 0 is not joined to the trace
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
    inputs.line = false;
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), expected);
}

TEST_F(Frame, AFractionOfTheGapStaysInXAndIsRoundedInTheIndex) {
    channel(0, 610, 22);
    m->ScreenPoints[0] = 607; // S x 0.08 = 48.56, so g = 58.56 addresses row 59
    m->ScanPoint[0] = 10;
    m->SampleData(0, 59) = 25;
    m->PlotX(0, 58) = -5;
    draw();
    EXPECT_EQ(m->PlotX(0, 58), -5);
    EXPECT_EQ(m->PlotX(0, 59), 58); // 58.56 x 600 / 607 = 57.88
    EXPECT_EQ(m->PlotY(0, 59), 150);
}

TEST_F(Frame, ARunTimeErrorEndsTheFrameQuietlyWithoutACopy) {
    channel(0, 601);
    channel(1, 601);
    channel(2, 601);
    m->VoltIndexView[1] = 10;
    m->SampleData(2, 0) = 25;
    draw();
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 600)); // what was drawn stays
    EXPECT_TRUE(columns(m->LineColor[2], 150).empty());
    EXPECT_EQ(picture2.ForeColor, m->LineColor[1]);
    EXPECT_EQ(picHidden0.Point(10, 10), 0x123456);
}

TEST_F(Frame, PicDrawSlowDrawsTheGraticuleAloneAndCopiesNothing) {
    channel(0, 601);
    m->ChannelYPos.fill(99);
    PicDrawSlow(*m, true, picture2);
    EXPECT_TRUE(columns(m->LineColor[0], 200).empty());
    EXPECT_EQ(columns(kGrid, 0), range(0, 600));
    EXPECT_EQ(m->ChannelYPos[0], 99);
    EXPECT_EQ(picHidden0.Point(0, 0), 0x123456);
}

// The older renderer, 500 by 400.

TEST_F(Frame, PicReDrawDrawsAFlatTraceOfZeros) {
    channel(0, 10);
    channel(1, 10);
    m->ChannelPresent[1] = 0; // it asks for the tick only
    inputs.markerTop[1] = 2910 - 6030.0 / 8; // 50 units higher
    PicReDraw(*m, inputs, picture2);
    // Zeros stand at (0 + 128) / 256 x 400 + YPos - 200, which is YPos; X ends at 500 x 1023 / 1024.
    EXPECT_EQ(columns(m->LineColor[0], 200), range(0, 500));
    EXPECT_EQ(columns(m->LineColor[1], 150), range(0, 500));
    EXPECT_EQ(m->SampleStep[0], static_cast<float>(0.5 * 10 / 1024));
}

TEST_F(Frame, PicReDrawsGridIsWhiteAndTenDivisionsWide) {
    PicReDraw(*m, inputs, picture2);
    constexpr Colour kWhite = 0x00FFFFFF;
    EXPECT_EQ(columns(kWhite, 55), range(0, 500, 50));
    std::set<int> expected = range(0, 500, 5);
    expected.merge(range(0, 5));
    expected.merge(range(495, 500));
    expected.merge(range(245, 255));
    EXPECT_EQ(columns(kWhite, 50), expected);
    EXPECT_EQ(picHidden0.Point(0, 0), 0x123456);
}

TEST_F(Frame, SampleToScreenYRoundsTheSameFormula) {
    channel(0, 10);
    m->VoltIndexFile[0] = 6;
    m->ChannelYPos[0] = 200;
    EXPECT_EQ(SampleToScreenY(*m, 0, 0), 200);
    EXPECT_EQ(SampleToScreenY(*m, 0, 64), 300);
    EXPECT_EQ(SampleToScreenY(*m, 0, -128), 0);
    m->VoltIndexFile[0] = 7; // twice the volts
    EXPECT_EQ(SampleToScreenY(*m, 0, 64), 400);
    EXPECT_FALSE(SampleToScreenY(*m, 0, 1e9));
    m->VoltIndexView[0] = 10;
    EXPECT_FALSE(SampleToScreenY(*m, 0, 0));
}

} // namespace
} // namespace sixtrace
