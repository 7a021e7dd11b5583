// SPDX-License-Identifier: MIT
#include "shell/capturewindow.h"

#include "capture/markerstrip.h"
#include "platform/controls/framepanel.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

/// ch1 on row 200 (marker top 2910) and A on row 250, markers 24 by 14 pixels.
class MarkerWindow : public CaptureWindow {
protected:
    void SetUp() override {
        CaptureWindow::SetUp();
        openFlat();
    }
    /// Pulls a marker from its middle to a top in twips and drops it there. The pointer keeps its place in the marker.
    void dropAt(int channel, double top) {
        MarkerLabel& label = marker(channel);
        // The last pixel of the way is enough: the pointer moves by whole pixels.
        const int step = top < label.Top().number() ? -1 : 1;
        putMarker(channel, top - 15 * step);
        press(label, 12, 7);
        drag(label, 12, 7 + step);
        release(label, 12, 7);
    }
};

TEST_F(MarkerWindow, APressShowsTheBorderAndTheReleaseTakesItAway) {
    press(marker(0), 12, 7);
    EXPECT_TRUE(marker(0).hasBorder());
    release(marker(0), 12, 7);
    EXPECT_FALSE(marker(0).hasBorder());
}

TEST_F(MarkerWindow, SelectingAChannelThroughItsMarkerChangesListsAndFramesAndBar) {
    model->TimeIndexView[2] = 12;
    model->VoltIndexView[2] = 4;
    press(marker(2), 12, 7);
    EXPECT_EQ(list().ListIndex(), 2);
    EXPECT_EQ(form->state().CurChannel, 2);
    EXPECT_EQ(control<ListCombo>("Combo1").ListIndex(), 12);
    EXPECT_EQ(control<ListCombo>("Combo2").ListIndex(), 4);
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), u"A   水平档位"_s);
    EXPECT_EQ(control<FramePanel>("Frame4").caption(), u"A   "_s);
    EXPECT_EQ(marker(2).backColor(), toQColor(model->LineColor[2]));
    EXPECT_EQ(marker(0).backColor(), QColor(0, 255, 255)) << "the other blends into the strip again";
    EXPECT_EQ(control<PositionBar>("VScroll1").Value(), 21) << "one division below the middle of row 4";
}

TEST_F(MarkerWindow, ADragMovesTheTraceAtItsReleaseAndTheBarAndReadoutsFollow) {
    cursorType().setListIndex(1);
    const QImage before = screenImage();
    dropAt(0, 2910 + 6030 / 8.0);
    EXPECT_NEAR(marker(0).Top().number(), 2910 + 6030 / 8.0, 1e-9);
    EXPECT_EQ(model->ChannelYPos[0], 250);
    EXPECT_EQ(model->PlotY(0, 300), 250);
    EXPECT_NE(screenImage(), before);
    // (3663.75 - 3000) / 6030 * 8 = 0.88 divisions below the middle of 100.
    EXPECT_EQ(control<PositionBar>("VScroll1").Value(), 101);
    EXPECT_TRUE(form->state().ScrollLive);
    EXPECT_EQ(caption("LabY1"), number("1500.00")) << "150 rows of 10 mV above the zero line";
}

TEST_F(MarkerWindow, ThePointerKeepsItsPlaceInTheMarker) {
    MarkerLabel& label = marker(0);
    press(label, 3, 2);
    drag(label, 20, 12);
    EXPECT_DOUBLE_EQ(label.Top().number(), 2910 + 150);
    // The label has moved with the pointer, which therefore stands at the old place in it.
    drag(label, 20, 2);
    EXPECT_DOUBLE_EQ(label.Top().number(), 2910 + 150);
}

TEST_F(MarkerWindow, APointerOnAFractionOfAPixelDoesNotMakeTheMarkerDrift) {
    MarkerLabel& label = marker(0);
    press(label, 3, 2.5);
    // Twenty moves to and fro by half a pixel: the pointer stays in its pixel.
    for (int i = 0; i < 10; ++i) {
        drag(label, 3, 2.9);
        drag(label, 3, 2.4);
    }
    EXPECT_DOUBLE_EQ(label.Top().number(), 2910);
    drag(label, 3, 12.5);
    EXPECT_DOUBLE_EQ(label.Top().number(), 2910 + 150);
    release(label, 3, 2.5);
}

TEST_F(MarkerWindow, OfZeroLinesThatCoincideTheSelectedChannelsMarkerIsSeen) {
    putMarker(0, marker(2).Top().number());
    const auto inFront = [this] { return control<QWidget>("Picture3").childAt(marker(0).pos() + QPoint(12, 7)); };
    for (const int channel : {2, 0, 2}) {
        list().setListIndex(channel);
        EXPECT_EQ(inFront(), &marker(channel)) << channel;
    }
}

TEST_F(MarkerWindow, RowsOfChannelsThatTheCaptureDoesNotHoldAreMuted) {
    for (int row = 0; row < kChannels; ++row) {
        EXPECT_EQ(list().isMuted(row), row != 0 && row != 2) << row;
    }
    open({flat('2', 0)});
    EXPECT_TRUE(list().isMuted(0));
    EXPECT_FALSE(list().isMuted(1));
    EXPECT_TRUE(list().List(0).startsWith(u"ch1  "_s)) << "its text stays";
}

TEST_F(MarkerWindow, DraggingTheMarkerOfAChannelWithoutDataMovesTheLabelOnly) {
    list().setSelected(5, true);
    const QImage before = screenImage();
    const auto yPos = model->ChannelYPos[5];
    ASSERT_TRUE(marker(5).isVisible());
    press(marker(5), 12, 7);
    drag(marker(5), 12, 27);
    EXPECT_DOUBLE_EQ(marker(5).Top().number(), 3000 + 300);
    EXPECT_EQ(screenImage(), before);
    EXPECT_EQ(model->ChannelYPos[5], yPos);
    release(marker(5), 12, 7);
    EXPECT_TRUE(marker(5).hasBorder()) << "its border stays on";
    EXPECT_EQ(list().ListIndex(), 5) << "it can be selected all the same";
    EXPECT_EQ(screenImage(), before);
}

TEST_F(MarkerWindow, TheMarkerOfAChannelThatIsTickedButAbsentCanBeSelectedAndDragged) {
    list().setSelected(4, true);
    list().setListIndex(0);
    press(marker(4), 12, 7);
    EXPECT_EQ(list().ListIndex(), 4);
    drag(marker(4), 12, 17);
    release(marker(4), 12, 7);
    EXPECT_DOUBLE_EQ(marker(4).Top().number(), 3000 + 150);
    EXPECT_TRUE(caption("LabMaxx").isEmpty());
}

TEST_F(MarkerWindow, ATraceThatLiesWhollyLeftOfTheScreenShowsNoGhost) {
    model->ChannelXShift[0] = -2000;
    list().setSelected(0, true);
    const QImage before = screenImage();
    press(marker(0), 12, 7);
    drag(marker(0), 12, 47);
    EXPECT_EQ(screenImage(), before);
    EXPECT_EQ(model->PlotY(0, 300), 240) << "all samples have been walked through";
    release(marker(0), 12, 7);
    EXPECT_EQ(model->ChannelYPos[0], 240);
}

TEST_F(MarkerWindow, AMarkerDroppedAt5870IsReplacedAt5865InTheSameColourAndWithTheSameCaption) {
    dropAt(0, 5870);
    EXPECT_NEAR(marker(0).Top().number(), 5870, 1e-9);
    EXPECT_TRUE(marker(0).isHidden());
    EXPECT_TRUE(standIn(0).isVisible());
    EXPECT_DOUBLE_EQ(standIn(0).Top().number(), 5865);
    EXPECT_EQ(standIn(0).backColor(), marker(0).backColor());
    EXPECT_EQ(standIn(0).caption(), u"1->"_s);
}

TEST_F(MarkerWindow, AStandInTakesTheCaptionThatItsMarkerHasThen) {
    marker(0).setCaption(u"one"_s);
    dropAt(0, 5870);
    EXPECT_EQ(standIn(0).caption(), u"one"_s);
}

TEST_F(MarkerWindow, OneDroppedAt5865StaysAndOneAboveTheTopEndIsReplacedThere) {
    dropAt(0, 5865);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_TRUE(standIn(0).isHidden());
    dropAt(0, -75);
    EXPECT_TRUE(marker(0).isVisible());
    dropAt(0, -90);
    EXPECT_TRUE(marker(0).isHidden());
    EXPECT_DOUBLE_EQ(standIn(0).Top().number(), -75);
}

TEST_F(MarkerWindow, ADragStopsThirtyTwipsBeyondTheStandByPositions) {
    dropAt(0, -106);
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), -91) << "such a move is undone";
    dropAt(0, 5896);
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), 5881);
    putMarker(0, 2910);
    form->state().markers[0].standInShown = false;
    form->state().markers[0].shown = true;
    form->showState();
    press(marker(0), 12, 7);
    drag(marker(0), 12, 7 + (5895 - 2910) / 15);
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), 5895);
    EXPECT_TRUE(marker(0).isVisible()) << "the swap waits for the release";
    release(marker(0), 12, 7);
    EXPECT_TRUE(marker(0).isHidden());
}

TEST_F(MarkerWindow, OnlyTheBarBringsAReplacedMarkerBack) {
    dropAt(0, 5890);
    ASSERT_TRUE(marker(0).isHidden());
    auto& bar = control<PositionBar>("VScroll1");
    EXPECT_EQ(bar.Value(), 104) << "(5890 - 3000) / 6030 * 8 = 3.83 divisions below the middle of 100";
    bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), 3000 + 3 * 6030 / 8.0);
}

TEST_F(MarkerWindow, OnlyTheLeftButtonDrags) {
    press(marker(0), 12, 7, Qt::RightButton);
    drag(marker(0), 12, 47, Qt::RightButton);
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), 2910);
    release(marker(0), 12, 7, Qt::RightButton);
    EXPECT_FALSE(marker(0).hasBorder());
}

TEST_F(MarkerWindow, DuringTimedAcquisitionMarkersRefuseEverything) {
    model->AutoRun = true;
    dialogs.colours.emplace_back(255);
    const QImage before = screenImage();
    press(marker(2), 12, 7);
    drag(marker(2), 12, 47);
    release(marker(2), 12, 7);
    doubleClick(marker(2), 12, 7);
    EXPECT_FALSE(marker(2).hasBorder());
    EXPECT_DOUBLE_EQ(marker(2).Top().number(), 6030 * 125 / 200.0 - 105);
    EXPECT_EQ(list().ListIndex(), 0);
    EXPECT_EQ(dialogs.colours.size(), 1U) << "no dialog was shown";
    EXPECT_EQ(screenImage(), before);
}

TEST_F(MarkerWindow, AReleaseDuringTimedAcquisitionLeavesBorderAndScreen) {
    press(marker(0), 12, 7);
    const QImage pressed = screenImage();
    model->AutoRun = true;
    drag(marker(0), 12, 47);
    release(marker(0), 12, 7);
    EXPECT_DOUBLE_EQ(marker(0).Top().number(), 2910);
    EXPECT_TRUE(marker(0).hasBorder());
    EXPECT_EQ(screenImage(), pressed) << "the ghost is still there";
}

TEST_F(MarkerWindow, ADoubleClickChoosesTheTraceColourAndKeepsItInTheSettings) {
    constexpr Colour kChosen = 0x20C040; // red in the low byte; a trace begins with another colour
    ASSERT_NE(model->LineColor[0], kChosen);
    dialogs.colours.emplace_back(kChosen);
    doubleClick(marker(0), 12, 7);
    EXPECT_EQ(model->LineColor[0], kChosen);
    EXPECT_EQ(marker(0).backColor(), QColor(0x40, 0xC0, 0x20));
    EXPECT_EQ(list().chipColour(0), kChosen);
    EXPECT_EQ(screen().picture().Point(303, 200), kChosen);
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("[LineColor]"));
    EXPECT_TRUE(read(u"vkq.ini"_s).contains("0= 2146368")) << "with the blank before a positive number";
}

TEST_F(MarkerWindow, ACancelledDoubleClickLeavesTheSettingsFileUntouched) {
    const QByteArray before = read(u"vkq.ini"_s);
    const auto colour = model->LineColor[0];
    doubleClick(marker(0), 12, 7);
    EXPECT_EQ(read(u"vkq.ini"_s), before);
    EXPECT_EQ(model->LineColor[0], colour);
}

TEST_F(MarkerWindow, TheSpareMarkerIsNeverShown) {
    dropAt(0, 5890);
    dropAt(2, 1000);
    EXPECT_TRUE(control<QWidget>("image2").isHidden());
}

TEST_F(MarkerWindow, APressBringsTheMarkerToTheFront) {
    putMarker(0, marker(2).Top().number());
    const auto inFront = [this] { return control<QWidget>("Picture3").childAt(marker(0).pos() + QPoint(12, 7)); };
    for (const int channel : {0, 2, 0}) {
        press(marker(channel), 12, 7);
        EXPECT_EQ(inFront(), &marker(channel)) << channel;
        release(marker(channel), 12, 7);
    }
}

TEST_F(MarkerWindow, ATickShowsAndHidesTheMarkerAndLeavesItsStandByLabel) {
    dropAt(0, 5890);
    ASSERT_TRUE(standIn(0).isVisible());
    list().setSelected(0, false);
    EXPECT_TRUE(marker(0).isHidden());
    EXPECT_TRUE(standIn(0).isVisible());
    list().setSelected(0, true);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_TRUE(standIn(0).isVisible());
}

TEST_F(MarkerWindow, TheBarShowsTheMarkerOfAChannelWhoseTickIsCleared) {
    list().setSelected(0, false);
    ASSERT_TRUE(marker(0).isHidden());
    auto& bar = control<PositionBar>("VScroll1");
    bar.setValue(bar.Value() + 1);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_FALSE(list().Selected(0));
}

} // namespace
} // namespace sixtrace::test
