// SPDX-License-Identifier: MIT
#include "view/drags.h"

#include "view/scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sixtrace::test {
namespace {

void copy(Picture& target, const Picture& source) {
    target.BitBlt(0, 0, source.width(), source.height(), source, 0, 0);
}

TEST(TraceDrag, MovesPlotXByExactlyOneDeltaAndDrawsTheMovedTraceOnTheCleanFrame) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    for (int i = 0; i < 600; ++i) {
        screen.model->SampleData(0, i) = static_cast<std::int16_t>(i % 40);
    }
    screen.draw();
    ASSERT_TRUE(beginTraceDrag(*screen.model, 0, screen.picture2, screen.picHidden1));
    // Sample 0 has X = 0, which counts as outside the screen: the loop from the left shifts it and sample 1.
    ASSERT_TRUE(moveTraceDrag(*screen.model, 0, ScreenX(7), screen.picHidden0, screen.picHidden1, screen.picture2));
    for (int i = 0; i < 593; ++i) {
        ASSERT_EQ(screen.model->PlotX(0, i), i + 7) << i;
    }
    EXPECT_FLOAT_EQ(screen.model->ChannelXShift[0], 7);

    Picture expected(kSurfaceWidth, kSurfaceHeight);
    copy(expected, screen.picHidden0);
    expected.ForeColor = kGhostColour;
    expected.PSet(0, 200);
    expected.PSet(7, 200);
    expected.MoveToEx(7, 200);
    // Samples 1 to 591: the last visible one, 592 at X = 599, ends the range and is left out.
    for (int i = 1; i < 592; ++i) {
        expected.LineTo(i + 7, 200 - i % 40);
    }
    EXPECT_TRUE(sameRows(screen.picture2, expected, 600, 400));
}

TEST(TraceDrag, ThePressDrawsTheTraceInOpaqueBlueOnTheWorkingPicture) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->SampleData(0, 599) = 60; // from row 200 up to row 140 in the last column, whose end is left out
    screen.draw();
    ASSERT_TRUE(beginTraceDrag(*screen.model, 0, screen.picture2, screen.picHidden1));
    EXPECT_EQ(screen.picHidden1.drawMode, DrawMode::CopyPen);
    EXPECT_EQ(screen.picHidden1.ForeColor, kGhostColour);
    for (int x = 0; x < 599; ++x) {
        ASSERT_EQ(screen.picHidden1.Point(x, 200), kGhostColour) << x;
    }
    EXPECT_EQ(screen.picHidden1.Point(599, 150), kGhostColour);
    EXPECT_NE(screen.picHidden1.Point(599, 140), kGhostColour);
    EXPECT_NE(screen.picHidden1.Point(0, 0), screen.model->GridColor) << "no frame is copied there yet";
}

TEST(TraceDrag, AShiftIsTakenAtTheTimeBaseOfTheView) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->TimeIndexView[0] = 13; // 0.1 ms
    screen.model->TimeIndexFile[0] = 10; // 0.01 ms
    screen.draw();
    ASSERT_TRUE(moveTraceDrag(*screen.model, 0, ScreenX(3), screen.picHidden0, screen.picHidden1, screen.picture2));
    EXPECT_FLOAT_EQ(screen.model->ChannelXShift[0], 30);
    screen.model->TimeIndex[0] = 16; // TimeIndexFile counts, even where a damaged TimeIndex differs from it
    ASSERT_TRUE(moveTraceDrag(*screen.model, 0, ScreenX(3), screen.picHidden0, screen.picHidden1, screen.picture2));
    EXPECT_FLOAT_EQ(screen.model->ChannelXShift[0], 60);
}

TEST(TraceDrag, EachPositionIsRoundedByItselfWithHalvesToTheEvenInteger) {
    for (const float delta : {0.5F, -0.5F, 1.5F, 2.25F, -7.75F, 0.4998F, 0.49995F, -0.50005F, 3.0F}) {
        TestScreen screen;
        screen.addChannel(0, 600, 600);
        screen.draw();
        ASSERT_TRUE(moveTraceDrag(*screen.model, 0, ScreenX(double{delta}), screen.picHidden0, screen.picHidden1,
                                  screen.picture2));
        // The loop from the left shifts sample 0 first, whatever the distance.
        EXPECT_EQ(screen.model->PlotX(0, 0), std::nearbyint(0 + double{delta})) << delta;
        if (delta > 0) {
            for (int i = 1; i < 500; ++i) {
                ASSERT_EQ(screen.model->PlotX(0, i), std::nearbyint(i + double{delta})) << delta << ' ' << i;
            }
        }
    }
}

TEST(TraceDrag, APositionBeyond32BitsEndsTheStepBeforeThePictureIsShown) {
    for (const float delta : {1000.0F, 0.5F, 3e9F, -3e9F, std::numeric_limits<float>::quiet_NaN()}) {
        TestScreen screen;
        screen.addChannel(0, 600, 600);
        screen.draw();
        screen.model->PlotX(0, 0) = delta == 0.5F ? 0 : std::numeric_limits<std::int32_t>::max() - 500;
        const bool shown = moveTraceDrag(*screen.model, 0, ScreenX(double{delta}), screen.picHidden0, screen.picHidden1,
                                         screen.picture2);
        EXPECT_EQ(shown, delta == 0.5F) << delta;
    }
}

/// How many pixels of row 50 a drag step paints when samples of even number lie there and all others on row 350.
int pixelsOfEvenSamples(int samples) {
    TestScreen screen;
    screen.addChannel(0, samples, samples);
    for (int i = 0; i < samples; ++i) {
        screen.model->PlotX(0, i) = 1 + i * 598 / samples;
        screen.model->PlotY(0, i) = i % 2 == 0 ? 50 : 350;
    }
    static_cast<void>(
        moveTraceDrag(*screen.model, 0, ScreenX(0), screen.picHidden0, screen.picHidden1, screen.picture2));
    int pixels = 0;
    for (int x = 0; x < 600; ++x) {
        pixels += screen.picture2.Point(x, 50) == kGhostColour ? 1 : 0;
    }
    return pixels;
}

TEST(TraceDrag, IsThinnedFromOneAndAHalfTimes600SamplesOn) {
    // All samples are visible, so the range runs from 0 to samples - 1. The step is the rounded (range - 2) / 600:
    // 901 - 2 gives 1.498 and so 1, 902 - 2 gives 1.5 and so the even 2, by which only samples of odd number are drawn.
    EXPECT_GT(pixelsOfEvenSamples(902), 400);
    EXPECT_LE(pixelsOfEvenSamples(903), 3);
}

TEST(TraceDrag, TwoAndAHalfTimes600SamplesAreThinnedByTheEvenTwo) {
    // 1502 - 2 gives 2.5 and so 2; 1503 - 2 gives 2.502 and so 3, by which samples of even number come in again.
    EXPECT_LE(pixelsOfEvenSamples(1503), 3);
    EXPECT_GT(pixelsOfEvenSamples(1504), 100);
}

TEST(TraceDrag, ATraceOutsideTheScreenIsMovedAndNotDrawn) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->ChannelXShift[0] = -2000;
    screen.draw();
    ASSERT_TRUE(moveTraceDrag(*screen.model, 0, ScreenX(5), screen.picHidden0, screen.picHidden1, screen.picture2));
    EXPECT_EQ(screen.model->PlotX(0, 100), -2000 + 100 + 5);
    EXPECT_EQ(screen.model->PlotX(0, 599), -2000 + 599 + 10) << "the loop from the right shifts the last sample again";
    EXPECT_TRUE(sameRows(screen.picture2, screen.picHidden0, 600, 400));
}

TEST(TraceDrag, CountsFromAHostileFileEndItInsideTheArrays) {
    TestScreen screen;
    screen.addChannel(0, 600, 2000000000);
    screen.draw();
    EXPECT_FALSE(beginTraceDrag(*screen.model, 0, screen.picture2, screen.picHidden1));
    EXPECT_FALSE(moveTraceDrag(*screen.model, 0, ScreenX(5), screen.picHidden0, screen.picHidden1, screen.picture2));
}

TEST(MarkerDrag, TheGhostIsTheTraceByExclusiveOrInBlue) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    for (int i = 0; i < 600; ++i) {
        screen.model->SampleData(0, i) = static_cast<std::int16_t>(i / 3);
    }
    screen.draw();
    Picture expected(kSurfaceWidth, kSurfaceHeight);
    copy(expected, screen.picture2);
    expected.drawMode = DrawMode::XorPen;
    expected.ForeColor = kGhostColour;
    expected.PSet(0, 200);
    expected.MoveToEx(0, 200);
    for (int i = 1; i < 600; ++i) {
        expected.LineTo(screen.model->PlotX(0, i), screen.model->PlotY(0, i));
    }
    screen.picture2.drawMode = DrawMode::XorPen;
    screen.picture2.ForeColor = kGhostColour;
    ASSERT_TRUE(beginMarkerDrag(*screen.model, 0, screen.picture2, screen.picHidden0));
    EXPECT_TRUE(samePicture(screen.picture2, expected));
    EXPECT_TRUE(sameRows(screen.picHidden0, expected, 600, 400));
}

TEST(MarkerDrag, MovesZeroLineAndVisibleSamplesAndStepsOverSamplesOfOneColumn) {
    TestScreen screen;
    screen.addChannel(0, 1200, 1200); // two samples a column
    screen.draw();
    screen.picture2.drawMode = DrawMode::XorPen;
    screen.picture2.ForeColor = kGhostColour;
    ASSERT_TRUE(beginMarkerDrag(*screen.model, 0, screen.picture2, screen.picHidden0));
    ASSERT_TRUE(
        moveMarkerDrag(*screen.model, 0, Twips(2910 + 603), screen.picHidden0, screen.picture2)); // a tenth: 40 rows
    EXPECT_EQ(screen.model->ChannelYPos[0], 240);
    EXPECT_EQ(screen.model->PlotY(0, 0), 240);
    EXPECT_EQ(screen.model->PlotY(0, 700), 240);
    // The ghost lies on row 240 once, from the first visible sample to the last but one.
    EXPECT_EQ(screen.picture2.Point(303, 240), screen.picHidden0.Point(303, 240) ^ kGhostColour);
    EXPECT_EQ(screen.picture2.Point(599, 240), screen.picHidden0.Point(599, 240));
    EXPECT_EQ(screen.picture2.Point(303, 241), screen.picHidden0.Point(303, 241));
}

TEST(MarkerDrag, ATraceLeftOfTheScreenIsMovedAndNotDrawn) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->ChannelXShift[0] = -2000;
    screen.draw();
    screen.picture2.drawMode = DrawMode::XorPen;
    screen.picture2.ForeColor = kGhostColour;
    ASSERT_TRUE(beginMarkerDrag(*screen.model, 0, screen.picture2, screen.picHidden0));
    ASSERT_TRUE(moveMarkerDrag(*screen.model, 0, Twips(2910 + 603), screen.picHidden0, screen.picture2));
    EXPECT_EQ(screen.model->PlotY(0, 300), 240);
    EXPECT_TRUE(sameRows(screen.picture2, screen.picHidden0, 600, 400));
}

} // namespace
} // namespace sixtrace::test
