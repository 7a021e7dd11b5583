// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "support/printing.h"
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
    EXPECT_EQ(volts(100, 6, 0).value, text("1000.00")); // 100 pixels of 10 mV
    EXPECT_EQ(volts(100, 6, 0).unit, text("mV"));
    EXPECT_EQ(volts(100, 7, 0).value, text("2.00"));
    EXPECT_EQ(volts(100, 7, 0).unit, text(" V"));
    EXPECT_EQ(volts(250, 3, 1).value, text("-500.00")); // 10 x 50 pixels of 1 mV, below the zero line
    EXPECT_EQ(volts(250, 3, 1).unit, text("mV"));
    EXPECT_EQ(volts(250, 4, 1).unit, text(" V"));
    EXPECT_EQ(volts(250, 5, 1).unit, text(" V"));
    EXPECT_EQ(volts(100, 0, 2).unit, text("mV"));
    EXPECT_EQ(volts(100, 1, 2).unit, text(" V"));
    EXPECT_EQ(volts(100, 0, 3).unit, text(" V"));
}

TEST_F(CursorReadouts, AVoltageOnTheZeroLineHasNoSign) {
    EXPECT_EQ(volts(200, 6, 0).value, text("0.00"));
}

TEST_F(CursorReadouts, TimesUseSampleCountWhereItDiffersFromScreenPoints) {
    screen.model->SampleCount[0] = 300; // of 600 a screen: picking takes two columns a sample
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 100), text("50.00"));
}

TEST_F(CursorReadouts, AChannelWithoutAVoltRowHasTimeReadouts) {
    screen.model->VoltIndexView[0] = -1; // what a VoltIndex of 0 in the file gives
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 100), text("100.00"));
}

TEST_F(CursorReadouts, TheTwoTimeLaddersDifferInTheirRows) {
    EXPECT_EQ(unitOfTime(6, TimeLadder::OfCombo3), text("nS"));
    EXPECT_EQ(unitOfTime(7, TimeLadder::OfCombo3), text("uS"));
    EXPECT_EQ(unitOfTime(16, TimeLadder::OfCombo3), text("uS"));
    EXPECT_EQ(unitOfTime(17, TimeLadder::OfCombo3), text("mS"));
    EXPECT_EQ(unitOfTime(21, TimeLadder::OfCombo3), text("mS"));
    EXPECT_EQ(unitOfTime(22, TimeLadder::OfCombo3), text("S"));
    EXPECT_EQ(unitOfTime(6, TimeLadder::OfPrintTime), text("nS"));
    EXPECT_EQ(unitOfTime(7, TimeLadder::OfPrintTime), text("uS"));
    EXPECT_EQ(unitOfTime(15, TimeLadder::OfPrintTime), text("uS"));
    EXPECT_EQ(unitOfTime(16, TimeLadder::OfPrintTime), text("mS"));
    EXPECT_EQ(unitOfTime(24, TimeLadder::OfPrintTime), text("mS"));
    EXPECT_EQ(unitOfTime(25, TimeLadder::OfPrintTime), text("S"));
}

TEST_F(CursorReadouts, TimesCountMicrosecondsFromTheFirstSample) {
    screen.model->SampleInterval[0] = 2.5F;
    EXPECT_EQ(valueOfTime(3, TimeLadder::OfPrintTime, 180), text("450000.00"));
    EXPECT_EQ(valueOfTime(10, TimeLadder::OfPrintTime, 180), text("450.00"));
    EXPECT_EQ(valueOfTime(16, TimeLadder::OfPrintTime, 180), text("0.45"));
    EXPECT_EQ(valueOfTime(16, TimeLadder::OfCombo3, 180), text("450.00"));
    screen.model->SampleInterval[0] = 250000.0F;
    EXPECT_EQ(valueOfTime(25, TimeLadder::OfPrintTime, 180), text("45.00"));
    screen.model->SampleCount[0] = 0;
    EXPECT_FALSE(timeReadingAt(*screen.model, 0, ScreenX(180), TimeLadder::OfCombo3));
}

TEST(CursorDifference, WorksFromTheRoundedTexts) {
    EXPECT_EQ(differenceOf(text("-420.00"), text("-2420.00"), kPoint), text("2,000.00"));
    EXPECT_EQ(differenceOf(text("0.01"), text("0.02"), kPoint), text("0.01"));
    EXPECT_EQ(differenceOf(text(""), text("3.50"), kPoint), text("3.50"));
    EXPECT_EQ(differenceOf(text("1,5"), text("2,25"), NumberMarks{u',', u'.'}), text("0,75"));
}

TEST(CursorDifference, OfTwoCursorsAtTheSameHeightIsZero) {
    EXPECT_EQ(differenceOf(text("12.34"), text("12.34"), kPoint), text("0.00"));
}

} // namespace
} // namespace sixtrace::test
