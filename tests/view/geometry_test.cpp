// SPDX-License-Identifier: MIT
#include "view/geometry.h"

#include "view/scene.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST(Geometry, WithEqualTimeBasesAndNoShiftTheFirstSampleIsAt0AndSampleScreenPointsAt600) {
    TestScreen screen;
    screen.addChannel(0, 1200, 1200);
    const auto scale = plotScale(*screen.model, 0);
    ASSERT_TRUE(scale);
    EXPECT_DOUBLE_EQ(scale->x(0), 0);
    EXPECT_DOUBLE_EQ(scale->x(1200), 600);
}

TEST(Geometry, TwiceTheTimePerDivisionHalvesTheTraceAroundTheMiddleOfTheScreen) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->TimeIndex[0] = 12;     // 0.05 ms
    screen.model->TimeIndexView[0] = 13; // 0.1 ms
    const auto scale = plotScale(*screen.model, 0);
    ASSERT_TRUE(scale);
    EXPECT_NEAR(scale->x(300), 300, 1e-9);
    EXPECT_NEAR(scale->x(0), 150, 1e-9);
    EXPECT_NEAR(scale->x(600), 450, 1e-9);
}

TEST(Geometry, AShiftIsTakenAtTheTimeBaseOfTheCapture) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->ChannelXShift[0] = 40;
    EXPECT_NEAR(plotScale(*screen.model, 0)->x0, 40, 1e-9);
    screen.model->TimeIndex[0] = 12;
    screen.model->TimeIndexView[0] = 13;
    EXPECT_NEAR(plotScale(*screen.model, 0)->x0, 300 - 260 * 0.5, 1e-9);
}

TEST(Geometry, ACaptureOfFileKind3Draws10DivisionsWhileMsPerPixelCounts12) {
    EXPECT_EQ(divisionsAcross(2), 10);
    EXPECT_EQ(divisionsAcross(3), 10);
    for (const int kind : {0, 1, 4, 5, 6}) {
        EXPECT_EQ(divisionsAcross(kind), 12) << kind;
    }
    TestScreen screen;
    screen.model->FileKind = 3;
    screen.addChannel(0, 600, 600);
    screen.model->TimeIndexView[0] = 16; // 1 ms
    screen.draw();
    EXPECT_FLOAT_EQ(screen.model->MsPerPixel[0], 0.02F);
    EXPECT_FLOAT_EQ(screen.model->VoltPerPixel[0], 0.01F);
}

TEST(Geometry, AMarkerWhoseCentreIsAtTheMiddleOfTheStripGives200) {
    EXPECT_EQ(zeroLineOfMarker(Twips(2910)), 200);
    EXPECT_EQ(zeroLineOfMarker(Twips(-105)), 0);
    EXPECT_EQ(zeroLineOfMarker(Twips(5925)), 400);
    EXPECT_EQ(zeroLineOfMarker(Twips(3000)), 206) << "205.97";
    EXPECT_EQ(zeroLineOfMarker(Twips(1e12)), std::nullopt);
}

TEST(Geometry, AHalfWayValueIsStoredAsTheEvenNeighbour) {
    // One sample in 1200 of a screen is half a pixel: X = 2.5 at sample 5 and 3.5 at sample 7. Half a count is half a
    // pixel: Y = 200 - 2.5 and 200 - 3.5.
    TestScreen screen;
    screen.addChannel(0, 1200, 8);
    screen.model->VoltPerCount[0] = 5.0F;
    screen.model->SampleData(0, 5) = 5;
    screen.model->SampleData(0, 7) = 7;
    screen.draw();
    EXPECT_EQ(screen.model->PlotX(0, 5), 2);
    EXPECT_EQ(screen.model->PlotX(0, 7), 4);
    EXPECT_EQ(screen.model->PlotY(0, 5), 198) << "197.5";
    EXPECT_EQ(screen.model->PlotY(0, 7), 196) << "196.5";
}

TEST(Geometry, APositiveSampleLiesAboveTheZeroLineByCountsTimesMillivolts) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    screen.model->ChannelYPos[0] = 120;
    screen.model->VoltIndexView[0] = 7; // 1 V: 8000 mV over 400 pixels
    screen.model->VoltPerCount[0] = 4.0F;
    EXPECT_DOUBLE_EQ(plotScale(*screen.model, 0)->y(100), 120 - 100 * 4.0 / 20);
}

TEST(Geometry, AZeroLineHalfwayBetweenTwoRowsGoesToTheEvenOne) {
    // A marker's centre at 1, 3 and 5 of 32 parts of the strip: 12.5, 37.5 and 62.5 of 400 rows.
    EXPECT_EQ(zeroLineOfMarker(Twips(6030 / 32.0 - 105)), 12);
    EXPECT_EQ(zeroLineOfMarker(Twips(3 * 6030 / 32.0 - 105)), 38);
    EXPECT_EQ(zeroLineOfMarker(Twips(5 * 6030 / 32.0 - 105)), 62);
}

TEST(Geometry, PickingDividesBySamplesHeldWherePlottingDividesByScreenPoints) {
    TestScreen screen;
    screen.addChannel(0, 600, 300);
    EXPECT_DOUBLE_EQ(plotScale(*screen.model, 0)->dx, 1);
    EXPECT_DOUBLE_EQ(pickScale(*screen.model, 0)->dx, 2);
    EXPECT_DOUBLE_EQ(pickScale(*screen.model, 0)->sampleAt(ScreenX(100)), 50);
}

TEST(Geometry, ThereIsNoScaleWithoutTableRowsOrCounts) {
    TestScreen screen;
    screen.addChannel(0, 600, 600);
    publicM& model = *screen.model;
    model.TimeIndex[0] = 28;
    EXPECT_FALSE(plotScale(model, 0));
    model.TimeIndex[0] = -1;
    EXPECT_FALSE(plotScale(model, 0));
    model.TimeIndex[0] = 10;
    model.VoltIndexView[0] = -1;
    EXPECT_FALSE(plotScale(model, 0));
    EXPECT_FALSE(voltPerPixel(model, 0));
    EXPECT_DOUBLE_EQ(pickScale(model, 0).value().sampleAt(ScreenX(100)), 100) << "times and columns need no volt range";
    EXPECT_FALSE(pickScale(model, 0)->placesHeights());
    model.VoltIndexView[0] = 9;
    model.ScreenPoints[0] = 0;
    EXPECT_FALSE(plotScale(model, 0));
    EXPECT_TRUE(pickScale(model, 0).value().placesHeights());
    model.SampleCount[0] = 0;
    EXPECT_FALSE(pickScale(model, 0));
}

} // namespace
} // namespace sixtrace::test
