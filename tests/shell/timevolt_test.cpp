// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "platform/arrowpair.h"
#include "platform/listcombo.h"
#include "platform/markerlabel.h"
#include "platform/picturebox.h"
#include "platform/positionbar.h"
#include "platform/ticklist.h"

#include <QLabel>
#include <QTest>

namespace sixtrace {
namespace {

/// A window with a six-trace capture, ch1 selected: 500 uS and 500 mV per division at a probe factor of 1.
class TimeVolt : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        load();
        form->show();
        write(QStringLiteral("six.bin"), captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("six"), 1)));
        dialogs.files.emplace_back(FileChoice{path(QStringLiteral("six.bin")), 1});
        item("mnuOpen").trigger();
        list().setListIndex(0);
    }
    [[nodiscard]] TickList& list() const { return control<TickList>("List1"); }
    [[nodiscard]] ListCombo& times() const { return control<ListCombo>("Combo1"); }
    [[nodiscard]] ListCombo& volts() const { return control<ListCombo>("Combo2"); }
    [[nodiscard]] PositionBar& bar() const { return control<PositionBar>("VScroll1"); }
    [[nodiscard]] MarkerLabel& marker() const { return control<MarkerLabel>("image1(0)"); }
    [[nodiscard]] QImage screen() const { return control<PictureBox>("Picture2").picture().view().copy(); }
};

TEST_F(TimeVolt, ChosenTimeBaseIsTheChannelsOwnAndRewritesItsRowWithEightBlanks) {
    const QImage before = screen();
    times().setListIndex(16);
    EXPECT_EQ(model->TimeIndexView[0], 16);
    EXPECT_EQ(model->TimeIndexView[1], model->TimeIndexFile[1]);
    EXPECT_EQ(list().List(0), QStringLiteral("ch1          1  mS          500 mV        / 1"));
    EXPECT_NE(screen(), before);
}

TEST_F(TimeVolt, ChosenVoltRangeRewritesTheRowWithSevenBlanksAndSetsTheBarsRange) {
    volts().setListIndex(7);
    EXPECT_EQ(model->VoltIndexView[0], 7);
    EXPECT_EQ(list().List(0), QStringLiteral("ch1          500uS          1.00 V       / 1"));
    EXPECT_EQ(bar().Max(), 100);
    EXPECT_TRUE(form->selection().ScrollLive);
}

TEST_F(TimeVolt, ChannelComesBackWithItsOwnRows) {
    times().setListIndex(20);
    volts().setListIndex(3);
    list().setListIndex(1);
    EXPECT_NE(times().ListIndex(), 20);
    list().setListIndex(0);
    EXPECT_EQ(times().ListIndex(), 20);
    EXPECT_EQ(volts().ListIndex(), 3);
}

TEST_F(TimeVolt, ArrowsStepOneRowAndStopAtBothEnds) {
    auto& timeArrows = control<ArrowPair>("UpDown2");
    auto& voltArrows = control<ArrowPair>("UpDown1");
    times().setListIndex(26);
    Q_EMIT timeArrows.UpClick();
    EXPECT_EQ(model->TimeIndexView[0], 27);
    Q_EMIT timeArrows.UpClick();
    EXPECT_EQ(model->TimeIndexView[0], 27);
    times().setListIndex(1);
    Q_EMIT timeArrows.DownClick();
    Q_EMIT timeArrows.DownClick();
    EXPECT_EQ(model->TimeIndexView[0], 0);
    volts().setListIndex(8);
    Q_EMIT voltArrows.UpClick();
    Q_EMIT voltArrows.UpClick();
    EXPECT_EQ(model->VoltIndexView[0], 9);
    volts().setListIndex(1);
    Q_EMIT voltArrows.DownClick();
    Q_EMIT voltArrows.DownClick();
    EXPECT_EQ(model->VoltIndexView[0], 0);
}

TEST_F(TimeVolt, AtBothEndsOfTheListsOneArrowDoesNothingUnderTheMouse) {
    auto& timeArrows = control<ArrowPair>("UpDown2");
    auto& voltArrows = control<ArrowPair>("UpDown1");
    const auto right = [&] { QTest::mouseClick(&timeArrows, Qt::LeftButton, {}, {25, 10}); };
    const auto left = [&] { QTest::mouseClick(&timeArrows, Qt::LeftButton, {}, {7, 10}); };
    const auto upper = [&] { QTest::mouseClick(&voltArrows, Qt::LeftButton, {}, {8, 8}); };
    const auto lower = [&] { QTest::mouseClick(&voltArrows, Qt::LeftButton, {}, {8, 25}); };
    times().setListIndex(27);
    right();
    EXPECT_EQ(times().ListIndex(), 27);
    left();
    EXPECT_EQ(times().ListIndex(), 26);
    times().setListIndex(0);
    left();
    EXPECT_EQ(times().ListIndex(), 0);
    right();
    EXPECT_EQ(times().ListIndex(), 1);
    volts().setListIndex(9);
    upper();
    EXPECT_EQ(volts().ListIndex(), 9);
    lower();
    EXPECT_EQ(volts().ListIndex(), 8);
    volts().setListIndex(0);
    lower();
    EXPECT_EQ(volts().ListIndex(), 0);
    upper();
    EXPECT_EQ(volts().ListIndex(), 1);
    EXPECT_EQ(model->VoltIndexView[0], 1);
}

TEST_F(TimeVolt, WithNoRowSelectedTheArrowsEndQuietly) {
    list().setCurrentRow(-1);
    Q_EMIT control<ArrowPair>("UpDown2").UpClick();
    Q_EMIT control<ArrowPair>("UpDown2").DownClick();
    EXPECT_EQ(model->TimeIndexView[0], model->TimeIndexFile[0]);
}

TEST_F(TimeVolt, ZeroLineOutsideTheNewRangePutsTheBarToItsEndAndLeavesTheMarker) {
    // 11 divisions below the middle; row 5 reaches 10 divisions either way.
    const double low = 3000 + 11 * 6030 / 8.0;
    marker().setTop(low);
    volts().setListIndex(5);
    EXPECT_EQ(bar().Max(), 20);
    EXPECT_EQ(bar().Value(), 20);
    EXPECT_DOUBLE_EQ(marker().Top(), low);
    marker().setTop(3000 - 11 * 6030 / 8.0);
    volts().setListIndex(9);
    EXPECT_EQ(bar().Value(), 0);
}

TEST_F(TimeVolt, DuringTimedAcquisitionTheListMovesAndTheModelDoesNot) {
    model->AutoRun = true;
    const QString row = list().List(0);
    const int shown = model->TimeIndexView[0];
    Q_EMIT control<ArrowPair>("UpDown2").UpClick();
    EXPECT_EQ(times().ListIndex(), shown + 1);
    EXPECT_EQ(model->TimeIndexView[0], shown);
    EXPECT_EQ(list().List(0), row);
}

TEST_F(TimeVolt, OneStepOfTheBarMovesTheMarkerByOneDivision) {
    volts().setListIndex(9); // ten divisions either way
    bar().setValue(9);
    EXPECT_DOUBLE_EQ(marker().Top(), 3000 - 6030 / 8.0);
    bar().setValue(20);
    EXPECT_DOUBLE_EQ(marker().Top(), 3000 + 10 * 6030 / 8.0);
    EXPECT_TRUE(marker().isHidden());
    const auto& standIn = control<MarkerLabel>("ZLabel(0)");
    EXPECT_TRUE(standIn.isVisible());
    EXPECT_DOUBLE_EQ(standIn.Top(), 5865);
    EXPECT_EQ(standIn.caption(), QStringLiteral("1->"));
    EXPECT_EQ(standIn.backColor(), marker().backColor());
    bar().setValue(10);
    EXPECT_TRUE(standIn.isHidden());
    EXPECT_TRUE(marker().isVisible());
}

TEST_F(TimeVolt, ThumbDragShowsTheHeightOfTheZeroLineInDivisionsUntilItEnds) {
    volts().setListIndex(9);
    auto& label = control<QLabel>("CenterPoint");
    bar().setSliderDown(true);
    bar().setSliderPosition(15);
    EXPECT_TRUE(label.isVisible());
    EXPECT_EQ(label.text(), QStringLiteral("ch1  的零点位置格数为-5"));
    bar().setSliderDown(false);
    EXPECT_TRUE(label.isHidden());
}

TEST_F(TimeVolt, BarMovedByCodeWhileItIsNotLiveHasNoEffectAtAll) {
    const_cast<ChannelSelection&>(form->selection()).ScrollLive = false;
    auto& label = control<QLabel>("CenterPoint");
    label.show();
    const double top = marker().Top();
    bar().setValue(bar().Max());
    EXPECT_DOUBLE_EQ(marker().Top(), top);
    EXPECT_TRUE(label.isVisible());
}

} // namespace
} // namespace sixtrace
