// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/capturefile.h"
#include "platform/controls/framepanel.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "support/strings.h"

#include <QLocale>

namespace sixtrace::test {
namespace {

/// A reading with the decimal mark of the system.
QString withSystemMark(const char* reading) {
    return QString::fromLatin1(reading).replace(QLatin1Char('.'), QLocale::system().decimalPoint());
}

class ChannelListArea : public FrmComTest {
protected:
    /// Loads a capture with channel "A" only: 100 nS, 200 mV at a 100:1 probe, 25 divisions up.
    void loadChannelA() {
        load();
        CaptureBlock block{.id = 'A',
                           .screenPoints = 600,
                           .sampleCount = 4,
                           .timeIndex = 4,
                           .zeroLevel = 0,
                           .voltIndex = 6,
                           .probeExp = 2,
                           .sampleInterval = 1,
                           .frequency = 2500,
                           .period = 400,
                           .voltPerCount = 0.4F,
                           .samples = {-50, 50, 0, 10}};
        write(u"a.bin"_s, captureBytes(*captureForm("V11"), {block}));
        dialogs.files.emplace_back(FileChoice{path(u"a.bin"_s), 1});
        item("mnuOpen").trigger();
    }
    [[nodiscard]] TickList& list() const { return control<TickList>("List1"); }
    [[nodiscard]] QString labelText(const char* name) const { return control<ReadoutLabel>(name).text(); }
};

TEST_F(ChannelListArea, SelectedRowFillsListsTitlesAndReadouts) {
    loadChannelA();
    list().setListIndex(0);
    list().setListIndex(2);
    EXPECT_EQ(form->state().CurChannel, 2);
    EXPECT_EQ(control<ListCombo>("Combo1").Text(), u"100nS"_s);
    EXPECT_EQ(control<ListCombo>("Combo2").Text(), u"20.0 V"_s) << "row 5 of the 100:1 list";
    EXPECT_EQ(control<FramePanel>("Frame1").caption(), u"A   光标"_s);
    EXPECT_EQ(control<FramePanel>("Frame2").caption(), u"A   水平档位"_s);
    EXPECT_EQ(control<FramePanel>("Frame3").caption(), u"A   垂直档位"_s);
    EXPECT_EQ(control<FramePanel>("Frame4").caption(), u"A   "_s);
    EXPECT_EQ(labelText("labPPe"), withSystemMark("2.500 KHz"));
    EXPECT_EQ(labelText("LabPe"), withSystemMark("0.40 mS"));
    EXPECT_EQ(labelText("LabMaxx"), withSystemMark("4.000 V"));
}

TEST_F(ChannelListArea, ChannelWithoutDataEmptiesTheReadoutsAndKeepsItsStaleRows) {
    loadChannelA();
    model->TimeIndexView[1] = 7;
    model->VoltIndexView[1] = 3;
    list().setListIndex(1);
    EXPECT_TRUE(labelText("labPPe").isEmpty());
    EXPECT_TRUE(labelText("LabPe").isEmpty());
    EXPECT_TRUE(labelText("LabMaxx").isEmpty());
    EXPECT_EQ(control<ListCombo>("Combo1").ListIndex(), 7);
    EXPECT_EQ(control<ListCombo>("Combo2").ListIndex(), 3);
    EXPECT_EQ(control<ListCombo>("Combo2").Text(), u"50.0mV"_s) << "relabelled for a probe factor of 1";
}

TEST_F(ChannelListArea, FrequencyAndPeriodOfZeroFallIntoTheLastRow) {
    loadChannelA();
    model->Frequency[2] = 0;
    model->Period[2] = 0;
    list().setListIndex(2);
    EXPECT_EQ(labelText("labPPe"), withSystemMark("0.000 Hz"));
    EXPECT_EQ(labelText("LabPe"), withSystemMark("0.00 S"));
}

TEST_F(ChannelListArea, ATickSetOrClearedByCodeMovesTheCurrentRowAndReadsItOut) {
    loadChannelA();
    list().setSelected(4, true);
    EXPECT_EQ(list().ListIndex(), 4);
    EXPECT_EQ(control<FramePanel>("Frame4").caption(), u"C   "_s);
    list().setSelected(2, true);
    EXPECT_EQ(list().ListIndex(), 2);
    EXPECT_EQ(labelText("labPPe"), withSystemMark("2.500 KHz"));
    list().setSelected(4, false);
    EXPECT_EQ(list().ListIndex(), 4);
    EXPECT_TRUE(labelText("labPPe").isEmpty());
}

TEST_F(ChannelListArea, VoltRowMinus1LeavesTheListAsItIs) {
    loadChannelA();
    list().setListIndex(2);
    model->VoltIndexView[1] = -1;
    model->TimeIndexView[1] = 28;
    list().setListIndex(1);
    EXPECT_EQ(control<ListCombo>("Combo2").ListIndex(), 5);
    EXPECT_EQ(control<ListCombo>("Combo1").ListIndex(), 4);
}

TEST_F(ChannelListArea, BarFollowsTheMarkerOfAChannelWithDataWithoutMovingIt) {
    loadChannelA();
    const double top = control<MarkerLabel>("image1(2)").Top().number();
    EXPECT_DOUBLE_EQ(top, 6030 / 2.0 - 105);
    putMarker(2, 3000 + 6030 / 8.0 * 2.4);
    list().setListIndex(2);
    EXPECT_EQ(control<PositionBar>("VScroll1").Max(), 20) << "ten divisions either way in row 5";
    EXPECT_EQ(control<PositionBar>("VScroll1").Value(), 12) << "2.4 divisions below the middle";
    EXPECT_DOUBLE_EQ(control<MarkerLabel>("image1(2)").Top().number(), 3000 + 6030 / 8.0 * 2.4);
    EXPECT_TRUE(form->state().ScrollLive);
}

TEST_F(ChannelListArea, AChannelWithoutDataLeavesTheBarWhereItIs) {
    loadChannelA();
    list().setListIndex(2);
    const int place = control<PositionBar>("VScroll1").Value();
    control<MarkerLabel>("image1(1)").setTop(Twips(3000 + 6030 / 8.0 * 3));
    list().setListIndex(1);
    EXPECT_EQ(control<PositionBar>("VScroll1").Value(), place);
}

TEST_F(ChannelListArea, SelectedMarkerAloneStandsOutInItsTracesColour) {
    loadChannelA();
    list().setListIndex(4);
    EXPECT_EQ(control<MarkerLabel>("image1(4)").backColor(), QColor(0, 0x80, 0x40));
    EXPECT_EQ(control<MarkerLabel>("image1(2)").backColor(), QColor(0, 255, 255));
}

TEST_F(ChannelListArea, TickOnAChannelWithoutDataShowsItsMarkerButNoTrace) {
    loadChannelA();
    form->show();
    const QImage before = control<PictureBox>("Picture2").picture().view().copy();
    list().setSelected(3, true);
    EXPECT_TRUE(control<QWidget>("image1(3)").isVisible());
    EXPECT_EQ(control<PictureBox>("Picture2").picture().view(), before);
}

TEST_F(ChannelListArea, ClearingATickHidesMarkerAndTraceAtOnce) {
    loadChannelA();
    form->show();
    const QImage before = control<PictureBox>("Picture2").picture().view().copy();
    list().setSelected(2, false);
    EXPECT_TRUE(control<QWidget>("image1(2)").isHidden());
    EXPECT_NE(control<PictureBox>("Picture2").picture().view(), before);
}

TEST_F(ChannelListArea, DuringTimedAcquisitionATickShowsTheMarkerButWaitsForTheNextFrame) {
    loadChannelA();
    form->show();
    model->AutoRun = true;
    const QImage before = control<PictureBox>("Picture2").picture().view().copy();
    list().setSelected(2, false);
    EXPECT_TRUE(control<QWidget>("image1(2)").isHidden());
    EXPECT_EQ(control<PictureBox>("Picture2").picture().view(), before);
    list().setListIndex(1);
    EXPECT_EQ(form->state().CurChannel, 1) << "the selected channel may still change";
}

} // namespace
} // namespace sixtrace::test
