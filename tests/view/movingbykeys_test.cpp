// SPDX-License-Identifier: MIT
// Keys move cursor lines and markers.
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

TEST_F(Mouse, DuringTimedAcquisitionKeysMoveNothing) {
    show(CursorType::Both);
    model->AutoRun = true;
    EXPECT_FALSE(mouse->moveCursorBy(CursorHit::Voltage1, 1));
    EXPECT_EQ(state().cursors.voltage[0], ScreenY(100));
    mouse->moveMarkerBy(2, ScreenY(1));
    EXPECT_EQ(state().selectedRow, 0);
    EXPECT_EQ(marker(2).top, Twips(3663.75));
}

TEST_F(Mouse, KeysMoveALineUpToTheScreensEdges) {
    show(CursorType::Both);
    state().cursors = placesAt(1, 398, 1, 598);
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
} // namespace sixtrace::test
