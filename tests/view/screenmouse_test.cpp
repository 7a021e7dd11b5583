// SPDX-License-Identifier: MIT
#include "view/screenmouse.h"

#include "view/cursors.h"
#include "view/flatscope.h"

namespace sixtrace {
namespace {

class Mouse : public testing::FlatScope {
protected:
    void SetUp() override { loadFlat(); }
    void press(double x, double y) { mouse->Picture2_MouseDown(ScreenX(x), ScreenY(y)); }
    void moveTo(double x, double y) { mouse->Picture2_MouseMove(ScreenX(x), ScreenY(y)); }
    void show(CursorType type) {
        state().cursorChoice = type;
        Combo3_Click(rules());
    }
    [[nodiscard]] const drag::CursorLines* lines() const { return std::get_if<drag::CursorLines>(&mouse->held()); }
    [[nodiscard]] const drag::Trace* trace() const { return std::get_if<drag::Trace>(&mouse->held()); }
    [[nodiscard]] DrawMode drawMode() const { return scope->Picture2.drawMode; }
    [[nodiscard]] unsigned frames() const { return scope->screen().changes(); }
};

TEST_F(Mouse, APressBesideEverythingUnderTheArrowTakesAndDrawsNothing) {
    ASSERT_EQ(state().pointer, MousePointer::Arrow);
    const unsigned before = frames();
    press(50, 320);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(state().pointer, MousePointer::Arrow);
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, APressOnATraceUnderTheArrowTakesItAndDrawsByExclusiveOr) {
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
    EXPECT_EQ(state().pointer, MousePointer::Arrow) << "lines that are shown set it";
}

TEST_F(Mouse, WithoutAnyTraceAPressUnderALeftOverShapeSetsThePenOnly) {
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

TEST_F(Mouse, ATraceThatIsDraggedIsNotLetGoForALine) {
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

TEST_F(Mouse, TimedAcquisitionKeepsEachEventOfTheScreenFromItsWork) {
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

TEST_F(Mouse, TimedAcquisitionKeepsEachEventOfAMarkerFromItsWork) {
    model->AutoRun = true;
    mouse->image1_MouseDown(2, Twips(90));
    EXPECT_FALSE(marker(2).pressed);
    EXPECT_EQ(state().selectedRow, 0);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);

    model->AutoRun = false;
    mouse->image1_MouseDown(2, Twips(90));
    model->AutoRun = true;
    const Twips top = marker(2).top;
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(190));
    EXPECT_EQ(marker(2).top, top);
    const unsigned before = frames();
    mouse->image1_MouseUp(2);
    EXPECT_TRUE(marker(2).pressed);
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, TimedAcquisitionRefusesTheKeysToo) {
    show(CursorType::Both);
    model->AutoRun = true;
    EXPECT_FALSE(mouse->moveCursorBy(CursorHit::Voltage1, 1));
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
    mouse->moveMarkerBy(2, ScreenY(1));
    EXPECT_EQ(state().selectedRow, 0);
    EXPECT_EQ(marker(2).top, Twips(3663.75));
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

TEST_F(Mouse, AShapeOverALineEndsTheMoveAndOverATraceComesLast) {
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

TEST_F(Mouse, AMarkerGoesWithThePointerAsFarAsThirtyTwipsBeyondItsEnds) {
    mouse->image1_MouseDown(2, Twips(90));
    EXPECT_TRUE(marker(2).pressed);
    EXPECT_EQ(state().selectedRow, 2);
    EXPECT_EQ(state().CurChannel, 2);
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(191.25));
    EXPECT_EQ(marker(2).top, Twips(3765)); // 3663.75 + 101.25
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(90 + (5895 - 3765)));
    EXPECT_EQ(marker(2).top, Twips(5895));
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(91));
    EXPECT_EQ(marker(2).top, Twips(5895));
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(90 - 6000));
    EXPECT_EQ(marker(2).top, Twips(-105));
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(89));
    EXPECT_EQ(marker(2).top, Twips(-105));
    mouse->image1_MouseUp(2);
    EXPECT_FALSE(marker(2).pressed);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_FALSE(marker(2).shown);
    EXPECT_TRUE(marker(2).standInShown);
    EXPECT_EQ(marker(2).standInTop, Twips(-75));
    EXPECT_EQ(state().bar.value, 96) << "3105 of 6030 x 8 divisions above 100: 95.88";
}

TEST_F(Mouse, AMarkerGoesOnlyWithTheLeftButtonAndOnlyIfItWasPressed) {
    mouse->image1_MouseMove(2, Qt::LeftButton, Twips(190));
    EXPECT_EQ(marker(2).top, Twips(3663.75));
    mouse->image1_MouseDown(2, Twips(90));
    mouse->image1_MouseMove(2, Qt::RightButton, Twips(190));
    mouse->image1_MouseMove(2, Qt::LeftButton | Qt::RightButton, Twips(190));
    mouse->image1_MouseMove(0, Qt::LeftButton, Twips(190));
    EXPECT_EQ(marker(2).top, Twips(3663.75));
    EXPECT_EQ(marker(0).top, Twips(2910));
}

TEST_F(Mouse, AMarkerWithoutDataMovesAloneAndKeepsItsBorder) {
    const unsigned before = frames();
    mouse->image1_MouseDown(1, Twips(90));
    EXPECT_EQ(drawMode(), DrawMode::XorPen);
    mouse->image1_MouseMove(1, Qt::LeftButton, Twips(190));
    EXPECT_EQ(marker(1).top, Twips(3100));
    mouse->image1_MouseUp(1);
    EXPECT_TRUE(marker(1).pressed);
    EXPECT_FALSE(mouse->holdsAnything());
    EXPECT_EQ(frames(), before);
}

TEST_F(Mouse, ADraggedMarkerTakesItsTraceAndAtItsReleaseTheReadouts) {
    show(CursorType::Voltage);
    mouse->image1_MouseDown(0, Twips(90));
    const unsigned before = frames();
    mouse->image1_MouseMove(0, Qt::LeftButton, Twips(90 + 753.75)); // a division
    EXPECT_EQ(frames(), before + 1);
    EXPECT_EQ(model->ChannelYPos[0], 250);
    EXPECT_EQ(state().voltages.values[0], number("1000.00"));
    mouse->image1_MouseUp(0);
    EXPECT_EQ(state().voltages.values[0], number("1500.00"));
    EXPECT_EQ(drawMode(), DrawMode::CopyPen);
    EXPECT_EQ(state().bar.value, 101) << "(3663.75 - 3000) / 6030 x 8 is 0.88 below the middle";
}

TEST_F(Mouse, KeysMoveALineUpToTheScreensEdges) {
    show(CursorType::Both);
    state().cursors = testing::placesAt(1, 398, 1, 598);
    for (int press = 0; press < 3; ++press) {
        EXPECT_TRUE(mouse->moveCursorBy(CursorHit::Voltage1, -1));
        EXPECT_TRUE(mouse->moveCursorBy(CursorHit::Voltage2, 1));
        EXPECT_TRUE(mouse->moveCursorBy(CursorHit::Time1, -1));
        EXPECT_TRUE(mouse->moveCursorBy(CursorHit::Time2, 1));
    }
    EXPECT_EQ(state().cursors.voltage, (std::array{ScreenY(0), ScreenY(399)}));
    EXPECT_EQ(state().cursors.time, (std::array{ScreenX(0), ScreenX(599)}));
    EXPECT_EQ(state().voltages.values[0], number("2000.00"));
    EXPECT_EQ(state().voltages.difference, number("3,990.00"));
    EXPECT_EQ(state().times.values[1], number("1497.50"));
    EXPECT_EQ(state().times.difference, number("1,497.50"));
}

TEST_F(Mouse, KeysMoveTheLineThatTheMouseHoldsAndNoOther) {
    show(CursorType::Both);
    press(10, 100);
    EXPECT_TRUE(mouse->moveCursorBy(CursorHit::Voltage1, 3));
    EXPECT_FALSE(mouse->moveCursorBy(CursorHit::Voltage2, 3));
    EXPECT_FALSE(mouse->moveCursorBy(CursorHit::Time1, 3));
    mouse->moveMarkerBy(2, ScreenY(1));
    EXPECT_EQ(state().cursors.voltage, (std::array{ScreenY(103), ScreenY(300)}));
    EXPECT_EQ(state().cursors.time[0], ScreenX(180));
    EXPECT_EQ(marker(2).top, Twips(3663.75));
}

TEST_F(Mouse, KeysMoveAMarkerByOneRowAndStopWhereItsStandInWouldReplaceIt) {
    show(CursorType::Voltage);
    mouse->moveMarkerBy(2, ScreenY(2));
    EXPECT_DOUBLE_EQ(marker(2).top.number(), 3663.75 + 2 * 15.075);
    EXPECT_EQ(state().selectedRow, 2);
    EXPECT_EQ(model->ChannelYPos[2], 252);
    EXPECT_EQ(state().voltages.values[0], number("1520.00"));
    marker(2).top = Twips(5865 - 15.075);
    mouse->moveMarkerBy(2, ScreenY(1));
    EXPECT_DOUBLE_EQ(marker(2).top.number(), 5865);
    EXPECT_EQ(state().bar.value, 104) << "(5865 - 3000) / 6030 x 8 is 3.80 below the middle";
    mouse->moveMarkerBy(2, ScreenY(1));
    EXPECT_DOUBLE_EQ(marker(2).top.number(), 5865);
    marker(2).top = Twips(-75);
    mouse->moveMarkerBy(2, ScreenY(-1));
    EXPECT_EQ(marker(2).top, Twips(-75));
}

TEST_F(Mouse, KeysMoveAMarkerWithoutDataAndDrawNothing) {
    const unsigned before = frames();
    mouse->moveMarkerBy(1, ScreenY(1));
    EXPECT_DOUBLE_EQ(marker(1).top.number(), 3015.075);
    EXPECT_EQ(frames(), before);
}

} // namespace
} // namespace sixtrace
