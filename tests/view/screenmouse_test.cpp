// SPDX-License-Identifier: MIT
// The mouse over the screen: cursor lines and traces.
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

TEST_F(Mouse, WithTheArrowAPressOnNothingTakesAndDrawsNothing) {
    ASSERT_EQ(state().pointer, MousePointer::Arrow);
    const unsigned before = frames();
    press(50, 320);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(state().pointer, MousePointer::Arrow);
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, WithTheArrowAPressOnATraceTakesItAndDrawsByExclusiveOr) {
    const unsigned before = frames();
    press(50, 205);
    ASSERT_NE(trace(), nullptr);
    EXPECT_EQ(trace()->channel, 0);
    EXPECT_EQ(state().pointer, MousePointer::EastWest);
    EXPECT_EQ(drawMode(), DrawMode::XorPen);
    EXPECT_EQ(frames(), before + 1);
    moveTo(58, 10);
    EXPECT_EQ(model->ChannelXShift[0], 8);
    EXPECT_EQ(trace()->lastX, ScreenX(58));
    mouse->Picture2_MouseUp();
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
}

TEST_F(Mouse, WithoutAnyTraceAMoveWithoutCursorsLeavesTheShape) {
    model->ChannelPresent.fill(0);
    for (const MousePointer shape : {MousePointer::NorthSouth, MousePointer::EastWest, MousePointer::Arrow}) {
        state().pointer = shape;
        moveTo(50, 200);
        EXPECT_EQ(state().pointer, shape);
    }
    show(CursorType::Voltage);
    state().pointer = MousePointer::EastWest;
    moveTo(50, 200);
    EXPECT_EQ(state().pointer, MousePointer::Arrow) << "shown lines set the shape";
}

TEST_F(Mouse, WithoutAnyTraceAPressWithAnEarlierPointerShapeOnlySetsThePen) {
    model->ChannelPresent.fill(0);
    state().pointer = MousePointer::EastWest;
    const unsigned before = frames();
    press(50, 200);
    EXPECT_EQ(drawMode(), DrawMode::XorPen);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, APressThatFailsTakesNothingAndSetsNoPen) {
    model->TimeIndexView[0] = 99;
    state().pointer = MousePointer::EastWest;
    press(50, 200);
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
    EXPECT_FALSE(mouse->holdsAnything());
}

TEST_F(Mouse, WithNoRowSelectedAPressTakesALineAndNoTrace) {
    selectRow(rules(), -1);
    press(50, 200);
    EXPECT_FALSE(mouse->holdsAnything());
    press(180, 200);
    EXPECT_TRUE(mouse->holds(CursorHit::Time1));
}

TEST_F(Mouse, TwoButtonsHoldALineOfEachKindAndBothMove) {
    show(CursorType::Both);
    press(10, 100);
    press(420, 50);
    EXPECT_TRUE(mouse->holds(CursorHit::Voltage1));
    EXPECT_TRUE(mouse->holds(CursorHit::Time2));
    EXPECT_FALSE(mouse->holds(CursorHit::Voltage2));
    EXPECT_FALSE(mouse->holds(CursorHit::Time1));
    moveTo(400, 60);
    EXPECT_EQ(state().cursors.voltage, (std::array{ScreenY(60), ScreenY(300)}));
    EXPECT_EQ(state().cursors.time, (std::array{ScreenX(180), ScreenX(400)}));
    mouse->Picture2_MouseUp();
    EXPECT_FALSE(mouse->holds(CursorHit::Voltage1));
    EXPECT_FALSE(mouse->holds(CursorHit::Time2));
}

TEST_F(Mouse, ASecondPressOnALineOfTheSameKindTakesThatOneInstead) {
    press(10, 100);
    press(10, 300);
    ASSERT_NE(lines(), nullptr);
    EXPECT_EQ(lines()->voltage, std::optional<std::size_t>(1));
    EXPECT_FALSE(lines()->time);
}

TEST_F(Mouse, APressOnALineDoesNotEndTheDragOfATrace) {
    show(CursorType::Both);
    press(50, 200);
    press(50, 100);
    ASSERT_NE(trace(), nullptr);
    moveTo(60, 120);
    EXPECT_EQ(model->ChannelXShift[0], 10);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
}

TEST_F(Mouse, ATraceTakenWhileALineIsHeldMovesInItsPlace) {
    show(CursorType::Both);
    press(10, 100);
    press(50, 200);
    moveTo(60, 120);
    EXPECT_EQ(model->ChannelXShift[0], 10);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
}

TEST_F(Mouse, DuringTimedAcquisitionTheMouseDoesNothingOnTheScreen) {
    show(CursorType::Both);
    model->AutoRun = true;
    press(10, 100);
    EXPECT_FALSE(mouse->holdsAnything());
    press(50, 200);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
    state().pointer = MousePointer::Arrow;
    moveTo(10, 100);
    EXPECT_EQ(state().pointer, MousePointer::Arrow);

    model->AutoRun = false;
    press(10, 100);
    model->AutoRun = true; // it begins while a line is held
    moveTo(10, 120);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
    const unsigned before = frames();
    mouse->Picture2_MouseUp();
    EXPECT_TRUE(mouse->holds(CursorHit::Voltage1));
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, MovesOutsideTheScreenAreIgnoredAndFractionsCutOff) {
    show(CursorType::Both);
    press(10.9, 101.9); // row 101
    press(180.9, 50);
    for (const auto& [x, y] : {std::pair{-0.1, 50.0}, {600.0, 50.0}, {50.0, -0.1}, {50.0, 400.0}}) {
        moveTo(x, y);
        EXPECT_EQ(state().cursors.voltage[0], ScreenY(100)) << x << ' ' << y;
        EXPECT_EQ(state().cursors.time[0], ScreenX(180)) << x << ' ' << y;
    }
    moveTo(0.9, 0.9);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(0));
    EXPECT_EQ(state().cursors.time[0], ScreenX(0));
    moveTo(599.9, 399.9);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(399));
    EXPECT_EQ(state().cursors.time[0], ScreenX(599));
}

TEST_F(Mouse, LinesThatAreNotShownTakeAPressAndDoNotMove) {
    press(10, 100);
    press(180, 50);
    moveTo(200, 120);
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
    EXPECT_EQ(state().cursors.time[0], ScreenX(180));
}

TEST_F(Mouse, OverALineItsPointerShapeWinsOverThatOfATrace) {
    show(CursorType::Both);
    moveTo(50, 101);
    EXPECT_EQ(state().pointer, MousePointer::NorthSouth);
    moveTo(181, 101);
    EXPECT_EQ(state().pointer, MousePointer::NorthSouth) << "a voltage cursor comes before a time cursor";
    moveTo(181, 150);
    EXPECT_EQ(state().pointer, MousePointer::EastWest);
    moveTo(190, 150);
    EXPECT_EQ(state().pointer, MousePointer::Arrow);
    moveTo(190, 195);
    EXPECT_EQ(state().pointer, MousePointer::EastWest);
}

TEST_F(Mouse, VoltagesFollowTheDragAtOnceAndTimesLagByOneMove) {
    show(CursorType::Both);
    press(10, 100);
    press(180, 50);
    moveTo(200, 120);
    EXPECT_EQ(state().voltages.values[0], number("800.00")); // 80 rows of 10 mV
    EXPECT_EQ(state().voltages.difference, number("1,800.00"));
    EXPECT_EQ(state().times.values[0], number("450.00")) << "180 columns of 2.5 microseconds";
    moveTo(201, 120);
    EXPECT_EQ(state().times.values[0], number("500.00"));
    EXPECT_EQ(state().times.difference, number("550.00"));
}

} // namespace
} // namespace sixtrace::test
