// SPDX-License-Identifier: MIT
// The mouse on the zero markers.
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

TEST_F(Mouse, DuringTimedAcquisitionTheMouseMovesNoMarker) {
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

TEST_F(Mouse, AMarkerFollowsThePointerUpTo30TwipsBeyondItsStandInPlaces) {
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

TEST_F(Mouse, AMarkerMovesOnlyWithTheLeftButtonAndOnlyIfItWasPressed) {
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

TEST_F(Mouse, ADraggedMarkerMovesItsTraceAndItsReleaseUpdatesTheReadouts) {
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

} // namespace
} // namespace sixtrace::test
