// SPDX-License-Identifier: MIT
#include "view/geometry.h"

#include "view/defaults.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace sixtrace {
namespace {

class Geometry : public ::testing::Test {
protected:
    Geometry() {
        m->fillTables();
        m->TimeIndex[0] = m->TimeIndexFile[0] = m->TimeIndexView[0] = 16; // 1 ms
        m->VoltIndexView[0] = 6;                                          // 0.5 V
        m->ScreenPoints[0] = 1200;
        m->SampleCount[0] = 1200;
        m->VoltPerCount[0] = 20;
        m->ChannelYPos[0] = 200;
    }
    std::unique_ptr<publicM> m = std::make_unique<publicM>();
};

TEST_F(Geometry, AtTheCapturesOwnTimeBaseSample0IsAtX0AndSampleScreenPointsAtX600) {
    const auto scale = plotScale(*m, 0);
    ASSERT_TRUE(scale);
    EXPECT_EQ(scale->x(0), 0.0);
    EXPECT_EQ(scale->x(1200), 600.0);
    EXPECT_EQ(scale->x(601), 300.5);
}

TEST_F(Geometry, ARowOfTwiceTheTimeHalvesTheSpreadAroundX300) {
    m->TimeIndex[0] = 18; // 5 ms
    m->TimeIndexView[0] = 19; // 10 ms
    const auto scale = plotScale(*m, 0);
    ASSERT_TRUE(scale);
    EXPECT_DOUBLE_EQ(scale->x(0), 150.0);
    EXPECT_DOUBLE_EQ(scale->x(600), 300.0); // stays there
    EXPECT_DOUBLE_EQ(scale->x(1200), 450.0);
}

TEST_F(Geometry, TheShiftMovesSample0AndIsZoomedWithTheTrace) {
    m->ChannelXShift[0] = 40;
    EXPECT_EQ(plotScale(*m, 0)->x(0), 40.0);
    m->TimeIndex[0] = 19;
    m->TimeIndexView[0] = 18; // twice as wide
    EXPECT_DOUBLE_EQ(plotScale(*m, 0)->x(0), 300.0 - 2 * 260.0);
}

TEST_F(Geometry, ACountOf0LiesOnTheZeroLineAndPositiveOnesAbove) {
    const auto scale = plotScale(*m, 0);
    EXPECT_EQ(scale->y(0), 200.0);
    EXPECT_EQ(scale->y(25), 150.0); // 25 counts of 20 mV are one division of 0.5 V, 50 units
    EXPECT_EQ(scale->y(-50), 300.0);
    EXPECT_EQ(scale->y(1000), -1800.0); // not clipped
}

TEST_F(Geometry, PickingStepsBySampleCountAndPlottingByScreenPoints) {
    m->SampleCount[0] = 600;
    const auto scale = plotScale(*m, 0);
    EXPECT_EQ(scale->dxPlot, 0.5);
    EXPECT_EQ(scale->dxPick, 1.0);
    EXPECT_EQ(scale->x(300), 150.0);
    EXPECT_EQ(scale->sampleAt(150), 150.0); // another sample than the one drawn there
}

TEST_F(Geometry, WithoutSamplesAPointerAddressesNothing) {
    m->SampleCount[0] = 0;
    EXPECT_FALSE(std::isfinite(plotScale(*m, 0)->dxPick));
}

TEST_F(Geometry, MissingRowsAndZeroScreenPointsHaveNoScale) {
    m->ScreenPoints[0] = 0;
    EXPECT_FALSE(plotScale(*m, 0));
    m->ScreenPoints[0] = 1;
    EXPECT_TRUE(plotScale(*m, 0));
    for (const int row : {-1, 28}) {
        m->TimeIndex[0] = row;
        EXPECT_FALSE(plotScale(*m, 0));
        m->TimeIndex[0] = 0;
        m->TimeIndexView[0] = static_cast<std::int16_t>(row);
        EXPECT_FALSE(plotScale(*m, 0));
        EXPECT_FALSE(msPerPixel(*m, 0));
        m->TimeIndexView[0] = 0;
    }
    for (const std::int16_t row : {std::int16_t{-1}, std::int16_t{10}}) {
        m->VoltIndexView[0] = row;
        EXPECT_FALSE(plotScale(*m, 0));
        EXPECT_FALSE(voltPerPixel(*m, 0));
    }
}

TEST_F(Geometry, FileKind3HasTenDivisionsWhileTimesAreReckonedWithTwelve) {
    m->FileKind = 3;
    EXPECT_EQ(divisionsAcross(m->FileKind), 10);
    EXPECT_EQ(msPerPixel(*m, 0), static_cast<float>(1.0 * 12 / 600));
    EXPECT_EQ(voltPerPixel(*m, 0), static_cast<float>(0.5 * 8 / 400));
}

TEST_F(Geometry, OnlyFileKinds2And3HaveTenDivisions) {
    for (int kind = 0; kind <= 6; ++kind) {
        EXPECT_EQ(divisionsAcross(kind), kind == 2 || kind == 3 ? 10 : 12) << kind;
    }
}

TEST_F(Geometry, TheZeroLineIsTheMarkersCentreAsAShareOfTheStrip) {
    // The strip is 6030 twips high and a marker 210: centre 3015 is the middle.
    EXPECT_EQ(zeroLineOfMarker(2910), 200);
    EXPECT_EQ(zeroLineOfMarker(-105), 0);
    EXPECT_EQ(zeroLineOfMarker(5925), 400);
    EXPECT_EQ(zeroLineOfMarker(3000), 206); // 3105 / 6030 x 400 = 205.97
}

TEST_F(Geometry, AMarkerFarAwayHasNoZeroLine) {
    EXPECT_FALSE(zeroLineOfMarker(1e9));
    PerChannel<double> tops{-105, -105, 1e9, -105, -105, -105};
    m->ChannelYPos.fill(77);
    EXPECT_FALSE(deriveZeroLines(*m, tops));
    EXPECT_EQ(m->ChannelYPos, (PerChannel<std::int16_t>{0, 0, 77, 77, 77, 77}));
}

TEST_F(Geometry, ZeroLinesOfAllSixChannelsAreDerivedWhetherShownOrNot) {
    EXPECT_TRUE(deriveZeroLines(*m, {2910, -105, 5925, 2910, 2910, 2910}));
    EXPECT_EQ(m->ChannelYPos, (PerChannel<std::int16_t>{200, 0, 400, 200, 200, 200}));
}

TEST(Defaults, AreTheColoursOfAProgramWithoutSettings) {
    const auto m = std::make_unique<publicM>();
    applyDefaultColours(*m);
    EXPECT_EQ(m->LineColor, (PerChannel<Colour>{255, 65535, 16711935, 16711808, 4227072, 33023}));
    EXPECT_EQ(m->GridColor, 16776960);
    EXPECT_EQ(m->BackColor, 4194368);
}

} // namespace
} // namespace sixtrace
