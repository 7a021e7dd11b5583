// SPDX-License-Identifier: MIT
#include "view/tracepick.h"

#include "view/scene.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST(CursorHit, TakesTheFirstLineLessThanTwoUnitsAway) {
    const CursorPlaces places;
    EXPECT_EQ(cursorUnder(places, ScreenX(10), ScreenY(101)), CursorHit::Voltage1);
    EXPECT_EQ(cursorUnder(places, ScreenX(10), ScreenY(98)), CursorHit::None) << "a distance of exactly 2 is no hit";
    EXPECT_EQ(cursorUnder(places, ScreenX(10), ScreenY(102)), CursorHit::None);
    EXPECT_EQ(cursorUnder(places, ScreenX(10), ScreenY(301)), CursorHit::Voltage2);
    EXPECT_EQ(cursorUnder(places, ScreenX(179), ScreenY(50)), CursorHit::Time1);
    EXPECT_EQ(cursorUnder(places, ScreenX(421), ScreenY(50)), CursorHit::Time2);
}

TEST(CursorHit, BothPairsAtTheSameSpotGiveTheFirstVoltageCursor) {
    EXPECT_EQ(cursorUnder(placesAt(100, 100, 180, 180), ScreenX(180), ScreenY(100)), CursorHit::Voltage1);
    EXPECT_EQ(cursorUnder(placesAt(90, 100, 180, 180), ScreenX(180), ScreenY(100)), CursorHit::Voltage2);
    EXPECT_EQ(cursorUnder(placesAt(90, 90, 180, 180), ScreenX(180), ScreenY(100)), CursorHit::Time1);
}

class TracePickTest : public ::testing::Test {
protected:
    TracePickTest() {
        screen.addChannel(1, 600, 600);
        screen.addChannel(3, 600, 600);
        screen.model->ChannelYPos[1] = 200;
        screen.model->ChannelYPos[3] = 200;
    }
    TracePick pickAt(double x, double y) { return pickTrace(*screen.model, ScreenX(x), ScreenY(y)); }
    TracePick hoverAt(double x, double y) { return hoverTrace(*screen.model, ScreenX(x), ScreenY(y)); }

    TestScreen screen;
};

TEST_F(TracePickTest, TwoTracesAtTheSameSpotGiveTheLowerChannel) {
    EXPECT_EQ(pickAt(50, 200).channel, 1);
    screen.model->ChannelPresent[1] = 0;
    EXPECT_EQ(pickAt(50, 200).channel, 3);
}

TEST_F(TracePickTest, ReachesFiveUnitsInclusive) {
    EXPECT_EQ(pickAt(50, 205).channel, 1);
    EXPECT_EQ(pickAt(50, 195).channel, 1);
    EXPECT_EQ(pickAt(50, 206).channel, std::nullopt);
}

TEST_F(TracePickTest, TheReachIsMeasuredFromTheExactHeightNotFromItsPixel) {
    screen.model->ChannelPresent[3] = 0;
    screen.model->VoltPerCount[1] = 4.0F; // 0.4 of a row a count
    screen.model->SampleData(1, 50) = 1;  // at 199.6, drawn on row 200
    EXPECT_EQ(pickAt(50, 204).channel, 1);
    EXPECT_EQ(pickAt(50, 205).channel, std::nullopt);
    EXPECT_EQ(pickAt(50, 195).channel, 1);
}

TEST_F(TracePickTest, AHiddenTraceCanBePicked) {
    screen.inputs.selected.fill(false);
    EXPECT_EQ(pickAt(50, 200).channel, 1);
}

TEST_F(TracePickTest, APressAtAnIndexEqualToSampleCountPassesTheRangeTest) {
    screen.model->SampleCount[1] = 300; // two columns a sample: X = 600 is index 300
    screen.model->SampleData(1, 300) = 0;
    EXPECT_EQ(pickAt(600, 200).channel, 1);
    EXPECT_EQ(pickAt(601, 200).channel, std::nullopt);
    EXPECT_EQ(pickAt(-1, 200).channel, std::nullopt);
    EXPECT_EQ(pickAt(0, 200).channel, 1) << "as does one at index 0";
}

TEST_F(TracePickTest, BetweenTwoSamplesTheEvenOneIsCompared) {
    screen.model->ChannelPresent[3] = 0;
    screen.model->SampleCount[1] = 300;   // two columns a sample
    screen.model->SampleData(1, 2) = 100; // on row 100; all others on row 200
    EXPECT_EQ(pickAt(5, 100).channel, 1) << "sample 2.5";
    EXPECT_EQ(pickAt(3, 100).channel, 1) << "sample 1.5";
    EXPECT_EQ(pickAt(6, 100).channel, std::nullopt);
    EXPECT_EQ(pickAt(2, 100).channel, std::nullopt);
}

TEST_F(TracePickTest, APressInAColumnWithoutSamplesSetsTheArrowAndOneAboveTheTraceLeavesTheShape) {
    EXPECT_EQ(pickAt(-5, 200).pointer, MousePointer::Arrow);
    EXPECT_EQ(pickAt(50, 100).pointer, std::nullopt);
    EXPECT_EQ(hoverAt(50, 100).pointer, MousePointer::Arrow);
    EXPECT_EQ(hoverAt(50, 200).pointer, MousePointer::EastWest);
}

TEST_F(TracePickTest, AChannelWithoutAVoltRowEndsTheSearchOnlyWhereItsHeightIsAskedFor) {
    screen.model->VoltIndexView[1] = -1;
    EXPECT_TRUE(pickAt(50, 200).failed);
    EXPECT_EQ(pickAt(50, 200).channel, std::nullopt);
    screen.model->ChannelXShift[1] = 100; // the pointer is left of its samples now
    EXPECT_EQ(pickAt(50, 200).channel, 3);
    EXPECT_EQ(hoverAt(50, 200).channel, 3);
}

TEST_F(TracePickTest, AnIndexOutsideTheArraysEndsTheSearch) {
    screen.model->SampleCount[1] = 2000000;
    const TracePick pick = pickAt(300, 200);
    EXPECT_TRUE(pick.failed);
    EXPECT_EQ(pick.channel, std::nullopt);
    screen.model->SampleCount[1] = 0;
    EXPECT_TRUE(pickAt(300, 200).failed) << "a division by zero";
}

} // namespace
} // namespace sixtrace::test
