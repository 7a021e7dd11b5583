// SPDX-License-Identifier: MIT
#include "capture/readouts.h"

#include "support/strings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sixtrace::test {
namespace {

constexpr NumberMarks kMarks{};

std::string frequencyOf(float hertz) {
    return frequencyText(Hertz(double{hertz}), kMarks).toStdString();
}
std::string periodOf(float hertz, float microseconds) {
    return periodText(Hertz(double{hertz}), Microseconds(double{microseconds}), kMarks).toStdString();
}
QString peakToPeakOf(double millivolts) {
    return peakToPeakText(Millivolts(millivolts), kMarks);
}
float above(float value) {
    return std::nextafter(value, std::numeric_limits<float>::infinity());
}
float below(float value) {
    return std::nextafter(value, 0.0F);
}

struct Threshold {
    float hertz;
    const char* under;
    const char* at;
    const char* over;
    const char* periodUpTo;
    const char* periodOver;
};

// The period is 1234.5 microseconds throughout, so that each row's unit and digits show.
constexpr std::array kThresholds{
    Threshold{10, "10.000 Hz", "10.000 Hz", "10.00 Hz", "0.00 S", "0.001 S"},
    Threshold{100, "100.00 Hz", "100.00 Hz", "100.0 Hz", "0.001 S", "0.00123 S"},
    Threshold{1000, "999.9 Hz", "1000.0 Hz", "1.000 KHz", "0.00123 S", "1.23 mS"},
    Threshold{10000, "10.000 KHz", "10.000 KHz", "10.00 KHz", "1.23 mS", "1.235 mS"},
    Threshold{100000, "100.00 KHz", "100.00 KHz", "100.0 KHz", "1.235 mS", "1.2345 mS"},
    Threshold{1000000, "1000.0 KHz", "1000.0 KHz", "1.000 MHz", "1.2345 mS", "1234.500 uS"},
    Threshold{10000000, "10.000 MHz", "10.000 MHz", "10.00 MHz", "1234.500 uS", "1234.5000 uS"},
};

TEST(FrequencyLadder, ThresholdsBelongToTheRowBelowThem) {
    for (const Threshold& threshold : kThresholds) {
        EXPECT_EQ(frequencyOf(threshold.hertz), threshold.at) << threshold.hertz;
    }
}

TEST(FrequencyLadder, JustOverAThresholdTheNextRowAppliesAndJustUnderItTheLowerOne) {
    for (const Threshold& threshold : kThresholds) {
        EXPECT_EQ(frequencyOf(above(threshold.hertz)), threshold.over) << threshold.hertz;
        if (threshold.hertz != 1000) {
            EXPECT_EQ(frequencyOf(below(threshold.hertz)), threshold.under) << threshold.hertz;
        }
    }
    EXPECT_EQ(frequencyOf(999.94F), "999.9 Hz");
}

TEST(PeriodLadder, UnitAndDigitsFollowTheFrequencyOnBothSidesOfEachThreshold) {
    for (const Threshold& threshold : kThresholds) {
        EXPECT_EQ(periodOf(below(threshold.hertz), 1234.5F), threshold.periodUpTo) << threshold.hertz;
        EXPECT_EQ(periodOf(threshold.hertz, 1234.5F), threshold.periodUpTo) << threshold.hertz;
        EXPECT_EQ(periodOf(above(threshold.hertz), 1234.5F), threshold.periodOver) << threshold.hertz;
    }
}

TEST(FrequencyLadder, FrequencyOfZeroFallsIntoTheLastRow) {
    EXPECT_EQ(frequencyOf(0), "0.000 Hz");
    EXPECT_EQ(periodOf(0, 0), "0.00 S");
}

TEST(PeakToPeak, JustOverAndJustUnderOneThousandMillivoltsTheUnitDecidesBeforeTheRounding) {
    EXPECT_EQ(peakToPeakOf(std::nextafter(1000.0, 2000.0)), u"1.000 V"_s);
    EXPECT_EQ(peakToPeakOf(std::nextafter(1000.0, 0.0)), u"1000.000 mV"_s);
}

TEST(PeakToPeak, ExactlyOneThousandMillivoltsStayMillivolts) {
    EXPECT_EQ(peakToPeakOf(1000), u"1000.000 mV"_s);
    EXPECT_EQ(peakToPeakOf(1000.5), u"1.001 V"_s);
    EXPECT_EQ(peakToPeakOf(999.9994), u"999.999 mV"_s);
    EXPECT_EQ(peakToPeakOf(0), u"0.000 mV"_s);
}

TEST(Measurements, ProbeExponent2With100CountsOf0Point4MillivoltsReadsFourVolts) {
    auto model = std::make_unique<publicM>();
    model->ChannelPresent[3] = 1;
    model->ProbeExp[3] = 2;
    model->PeakToPeak[3] = 100;
    model->VoltPerCount[3] = 0.4F;
    EXPECT_EQ(measurementTexts(signalFigures(*model, 3), kMarks).peakToPeak, u"4.000 V"_s);
}

TEST(Measurements, ChannelThatTheCaptureLacksHasEmptyTexts) {
    auto model = std::make_unique<publicM>();
    model->Frequency[1] = 1000;
    model->PeakToPeak[1] = 100;
    const MeasurementTexts texts = measurementTexts(signalFigures(*model, 1), kMarks);
    EXPECT_TRUE(texts.frequency.isEmpty());
    EXPECT_TRUE(texts.period.isEmpty());
    EXPECT_TRUE(texts.peakToPeak.isEmpty());
}

TEST(FrameTitles, TakeFourCharactersOfTheRowAndTheLanguage) {
    const QString row = u"A            5  nS"_s;
    EXPECT_EQ(frameTitles({row, Language::Chinese}).cursor, u"A   光标"_s);
    EXPECT_EQ(frameTitles({row, Language::Chinese}).timeBase, u"A   水平档位"_s);
    EXPECT_EQ(frameTitles({row, Language::Chinese}).voltage, u"A   垂直档位"_s);
    EXPECT_EQ(frameTitles({row, Language::English}).cursor, u"A   Cursor"_s);
    EXPECT_EQ(frameTitles({row, Language::English}).timeBase, u"A   TimeBase"_s);
    EXPECT_EQ(frameTitles({row, Language::English}).voltage, u"A   Voltage"_s);
    EXPECT_EQ(frameTitles({row, Language::English}).channel, u"A   "_s);
}

} // namespace
} // namespace sixtrace::test
