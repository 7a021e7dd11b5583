// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "support/strings.h"
#include "view/scene.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

const NumberMarks kPoint{};

class CursorReadouts : public ::testing::Test {
protected:
    CursorReadouts() {
        screen.addChannel(0, 600, 600);
        screen.model->ChannelYPos[0] = 200;
    }
    CursorReadout volts(double y, int row, int probe) {
        screen.model->VoltIndexView[0] = static_cast<std::int16_t>(row);
        screen.model->ProbeExp[0] = static_cast<std::int16_t>(probe);
        screen.model->VoltPerPixel[0] = *voltPerPixel(*screen.model, 0);
        return voltageAt(*screen.model, 0, ScreenY(y), kPoint);
    }
    CursorReadout timeAt(double x, TimeLadder ladder) {
        return readoutOf(timeReadingAt(*screen.model, 0, ScreenX(x), ladder).value(), kPoint);
    }
    QString unitOfTime(int row, TimeLadder ladder) {
        screen.model->TimeIndex[0] = row;
        screen.model->TimeIndexView[0] = static_cast<std::int16_t>(row);
        return timeAt(100, ladder).unit;
    }
    QString valueOfTime(int row, TimeLadder ladder, double x) {
        screen.model->TimeIndex[0] = row;
        screen.model->TimeIndexView[0] = static_cast<std::int16_t>(row);
        return timeAt(x, ladder).value;
    }
    TestScreen screen;
};

TEST_F(CursorReadouts, VoltagesAreMillivoltsBelowTheRow7MinusThreeTimesTheProbe) {
    EXPECT_EQ(volts(100, 6, 0).value, u"1000.00"_s); // 100 pixels of 10 mV
    EXPECT_EQ(volts(100, 6, 0).unit, u"mV"_s);
    EXPECT_EQ(volts(100, 7, 0).value, u"2.00"_s);
    EXPECT_EQ(volts(100, 7, 0).unit, u" V"_s);
    EXPECT_EQ(volts(250, 3, 1).value, u"-500.00"_s); // 10 x 50 pixels of 1 mV, below the zero line
    EXPECT_EQ(volts(250, 3, 1).unit, u"mV"_s);
    EXPECT_EQ(volts(250, 4, 1).unit, u" V"_s);
    EXPECT_EQ(volts(250, 5, 1).unit, u" V"_s);
    EXPECT_EQ(volts(100, 0, 2).unit, u"mV"_s);
    EXPECT_EQ(volts(100, 1, 2).unit, u" V"_s);
    EXPECT_EQ(volts(100, 0, 3).unit, u" V"_s);
}

TEST_F(CursorReadouts, AVoltageOnTheZeroLineHasNoSign) {
    EXPECT_EQ(volts(200, 6, 0).value, u"0.00"_s);
}

TEST_F(CursorReadouts, TimesUseSampleCountWhereItDiffersFromScreenPoints) {
    screen.model->SampleCount[0] = 300; // of 600 a screen: picking takes two columns a sample
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 100), u"50.00"_s);
}

TEST_F(CursorReadouts, AChannelWithoutAVoltRowHasTimeReadouts) {
    screen.model->VoltIndexView[0] = -1; // what a VoltIndex of 0 in the file gives
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 100), u"100.00"_s);
}

TEST_F(CursorReadouts, TheTwoTimeLaddersDifferInTheirRows) {
    EXPECT_EQ(unitOfTime(6, TimeLadder::OfCombo3), u"nS"_s);
    EXPECT_EQ(unitOfTime(7, TimeLadder::OfCombo3), u"uS"_s);
    EXPECT_EQ(unitOfTime(16, TimeLadder::OfCombo3), u"uS"_s);
    EXPECT_EQ(unitOfTime(17, TimeLadder::OfCombo3), u"mS"_s);
    EXPECT_EQ(unitOfTime(21, TimeLadder::OfCombo3), u"mS"_s);
    EXPECT_EQ(unitOfTime(22, TimeLadder::OfCombo3), u"S"_s);
    EXPECT_EQ(unitOfTime(6, TimeLadder::OfPrintTime), u"nS"_s);
    EXPECT_EQ(unitOfTime(7, TimeLadder::OfPrintTime), u"uS"_s);
    EXPECT_EQ(unitOfTime(15, TimeLadder::OfPrintTime), u"uS"_s);
    EXPECT_EQ(unitOfTime(16, TimeLadder::OfPrintTime), u"mS"_s);
    EXPECT_EQ(unitOfTime(24, TimeLadder::OfPrintTime), u"mS"_s);
    EXPECT_EQ(unitOfTime(25, TimeLadder::OfPrintTime), u"S"_s);
}

TEST_F(CursorReadouts, TimesCountMicrosecondsFromTheFirstSample) {
    screen.model->SampleInterval[0] = 2.5F;
    EXPECT_EQ(valueOfTime(3, TimeLadder::OfPrintTime, 180), u"450000.00"_s);
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 180), u"450.00"_s);
    EXPECT_EQ(valueOfTime(16, TimeLadder::OfPrintTime, 180), u"0.45"_s);
    EXPECT_EQ(valueOfTime(16, TimeLadder::OfCombo3, 180), u"450.00"_s);
    screen.model->SampleInterval[0] = 250000.0F;
    EXPECT_EQ(valueOfTime(25, TimeLadder::OfPrintTime, 180), u"45.00"_s);
    screen.model->SampleCount[0] = 0;
    EXPECT_FALSE(timeReadingAt(*screen.model, 0, ScreenX(180), TimeLadder::OfCombo3));
}

TEST(CursorDifference, WorksFromTheRoundedTexts) {
    EXPECT_EQ(differenceOf(u"-420.00"_s, u"-2420.00"_s, kPoint), u"2,000.00"_s);
    EXPECT_EQ(differenceOf(u"0.01"_s, u"0.02"_s, kPoint), u"0.01"_s);
    EXPECT_EQ(differenceOf(u""_s, u"3.50"_s, kPoint), u"3.50"_s);
    EXPECT_EQ(differenceOf(u"1,5"_s, u"2,25"_s, NumberMarks{u',', u'.'}), u"0,75"_s);
}

TEST(CursorDifference, OfTwoCursorsAtTheSameHeightIsZero) {
    EXPECT_EQ(differenceOf(u"12.34"_s, u"12.34"_s, kPoint), u"0.00"_s);
}

} // namespace
} // namespace sixtrace::test
