// SPDX-License-Identifier: MIT
// Times of a channel: periods, widths and edges.
#include "capture/measurefixture.h"

namespace sixtrace::test {
namespace {

TEST_F(MeasureTest, ASquareWaveHasItsTimes) {
    // Four low, six high: edges of one sample between levels of 0 and 10.
    with(repeated({0, 0, 0, 0, 10, 10, 10, 10, 10, 10}, 5));
    const ChannelMeasures m = measure();
    EXPECT_NEAR(m[Measure::Period], 100e-6, 1e-15);
    EXPECT_DOUBLE_EQ(m[Measure::Frequency], 10000);
    EXPECT_EQ(m[Measure::Cycles], 4); // five rising crossings
    EXPECT_NEAR(m[Measure::PositiveWidth], 60e-6, 1e-15);
    EXPECT_NEAR(m[Measure::NegativeWidth], 40e-6, 1e-15);
    EXPECT_DOUBLE_EQ(m[Measure::Duty], 60);
    EXPECT_NEAR(m[Measure::RiseTime], 8e-6, 1e-15); // from 0.1 to 0.9 of one interval
    EXPECT_NEAR(m[Measure::FallTime], 8e-6, 1e-15);
}

TEST_F(MeasureTest, RampsAreInterpolated) {
    // Up by 1 a sample from 0 to 20 and down by 2; flat parts make 0 and 20 the levels.
    std::vector<std::int16_t> period{0, 0, 0, 0, 0};
    for (int i = 1; i < 20; ++i) {
        period.push_back(static_cast<std::int16_t>(i));
    }
    period.insert(period.end(), {20, 20, 20, 20, 20});
    for (int i = 18; i > 0; i -= 2) {
        period.push_back(static_cast<std::int16_t>(i));
    }
    with(repeated(period, 3));
    const ChannelMeasures m = measure();
    EXPECT_NEAR(m[Measure::RiseTime], 160e-6, 1e-15); // from 2 to 18
    EXPECT_NEAR(m[Measure::FallTime], 80e-6, 1e-15);
    // The middle, 10: up at sample 14 (0 ends at 4), down five steps after sample 28 (20 ends there).
    EXPECT_NEAR(m[Measure::PositiveWidth], (33 - 14) * 10e-6, 1e-15);
    EXPECT_NEAR(m[Measure::Period], 38 * 10e-6, 1e-15);
    EXPECT_EQ(m[Measure::Cycles], 2);
}

TEST_F(MeasureTest, OneEdgeAndOnePulseCount) {
    with({0, 0, 0, 10, 10, 10});
    ChannelMeasures m = measure();
    EXPECT_NEAR(m[Measure::RiseTime], 8e-6, 1e-15);
    EXPECT_TRUE(isNone(m[Measure::FallTime]));
    EXPECT_TRUE(isNone(m[Measure::PositiveWidth]));
    EXPECT_TRUE(isNone(m[Measure::Period])); // one crossing
    EXPECT_TRUE(isNone(m[Measure::Frequency]));
    EXPECT_TRUE(isNone(m[Measure::Cycles]));
    EXPECT_TRUE(isNone(m[Measure::Duty]));
    with({0, 0, 10, 10, 10, 0, 0});
    m = measure();
    EXPECT_NEAR(m[Measure::PositiveWidth], 30e-6, 1e-15);
    EXPECT_TRUE(isNone(m[Measure::NegativeWidth]));
    EXPECT_TRUE(isNone(m[Measure::Duty]));
    with({10, 10, 0, 0, 10, 10});
    m = measure();
    EXPECT_NEAR(m[Measure::NegativeWidth], 20e-6, 1e-15);
    EXPECT_TRUE(isNone(m[Measure::PositiveWidth])); // neither high is held whole
}

TEST_F(MeasureTest, WigglesInsideTheHysteresisAreNoCrossings) {
    // Levels 0 and 100; the band reaches from 45 to 55.
    with({0, 0, 0, 49, 51, 46, 54, 100, 100, 100, 54, 46, 0, 0, 0, 100, 100, 100});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Cycles], 1);
    // The last crossings of 50 upward: from 46 to 54 after sample 5, and between samples 14 and 15.
    EXPECT_NEAR(m[Measure::Period], (14.5 - 5.5) * 10e-6, 1e-15);
}

TEST_F(MeasureTest, TheBordersOfTheHysteresisBelongToTheStates) {
    with({0, 0, 0, 45, 55, 45, 55, 100, 100, 100}); // 45 is low and 55 is high
    EXPECT_EQ(measure()[Measure::Cycles], 1);
    with({0, 0, 0, 45, 55, 46, 55, 100, 100, 100});
    EXPECT_TRUE(isNone(measure()[Measure::Cycles]));
    with({0, 0, 0, 45, 54, 45, 55, 100, 100, 100});
    EXPECT_TRUE(isNone(measure()[Measure::Cycles]));
}

} // namespace
} // namespace sixtrace::test
