// SPDX-License-Identifier: MIT
// Frames of slow scans, which are drawn in parts around their write position.
#include "view/frame.h"

#include "view/scene.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

/// A slow scan of `points` slots with one sample a pixel column, flat on row 133, away from grid and ticks.
void addScan(TestScreen& screen, int points, int samples, int scan) {
    screen.addChannel(0, points, samples);
    screen.model->TimeIndex[0] = 22;
    screen.model->TimeIndexView[0] = 22;
    screen.model->ScanPoint[0] = scan;
    for (int i = 0; i <= points; ++i) {
        screen.model->SampleData(0, i) = 67; // row 133
    }
}

TEST(Frame, AFullChannelInAFastTimeBaseIgnoresTheScanPoint) {
    TestScreen screen;
    addScan(screen, 600, 600, 300);
    screen.model->TimeIndex[0] = screen.model->TimeIndexView[0] = 21;
    screen.draw();
    EXPECT_EQ(columnsOf(screen.picture2, kRed), range(0, 599));
}

TEST(Frame, AScanInItsFirstSweepIsDrawnAsFarAsItHasCome) {
    TestScreen screen;
    addScan(screen, 600, 250, 250);
    screen.draw();
    EXPECT_EQ(columnsOf(screen.picture2, kRed), range(0, 249));
}

TEST(Frame, AScanLeavesAGapOfEightPercentAheadOfItsWritePosition) {
    TestScreen screen;
    addScan(screen, 600, 600, 200);
    screen.model->PlotX(0, 200) = 1; // an earlier frame stored a place inside the trace for the lift
    screen.model->PlotY(0, 200) = 133;
    screen.draw();
    std::set<int> expected = range(0, 199);
    expected.merge(range(248, 600));
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
}

TEST(Frame, TheLiftOverTheGapLeavesADotWhereAnEarlierFrameHadTheWritePosition) {
    TestScreen screen;
    addScan(screen, 600, 600, 200);
    screen.model->PlotX(0, 200) = 222;
    screen.model->PlotY(0, 200) = 44;
    screen.draw();
    EXPECT_EQ(screen.picture2.Point(222, 44), kRed);
    EXPECT_EQ(screen.model->PlotX(0, 200), 222) << "line mode does not visit the write position itself";
    EXPECT_EQ(screen.picture2.Point(200, 133) == kRed, false);
}

TEST(Frame, InPointModeTheWritePositionItselfIsDrawn) {
    TestScreen screen;
    addScan(screen, 600, 600, 200);
    screen.inputs.style = TraceStyle::Points;
    screen.draw();
    std::set<int> expected = range(0, 200);
    expected.merge(range(248, 600));
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
    EXPECT_EQ(screen.model->PlotX(0, 200), 200);
}

TEST(Frame, AWritePositionOf0LeavesASingleDotAndTheSecondPartFromEightPercentOn) {
    TestScreen screen;
    addScan(screen, 600, 600, 0);
    screen.model->PlotX(0, 0) = 20;
    screen.model->PlotY(0, 0) = 44;
    screen.draw();
    std::set<int> expected = range(48, 600);
    expected.insert(0);  // the dot of sample 0
    expected.insert(20); // the lift
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
}

TEST(Frame, AWritePositionOfExactly92PercentStillDrawsBothSweeps) {
    TestScreen screen;
    addScan(screen, 600, 600, 552);
    screen.model->PlotX(0, 552) = 1;
    screen.model->PlotY(0, 552) = 133;
    screen.draw();
    std::set<int> expected = range(0, 551);
    expected.insert(600); // the second part is sample 600 alone
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
}

TEST(Frame, Beyond92PercentTheGapCoversTheStartOfTheSweep) {
    TestScreen screen;
    addScan(screen, 600, 600, 570); // 48 - 30 = 18
    screen.draw();
    std::set<int> expected = range(18, 570);
    expected.insert(0); // the dot of sample 0 is not joined to the trace
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
    EXPECT_EQ(screen.model->PlotX(0, 18), 18);
    screen.inputs.style = TraceStyle::Points;
    screen.draw();
    EXPECT_EQ(columnsOf(screen.picture2, kRed), expected);
}

TEST(Frame, AFractionOfTheGapStaysInXWhileRowsAreRounded) {
    // 330 slots over 600 columns, write position 100: the gap ends at 126.4, row 126, X = 126.4 * 600 / 330 = 229.8.
    TestScreen screen;
    addScan(screen, 330, 330, 100);
    screen.draw();
    EXPECT_EQ(screen.model->PlotX(0, 126), 230);
    EXPECT_EQ(screen.model->PlotX(0, 127), 232) << "127.4 * 600 / 330 = 231.6";
    EXPECT_EQ(screen.model->PlotX(0, 329), 599) << "329.4 * 600 / 330 = 598.9";
    EXPECT_EQ(screen.model->PlotX(0, 330), 0) << "330.4 is beyond the last slot";
}

} // namespace
} // namespace sixtrace::test
