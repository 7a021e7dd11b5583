// SPDX-License-Identifier: MIT
// Levels and sums of a channel, and which samples count.
#include "capture/measurefixture.h"

namespace sixtrace::test {
namespace {

TEST_F(MeasureTest, KeysNameTheFiguresInTheirOrder) {
    EXPECT_EQ(measureKey(Measure::Samples), "samples");
    EXPECT_EQ(measureKey(Measure::AcRms), "ac_rms_v");
    EXPECT_EQ(measureKey(Measure::Frequency), "frequency_hz");
    EXPECT_EQ(measureKey(Measure::Cycles), "cycles");
    EXPECT_EQ(measureKey(Measure::FallTime), "fall_time_s");
    EXPECT_EQ(measureKey(Measure::InstrumentPeriod), "instrument_period_s");
}

TEST_F(MeasureTest, LevelsAndSums) {
    with({1, -3, 5, 5});
    channel.ProbeExp = 1;
    channel.VoltPerCount = 20; // 0.2 V a count at the tip
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Samples], 4);
    EXPECT_DOUBLE_EQ(m[Measure::Interval], 1e-5);
    EXPECT_DOUBLE_EQ(m[Measure::Duration], 4e-5);
    EXPECT_DOUBLE_EQ(m[Measure::Min], -0.6);
    EXPECT_DOUBLE_EQ(m[Measure::Max], 1.0);
    EXPECT_DOUBLE_EQ(m[Measure::PeakToPeak], 1.6);
    EXPECT_DOUBLE_EQ(m[Measure::Mean], 0.4);                  // 8 / 4 counts
    EXPECT_DOUBLE_EQ(m[Measure::Rms], 0.2 * std::sqrt(15));   // (1 + 9 + 25 + 25) / 4
    EXPECT_DOUBLE_EQ(m[Measure::AcRms], 0.2 * std::sqrt(11)); // 15 - 2^2
}

TEST_F(MeasureTest, ADecimalScaleStaysDecimal) {
    with({3});
    channel.VoltPerCount = 0.8F;
    channel.SampleInterval = 0.1F;
    EXPECT_DOUBLE_EQ(measure()[Measure::Max], 0.0024);
    EXPECT_DOUBLE_EQ(measure()[Measure::Interval], 1e-7);
}

TEST_F(MeasureTest, TopAndBaseAreTheModesOfTheHalves) {
    // Middle 5. Below: 0 once, 1 three times, 2 twice; above: 9 four times, 10 once. The 5 is in neither half.
    with({0, 1, 1, 1, 2, 2, 5, 9, 9, 9, 9, 10});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Base], 1);
    EXPECT_EQ(m[Measure::Top], 9);
    EXPECT_EQ(m[Measure::Amplitude], 8);
    EXPECT_DOUBLE_EQ(m[Measure::Overshoot], 12.5);
    EXPECT_DOUBLE_EQ(m[Measure::Preshoot], 12.5);
}

TEST_F(MeasureTest, OfEquallyFrequentCountsTheOuterOneIsTheLevel) {
    with({0, 1, 1, 2, 2, 8, 8, 9, 9, 10});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Base], 1);
    EXPECT_EQ(m[Measure::Top], 9);
}

TEST_F(MeasureTest, WhereTheModeHoldsLessThanATwentiethTheExtremeIsTheLevel) {
    // 40 samples above the middle: 39 different ones and one of them twice is 2 of 41, less than a twentieth.
    std::vector<std::int16_t> counts;
    for (int i = 0; i < 40; ++i) {
        counts.push_back(static_cast<std::int16_t>(100 + i));
        counts.push_back(static_cast<std::int16_t>(-100 - i));
    }
    counts.push_back(120);
    counts.push_back(-120);
    with(counts);
    EXPECT_EQ(measure()[Measure::Top], 139);
    EXPECT_EQ(measure()[Measure::Base], -139);
    // Three of 42 is more than a twentieth.
    counts.push_back(120);
    counts.push_back(-120);
    with(counts);
    EXPECT_EQ(measure()[Measure::Top], 120);
    EXPECT_EQ(measure()[Measure::Base], -120);
}

TEST_F(MeasureTest, ExactlyATwentiethIsEnoughForAMode) {
    std::vector<std::int16_t> counts;
    for (int i = 0; i < 38; ++i) {
        counts.push_back(static_cast<std::int16_t>(101 + i));
        counts.push_back(static_cast<std::int16_t>(-101 - i));
    }
    counts.insert(counts.end(), {110, -110, 101, -101}); // 110 and 101 twice in 40; the outer one
    with(counts);
    EXPECT_EQ(measure()[Measure::Top], 110);
    EXPECT_EQ(measure()[Measure::Base], -110);
}

TEST_F(MeasureTest, AConstantTraceHasLevelsAndNoTimes) {
    with({7, 7, 7});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Top], 7);
    EXPECT_EQ(m[Measure::Base], 7);
    EXPECT_EQ(m[Measure::Amplitude], 0);
    EXPECT_EQ(m[Measure::AcRms], 0);
    EXPECT_EQ(m[Measure::Rms], 7);
    for (const Measure none : {Measure::Overshoot, Measure::Preshoot, Measure::Frequency, Measure::Period,
                               Measure::Cycles, Measure::Duty, Measure::PositiveWidth, Measure::RiseTime}) {
        EXPECT_TRUE(isNone(m[none])) << measureKey(none);
    }
}

TEST_F(MeasureTest, OneSampleIsAConstantTrace) {
    with({-4});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Samples], 1);
    EXPECT_DOUBLE_EQ(m[Measure::Duration], 1e-5);
    EXPECT_EQ(m[Measure::Min], -4);
    EXPECT_EQ(m[Measure::Rms], 4);
    EXPECT_EQ(m[Measure::PeakToPeak], 0);
    EXPECT_TRUE(isNone(m[Measure::Overshoot]));
}

TEST_F(MeasureTest, WithoutASampleOnlyCountAndIntervalExist) {
    with({});
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Samples], 0);
    EXPECT_DOUBLE_EQ(m[Measure::Interval], 1e-5);
    EXPECT_EQ(m[Measure::Duration], 0);
    EXPECT_TRUE(isNone(m[Measure::Min]));
    EXPECT_TRUE(isNone(m[Measure::Top]));
    EXPECT_TRUE(isNone(m[Measure::Mean]));
}

TEST_F(MeasureTest, TheLevelsOfAClippedTraceAreItsLimits) {
    with(repeated({-32768, -32768, 0, 32767, 32767, 32767, 0, -32768}, 4));
    channel.VoltPerCount = 1;
    const ChannelMeasures m = measure();
    EXPECT_DOUBLE_EQ(m[Measure::Top], 32.767);
    EXPECT_DOUBLE_EQ(m[Measure::Base], -32.768);
    EXPECT_DOUBLE_EQ(m[Measure::PeakToPeak], 65.535);
    EXPECT_EQ(m[Measure::Overshoot], 0);
    EXPECT_NEAR(m[Measure::Period], 80e-6, 1e-15);
}

TEST_F(MeasureTest, ASlowScanCountsItsFreshSweep) {
    with({0, 0, 10, 10, 50, 50, 50});
    channel.TimeIndex = 22;
    channel.ScanPoint = 4;
    EXPECT_EQ(measure()[Measure::Samples], 4);
    EXPECT_EQ(measure()[Measure::Max], 10);
    EXPECT_DOUBLE_EQ(measure()[Measure::Duration], 4e-5);
    EXPECT_EQ(measure(Sweep::All)[Measure::Samples], 7);
    EXPECT_EQ(measure(Sweep::All)[Measure::Max], 50);
    channel.TimeIndex = 21; // no slow scan
    EXPECT_EQ(measure()[Measure::Samples], 7);
    channel.TimeIndex = 27;
    channel.ScanPoint = 7; // not inside
    EXPECT_EQ(measure()[Measure::Samples], 7);
    channel.ScanPoint = 6;
    EXPECT_EQ(measure()[Measure::Samples], 6);
    channel.ScanPoint = 1;
    EXPECT_EQ(measure()[Measure::Samples], 1);
    channel.ScanPoint = 0; // parts nothing
    EXPECT_EQ(measure()[Measure::Samples], 7);
    channel.ScanPoint = -3;
    EXPECT_EQ(measure()[Measure::Samples], 7);
}

TEST_F(MeasureTest, OfACutFreshSweepTheSamplesThatTheFileHoldsAreMeasured) {
    with({1, 2, 3});
    channel.SampleCount = 100;
    channel.TimeIndex = 22;
    channel.ScanPoint = 50;
    EXPECT_EQ(measure()[Measure::Samples], 3);
    channel.ScanPoint = 2;
    EXPECT_EQ(measure()[Measure::Samples], 2);
}

TEST_F(MeasureTest, ANegativeScaleTurnsTheTraceOver) {
    with(repeated({0, 0, 0, 10, 10, 10, 10, 12}, 3));
    channel.VoltPerCount = -1000;
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Max], 0);
    EXPECT_EQ(m[Measure::Min], -12);
    EXPECT_EQ(m[Measure::Top], 0);
    EXPECT_EQ(m[Measure::Base], -10);
    EXPECT_DOUBLE_EQ(m[Measure::Preshoot], 20);
    EXPECT_DOUBLE_EQ(m[Measure::Mean], -52.0 / 8);
    EXPECT_DOUBLE_EQ(m[Measure::Rms], std::sqrt(544.0 / 8)); // (4 x 100 + 144) / 8
    EXPECT_NEAR(m[Measure::Period], 80e-6, 1e-15);
}

TEST_F(MeasureTest, AFigureWhoseFieldIsUnusableDoesNotExist) {
    with({0, 10, 0, 10});
    channel.VoltPerCount = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(isNone(measure()[Measure::Max]));
    EXPECT_EQ(measure()[Measure::Samples], 4);
    channel.VoltPerCount = 1000;
    channel.SampleInterval = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(isNone(measure()[Measure::Interval]));
    EXPECT_TRUE(isNone(measure()[Measure::Frequency]));
    EXPECT_EQ(measure()[Measure::Max], 10);
    channel.SampleInterval = 0;
    EXPECT_TRUE(isNone(measure()[Measure::Period]));
    channel.ProbeExp = 400;
    EXPECT_TRUE(isNone(measure()[Measure::Max]));
    channel.ProbeExp = 0;
    channel.VoltPerCount = 0;
    EXPECT_EQ(measure()[Measure::Amplitude], 0);
    EXPECT_TRUE(isNone(measure()[Measure::Overshoot]));
}

TEST_F(MeasureTest, AFigureBeyondTheRangeOfADoubleDoesNotExist) {
    with({-1000, 1000});
    channel.VoltPerCount = 1000;
    channel.ProbeExp = 305;
    const ChannelMeasures m = measure();
    EXPECT_DOUBLE_EQ(m[Measure::Min], -1e308);
    EXPECT_DOUBLE_EQ(m[Measure::Max], 1e308);
    EXPECT_TRUE(isNone(m[Measure::PeakToPeak])) << "2e308";
}

TEST_F(MeasureTest, TheInstrumentsOwnFiguresAreListed) {
    with({1});
    EXPECT_TRUE(isNone(measure()[Measure::InstrumentFrequency])); // 0 is none
    channel.Frequency = 1000;
    channel.Period = 250;
    EXPECT_EQ(measure()[Measure::InstrumentFrequency], 1000);
    EXPECT_DOUBLE_EQ(measure()[Measure::InstrumentPeriod], 250e-6);
    channel.Frequency = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(isNone(measure()[Measure::InstrumentFrequency]));
}

TEST_F(MeasureTest, FullLengthSumsAreExact) {
    with(std::vector<std::int16_t>(10231, -32768));
    const ChannelMeasures m = measure();
    EXPECT_EQ(m[Measure::Mean], -32768);
    EXPECT_EQ(m[Measure::Rms], 32768);
    EXPECT_EQ(m[Measure::AcRms], 0);
}

} // namespace
} // namespace sixtrace::test
