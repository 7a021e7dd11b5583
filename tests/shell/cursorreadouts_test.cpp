// SPDX-License-Identifier: MIT
// When the readouts of the cursors change in the main window, and to what.
#include "shell/capturewindow.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(CursorWindow, ChoosingATypeReadsTheLinesOutWhereTheyStand) {
    cursorType().setListIndex(3);
    // Lines on rows 100 and 300 around the zero line on row 200, 10 mV a row.
    EXPECT_EQ(caption("LabY1"), number("1000.00"));
    EXPECT_EQ(caption("LabYY11"), u"mV"_s);
    EXPECT_EQ(caption("LabY2"), number("-1000.00"));
    EXPECT_EQ(caption("LabDy"), number("2,000.00"));
    // Lines on columns 180 and 420, 2.5 microseconds a column.
    EXPECT_EQ(caption("LabX1"), number("450.00"));
    EXPECT_EQ(caption("LabX2"), number("1050.00"));
    EXPECT_EQ(caption("LabXX22"), u"uS"_s);
    EXPECT_EQ(caption("LabDx"), number("600.00"));
}

TEST_F(CursorWindow, TheDifferenceOfTwoCursorsAtTheSameHeightIsZero) {
    cursorType().setListIndex(1);
    dragFromTo(screen(), {10, 300}, {10, 100});
    EXPECT_EQ(caption("LabY2"), caption("LabY1"));
    EXPECT_EQ(caption("LabDy"), number("0.00"));
}

TEST_F(CursorWindow, VoltageReadoutsFollowTheDragAtOnceAndTimeReadoutsLagByOneMove) {
    cursorType().setListIndex(3);
    press(screen(), 10, 100);
    drag(screen(), 10, 101);
    EXPECT_EQ(caption("LabY1"), number("990.00"));
    EXPECT_EQ(caption("LabDy"), number("1,990.00"));
    release(screen(), 10, 101);
    press(screen(), 180, 50);
    drag(screen(), 200, 50);
    EXPECT_EQ(line("Line2(0)").X1(), 200);
    EXPECT_EQ(caption("LabX1"), number("450.00"));
    drag(screen(), 201, 50);
    EXPECT_EQ(caption("LabX1"), number("500.00"));
    EXPECT_EQ(caption("LabDx"), number("550.00"));
}

TEST_F(CursorWindow, Row16IsInMicrosecondsAfterTheChoiceAndInMillisecondsAfterTheNextMove) {
    control<ListCombo>("Combo1").setListIndex(16);
    cursorType().setListIndex(2);
    EXPECT_EQ(caption("LabXX11"), u"uS"_s);
    hover(screen(), 5, 5);
    EXPECT_EQ(caption("LabXX11"), u"mS"_s);
}

TEST_F(CursorWindow, Rows22To24AreInSecondsAfterTheChoiceAndInMillisecondsAfterTheNextMove) {
    for (const int row : {22, 24}) {
        control<ListCombo>("Combo1").setListIndex(row);
        cursorType().setListIndex(3);
        EXPECT_EQ(caption("LabXX22"), u"S"_s) << row;
        hover(screen(), 5, 5);
        EXPECT_EQ(caption("LabXX22"), u"mS"_s) << row;
        cursorType().setListIndex(0);
    }
}

TEST_F(CursorWindow, TimeDifferencesWorkFromTheRoundedTexts) {
    control<ListCombo>("Combo1").setListIndex(10);
    cursorType().setListIndex(2);
    dragFromTo(screen(), {180, 50}, {2, 50});
    dragFromTo(screen(), {420, 50}, {4, 50});
    // 0.005 and 0.01 milliseconds are both shown as 0.01. At row 16 a column is 100 times the time: shift none, view
    // the capture's own time base but reckon in milliseconds.
    model->TimeIndex[0] = 16;
    model->TimeIndexView[0] = 16;
    hover(screen(), 50, 50);
    EXPECT_EQ(caption("LabX1"), number("0.01"));
    EXPECT_EQ(caption("LabX2"), number("0.01"));
    EXPECT_EQ(caption("LabDx"), number("0.00"));
}

TEST_F(CursorWindow, TimesOfAChannelWithoutDataStayAsTheyWere) {
    cursorType().setListIndex(2);
    list().setListIndex(1);
    EXPECT_EQ(caption("LabX1"), number("450.00"));
    hover(screen(), 5, 5);
    EXPECT_EQ(caption("LabX1"), number("450.00"));
    // Nor do counts help that a block of unknown id has left in a channel.
    model->TimeIndex[1] = model->TimeIndexView[1] = 10;
    model->SampleCount[1] = 600;
    model->SampleInterval[1] = 7;
    hover(screen(), 5, 5);
    EXPECT_EQ(caption("LabX1"), number("450.00"));
}

TEST_F(CursorWindow, TimesAreReadOutOnlyWhileTimeCursorsAreChosen) {
    cursorType().setListIndex(2);
    for (const int type : {0, 1}) {
        cursorType().setListIndex(type);
        model->SampleInterval[0] = 7;
        list().setListIndex(0);
        hover(screen(), 5, 5);
        EXPECT_EQ(caption("LabX1"), number("450.00")) << type;
    }
    cursorType().setListIndex(3);
    EXPECT_EQ(caption("LabX1"), number("1260.00")) << "180 columns of 7 microseconds";
}

TEST_F(CursorWindow, ReadoutsThatAnotherHandHasChangedComeBackAtTheNextMove) {
    cursorType().setListIndex(3);
    hover(screen(), 50, 50);
    for (const char* name : {"LabX1", "LabX2", "LabDx", "LabDy"}) {
        const QString shown = caption(name);
        control<ReadoutLabel>(name).setCaption(u"?"_s);
        hover(screen(), 50, 51);
        EXPECT_EQ(caption(name), shown) << name;
    }
}

TEST_F(CursorWindow, ChoosingAVoltRangeReadsTheVoltageCursorsOutAnew) {
    cursorType().setListIndex(1);
    control<ListCombo>("Combo2").setListIndex(7); // 1 V a division: 20 mV a row
    EXPECT_EQ(caption("LabY1"), number("2.00"));
    EXPECT_EQ(caption("LabYY11"), u" V"_s);
    EXPECT_EQ(caption("LabDy"), number("4.00"));
    // One division below the middle: the zero line goes to (105 + 3000 + 753.75) / 6030 x 400 = 255.97, row 256.
    control<PositionBar>("VScroll1").setValue(51);
    EXPECT_EQ(caption("LabY1"), number("3.12"));
}

TEST_F(CursorWindow, ASelectedRowReadsBothPairsOutAgainstItsChannel) {
    cursorType().setListIndex(3);
    model->SampleInterval[2] = 5;
    list().setListIndex(2);
    // Its zero line lies on row 250, 10 mV a row, and it has 5 microseconds a column.
    EXPECT_EQ(caption("LabY1"), number("1500.00"));
    EXPECT_EQ(caption("LabY2"), number("-500.00"));
    EXPECT_EQ(caption("LabDy"), number("2,000.00"));
    EXPECT_EQ(caption("LabX1"), number("900.00"));
    EXPECT_EQ(caption("LabX2"), number("2100.00"));
    EXPECT_EQ(caption("LabDx"), number("1,200.00"));
}

TEST_F(CursorWindow, ChoosingATimeBaseReadsTheTimeCursorsOutAnew) {
    cursorType().setListIndex(2);
    control<ListCombo>("Combo1").setListIndex(13);
    // Ten times the time a division: the trace begins at column 270, a column holds ten samples of 2.5 microseconds.
    EXPECT_EQ(caption("LabX1"), number("-2250.00"));
    EXPECT_EQ(caption("LabX2"), number("3750.00"));
    EXPECT_EQ(caption("LabXX11"), u"uS"_s);
    EXPECT_EQ(caption("LabDx"), number("6,000.00"));
}

} // namespace
} // namespace sixtrace::test
