// SPDX-License-Identifier: MIT
#include "view/frame.h"

#include "view/scene.h"

#include <gtest/gtest.h>

#include <climits>

namespace sixtrace::test {
namespace {

TEST(Frame, AChannelThatIsSelectedButAbsentDrawsNothingAndTheLastColourIsLeftInForeColor) {
    TestScreen screen;
    screen.draw();
    Picture empty(kSurfaceWidth, kSurfaceHeight);
    empty.BitBlt(0, 0, kSurfaceWidth, kSurfaceHeight, screen.picture2, 0, 0);
    screen.addChannel(2, 600, 600);
    screen.model->ChannelPresent[2] = 0;
    screen.draw();
    EXPECT_TRUE(samePicture(screen.picture2, empty));
    EXPECT_EQ(screen.picture2.ForeColor, screen.model->LineColor[5]);
}

TEST(Frame, AChannelThatIsPresentButUntickedDrawsNothing) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.inputs.selected[0] = false;
    screen.draw();
    EXPECT_TRUE(pixelsOf(screen.picture2, kRed).empty());
}

TEST(Frame, LeavesTheStepsOfTheChannelsThatItDrawsAndOfNoOthers) {
    TestScreen screen;
    publicM& model = *screen.model;
    for (const int channel : {1, 4}) {
        const int c = channel;
        screen.addChannel(channel, 600, 600);
        model.SampleInterval[c] = 2.5F;
        model.TimeIndexView[c] = 16; // 1 ms
        model.VoltIndexView[c] = 7;  // 1 V
        model.SampleStep[c] = model.MsPerPixel[c] = model.VoltPerPixel[c] = -1;
    }
    screen.inputs.selected[4] = false;
    screen.draw();
    EXPECT_FLOAT_EQ(model.SampleStep[1], 2.5F);
    EXPECT_FLOAT_EQ(model.MsPerPixel[1], 0.02F);   // 1 ms x 12 / 600
    EXPECT_FLOAT_EQ(model.VoltPerPixel[1], 0.02F); // 1 V x 8 / 400
    EXPECT_FLOAT_EQ(model.SampleStep[4], -1.0F);
    EXPECT_FLOAT_EQ(model.MsPerPixel[4], -1.0F);
    EXPECT_FLOAT_EQ(model.VoltPerPixel[4], -1.0F);
}

TEST(Frame, TheZeroLinesOfAllSixChannelsComeFromTheirMarkersWhetherShownOrNot) {
    TestScreen screen;
    for (std::size_t c = 0; c < kChannels; ++c) {
        screen.inputs.markerTop[c] =
            Twips(6030.0 * static_cast<double>(c) / 8 - 105); // centred at an eighth of the strip each
    }
    screen.draw();
    EXPECT_EQ(screen.model->ChannelYPos, (PerChannel<std::int16_t>{0, 50, 100, 150, 200, 250}));
}

TEST(Frame, ThePictureGoesToTheHiddenCopyAtItsEnd) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.draw();
    EXPECT_TRUE(sameRows(screen.picture2, screen.picHidden0, 600, 400));
    EXPECT_EQ(screen.picHidden0.Point(600, 400), screen.picHidden0.BackColor) << "only 600 by 400 are copied";
}

TEST(Frame, WithoutTheGraticuleTheDottedGridIsGoneAndTheCentreCrossIsSolid) {
    TestScreen screen;
    screen.draw();
    EXPECT_EQ(screen.picture2.Point(105, 50), screen.model->GridColor) << "one dot in five";
    EXPECT_NE(screen.picture2.Point(106, 50), screen.model->GridColor);
    EXPECT_NE(screen.picture2.Point(300, 33), screen.model->GridColor);
    screen.inputs.graticule = Graticule::Cross;
    screen.draw();
    EXPECT_NE(screen.picture2.Point(105, 50), screen.model->GridColor);
    for (int i = 0; i <= 400; ++i) {
        ASSERT_EQ(screen.picture2.Point(300, i), screen.model->GridColor) << i;
    }
    for (int i = 0; i <= 600; ++i) {
        ASSERT_EQ(screen.picture2.Point(i, 200), screen.model->GridColor) << i;
    }
}

TEST(Frame, DivisionTicksAre60UnitsApartWith10DivisionsAnd50Otherwise) {
    const auto ticksBelowTheBorder = [](const TestScreen& screen, int row) {
        std::set<int> columns;
        for (int x = 1; x < 600; ++x) {
            if (screen.picture2.Point(x, row) == screen.model->GridColor) {
                columns.insert(x);
            }
        }
        return columns;
    };
    TestScreen screen;
    screen.inputs.graticule = Graticule::Cross;
    screen.model->FileKind = 2;
    screen.draw();
    std::set<int> tens;
    std::set<int> fine;
    for (int x = 60; x < 600; x += 60) {
        tens.insert(x);
    }
    for (int x = 12; x < 600; x += 12) {
        fine.insert(x);
    }
    EXPECT_EQ(ticksBelowTheBorder(screen, 9), tens);
    EXPECT_EQ(ticksBelowTheBorder(screen, 4), fine);

    screen.model->FileKind = 1;
    screen.draw();
    std::set<int> fifties;
    std::set<int> fineOf12;
    for (int x = 50; x < 600; x += 50) {
        fifties.insert(x);
    }
    for (int x = 10; x < 600; x += 10) {
        fineOf12.insert(x);
    }
    EXPECT_EQ(ticksBelowTheBorder(screen, 9), fifties);
    EXPECT_EQ(ticksBelowTheBorder(screen, 4), fineOf12);
}

TEST(Frame, ARunTimeErrorEndsTheFrameQuietlyAndLaterChannelsAreNotDrawn) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.addChannel(1, 0, 600); // a division by zero
    screen.addChannel(2, 600, 600);
    screen.model->SampleData(0, 3) = 40;
    screen.inputs.markerTop[2] = Twips{1000};
    screen.picHidden0.ForeColor = 0x123456;
    screen.picHidden0.PSet(5, 5);
    screen.draw();
    EXPECT_FALSE(pixelsOf(screen.picture2, kRed).empty());
    EXPECT_TRUE(pixelsOf(screen.picture2, screen.model->LineColor[2]).empty());
    EXPECT_EQ(screen.picHidden0.Point(5, 5), 0x123456) << "an unfinished frame is not copied";
}

TEST(Frame, AZeroLineBeyond16BitsEndsTheFrameAfterTheGraticule) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.inputs.markerTop[3] = Twips{1e9};
    screen.draw();
    EXPECT_TRUE(pixelsOf(screen.picture2, kRed).empty());
    EXPECT_EQ(screen.picture2.Point(0, 0), screen.model->GridColor);
}

TEST(Frame, MoreSamplesThanTheArraysHoldAreDrawnAsFarAsTheyGoAndEndTheFrame) {
    TestScreen screen;
    screen.addChannel(0, kSampleRows, INT_MAX);
    screen.addChannel(1, 600, 600);
    screen.draw();
    EXPECT_EQ(screen.model->PlotX(0, kSampleRows - 1), 600);
    EXPECT_EQ(columnsOf(screen.picture2, kRed).size(), 601U);
    EXPECT_TRUE(pixelsOf(screen.picture2, screen.model->LineColor[1]).empty());
}

TEST(Frame, AnOverflowOfACoordinateEndsTheFrameAtThatSample) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->VoltPerCount[0] = 1e9F; // a count is 10^8 pixels
    screen.model->SampleData(0, 3) = 25;
    screen.model->PlotX(0, 3) = -7;
    screen.model->PlotY(0, 3) = -8;
    screen.draw();
    EXPECT_EQ(screen.model->PlotX(0, 2), 2);
    EXPECT_EQ(screen.model->PlotX(0, 3), 3) << "X is stored before Y overflows";
    EXPECT_EQ(screen.model->PlotY(0, 3), -8);
    EXPECT_EQ(columnsOf(screen.picture2, kRed), range(0, 2));
}

TEST(Frame, PositionsOutsideTheScreenAreKeptUnclipped) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->ChannelXShift[0] = -1000;
    screen.model->SampleData(0, 0) = 30000;
    screen.draw();
    EXPECT_EQ(screen.model->PlotX(0, 0), -1000);
    EXPECT_EQ(screen.model->PlotY(0, 0), 200 - 30000);
}

TEST(Frame, PicDrawSlowIsTheGraticuleAlone) {
    TestScreen screen;
    screen.draw();
    Picture empty(kSurfaceWidth, kSurfaceHeight);
    empty.BitBlt(0, 0, kSurfaceWidth, kSurfaceHeight, screen.picture2, 0, 0);
    screen.addChannel(0, 600, 600);
    screen.draw();
    PicDrawSlow(*screen.model, Graticule::Dotted, screen.picture2);
    EXPECT_TRUE(samePicture(screen.picture2, empty));
}

/// A screen, its copy, and the FrameCopy between them.
struct NotedCopy {
    Picture screen{kSurfaceWidth, kSurfaceHeight};
    Picture kept{kSurfaceWidth, kSurfaceHeight};
    FrameCopy copy{screen, kept};

    std::set<std::pair<int, int>> keptPixels() const { return pixelsOf(kept, kRed); }
    NotedCopy() { screen.ForeColor = kRed; }
};

TEST(FrameCopies, ANotedFrameIsCopiedOnDemandAndOnlyOnce) {
    NotedCopy noted;
    noted.screen.PSet(4, 5);
    noted.copy.noteFrame();
    EXPECT_TRUE(noted.keptPixels().empty());
    noted.copy.bringUpToDate();
    EXPECT_EQ(noted.keptPixels(), (std::set<std::pair<int, int>>{{4, 5}}));
    // What is drawn on the screen afterwards belongs to no finished frame.
    noted.screen.PSet(1, 1);
    noted.copy.bringUpToDate();
    EXPECT_EQ(noted.keptPixels(), (std::set<std::pair<int, int>>{{4, 5}}));
}

TEST(FrameCopies, HoldAllButTheLastColumnAndTheLastRow) {
    NotedCopy noted;
    for (const auto& [x, y] : {std::pair(599, 399), std::pair(600, 399), std::pair(599, 400)}) {
        noted.screen.PSet(x, y);
    }
    noted.copy.noteFrame();
    noted.copy.bringUpToDate();
    EXPECT_EQ(noted.keptPixels(), (std::set<std::pair<int, int>>{{599, 399}}));
}

TEST(FrameCopies, AForgottenFrameIsNotCopied) {
    NotedCopy noted;
    noted.screen.PSet(4, 5);
    noted.copy.noteFrame();
    noted.copy.forget();
    noted.copy.bringUpToDate();
    EXPECT_TRUE(noted.keptPixels().empty());
}

} // namespace
} // namespace sixtrace::test
