// SPDX-License-Identifier: MIT
#include "shell/frmcomfixture.h"

#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "platform/controls/arrowpair.h"
#include "platform/controls/labels.h"
#include "platform/controls/listcombo.h"
#include "platform/controls/markerlabel.h"
#include "platform/controls/picturebox.h"
#include "platform/controls/positionbar.h"
#include "platform/controls/ticklist.h"
#include "support/strings.h"

#include <QLabel>
#include <QTest>
#include <QWheelEvent>

namespace sixtrace::test {
namespace {

/// A window with a six-trace capture, ch1 selected: 500 uS and 500 mV per division at a probe factor of 1.
class TimeVolt : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        load();
        form->show();
        write(u"six.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"six"_s, 1)));
        dialogs.files.emplace_back(FileChoice{path(u"six.bin"_s), 1});
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
    EXPECT_EQ(list().List(0), u"ch1          1  mS          500 mV        / 1"_s);
    EXPECT_NE(screen(), before);
}

TEST_F(TimeVolt, ChosenVoltRangeRewritesTheRowWithSevenBlanksAndSetsTheBarsRange) {
    volts().setListIndex(7);
    EXPECT_EQ(model->VoltIndexView[0], 7);
    EXPECT_EQ(list().List(0), u"ch1          500uS          1.00 V       / 1"_s);
    EXPECT_EQ(bar().Max(), 100);
    EXPECT_TRUE(form->state().ScrollLive);
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

TEST_F(TimeVolt, WithNoRowSelectedTheListsClicksThemselvesDoNothing) {
    control<TickList>("List1").setCurrentRow(-1);
    const auto times = model->TimeIndexView;
    const auto volts = model->VoltIndexView;
    control<ListCombo>("Combo1").setListIndex(20);
    control<ListCombo>("Combo2").setListIndex(2);
    EXPECT_EQ(model->TimeIndexView, times);
    EXPECT_EQ(model->VoltIndexView, volts);
}

TEST_F(TimeVolt, ZeroLineOutsideTheNewRangePutsTheBarToItsEndAndLeavesTheMarker) {
    // 11 divisions below the middle; row 5 reaches 10 divisions either way.
    const double low = 3000 + 11 * 6030 / 8.0;
    putMarker(0, low);
    volts().setListIndex(5);
    EXPECT_EQ(bar().Max(), 20);
    EXPECT_EQ(bar().Value(), 20);
    EXPECT_DOUBLE_EQ(marker().Top().number(), low);
    putMarker(0, 3000 - 11 * 6030 / 8.0);
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
    EXPECT_DOUBLE_EQ(marker().Top().number(), 3000 - 6030 / 8.0);
    bar().setValue(20);
    EXPECT_DOUBLE_EQ(marker().Top().number(), 3000 + 10 * 6030 / 8.0);
    EXPECT_TRUE(marker().isHidden());
    const auto& standIn = control<MarkerLabel>("ZLabel(0)");
    EXPECT_TRUE(standIn.isVisible());
    EXPECT_DOUBLE_EQ(standIn.Top().number(), 5865);
    EXPECT_EQ(standIn.caption(), u"1->"_s);
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
    EXPECT_EQ(label.text(), u"ch1  的零点位置格数为-5"_s);
    bar().setSliderDown(false);
    EXPECT_TRUE(label.isHidden());
}

TEST_F(TimeVolt, BarMovedByCodeWhileItIsNotLiveHasNoEffectAtAll) {
    form->state().ScrollLive = false;
    form->state().CenterPoint = u"shown"_s;
    const double top = marker().Top().number();
    bar().setValue(bar().Max());
    EXPECT_DOUBLE_EQ(marker().Top().number(), top);
    EXPECT_TRUE(control<QLabel>("CenterPoint").isVisible());
}

TEST_F(TimeVolt, BeforeAChannelIsChosenTheVoltControlsDoNothingWhileTheTimeArrowsStep) {
    form.reset();
    model = std::make_unique<publicM>();
    load();
    ASSERT_EQ(form->state().CurChannel, -1);
    const QString row = list().List(0);
    Q_EMIT control<ArrowPair>("UpDown1").UpClick();
    EXPECT_EQ(volts().ListIndex(), 0);
    volts().setListIndex(3);
    Q_EMIT control<ArrowPair>("UpDown1").DownClick();
    EXPECT_EQ(volts().ListIndex(), 3);
    EXPECT_EQ(model->VoltIndexView[0], 0);
    EXPECT_EQ(list().List(0), row);
    EXPECT_EQ(bar().Max(), 800);
    Q_EMIT control<ArrowPair>("UpDown2").UpClick();
    EXPECT_EQ(model->TimeIndexView[0], 1);
}

TEST_F(TimeVolt, TheBarOfAChannelWithoutDataShowsNoHeightAndMovesNoMarker) {
    model->ChannelPresent[0] = 0;
    auto& label = control<QLabel>("CenterPoint");
    const double top = marker().Top().number();
    bar().setSliderDown(true);
    bar().setSliderPosition(bar().Value() + 2);
    EXPECT_TRUE(label.isHidden());
    label.show();
    bar().setSliderDown(false);
    EXPECT_TRUE(label.isHidden()) << "a change takes it away all the same";
    EXPECT_DOUBLE_EQ(marker().Top().number(), top);
}

TEST_F(TimeVolt, DuringTimedAcquisitionTheVoltArrowsMoveTheListAndNeitherTheModelNorTheBar) {
    model->AutoRun = true;
    const int shown = model->VoltIndexView[0];
    const QString row = list().List(0);
    const int range = bar().Max();
    Q_EMIT control<ArrowPair>("UpDown1").UpClick();
    EXPECT_EQ(volts().ListIndex(), shown + 1);
    EXPECT_EQ(model->VoltIndexView[0], shown);
    EXPECT_EQ(list().List(0), row);
    EXPECT_EQ(bar().Max(), range);
}

TEST_F(TimeVolt, AnotherChannelBringsTheBarItsOwnRange) {
    volts().setListIndex(9); // ten divisions either way
    ASSERT_EQ(bar().Max(), 20);
    putMarker(1, 3000 - 2 * 6030 / 8.0);
    list().setListIndex(1);
    ASSERT_EQ(model->VoltIndexView[1], 4); // twenty divisions either way
    EXPECT_EQ(bar().Max(), 40);
    EXPECT_EQ(bar().Value(), 18) << "two divisions above the middle";
    list().setListIndex(0);
    EXPECT_EQ(bar().Max(), 20);
}

TEST_F(TimeVolt, ALoadBringsTheBarTheRangeOfTheChannelThatItLeavesSelected) {
    form.reset();
    model = std::make_unique<publicM>();
    load();
    EXPECT_EQ(bar().Max(), 800) << "before any load that of row 0";
    EXPECT_EQ(bar().Value(), 400);
    dialogs.files.emplace_back(FileChoice{path(u"six.bin"_s), 1});
    item("mnuOpen").trigger();
    ASSERT_EQ(list().ListIndex(), 5);
    EXPECT_EQ(bar().Max(), 2 * model->VoltRange[static_cast<std::size_t>(model->VoltIndexView[5])]);
}

TEST_F(TimeVolt, AThumbThatIsPressedAndLetGoMovesNothing) {
    putMarker(0, 2910); // between two values of the bar
    const QImage before = screen();
    const QPoint grip = bar().thumbRect().center();
    QTest::mousePress(&bar(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseRelease(&bar(), Qt::LeftButton, Qt::NoModifier, grip);
    EXPECT_EQ(marker().Top().number(), 2910);
    EXPECT_EQ(screen(), before);
    EXPECT_TRUE(control<QLabel>("CenterPoint").isHidden());
}

TEST_F(TimeVolt, AThumbThatComesBackTakesTheHeightAwayAndMovesNothing) {
    volts().setListIndex(9);
    putMarker(0, 2910);
    const QPoint grip = bar().thumbRect().center();
    QTest::mousePress(&bar(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(&bar(), grip + QPoint(0, 60));
    EXPECT_TRUE(control<QLabel>("CenterPoint").isVisible());
    QTest::mouseMove(&bar(), grip);
    QTest::mouseRelease(&bar(), Qt::LeftButton, Qt::NoModifier, grip);
    EXPECT_TRUE(control<QLabel>("CenterPoint").isHidden());
    EXPECT_EQ(marker().Top().number(), 2910);
}

TEST_F(TimeVolt, WhatWasTurnedWithoutEffectDuringTimedAcquisitionShowsWhatIsSoWhenItStops) {
    auto& cursors = control<ListCombo>("Combo3");
    item("mnuautoget").trigger();
    const int time = model->TimeIndexView[0];
    const int volt = model->VoltIndexView[0];
    QTest::keyClick(&times(), Qt::Key_Down);
    QTest::keyClick(&volts(), Qt::Key_Down);
    QTest::keyClick(&cursors, Qt::Key_Down);
    EXPECT_EQ(times().ListIndex(), time + 1);
    EXPECT_EQ(volts().ListIndex(), volt + 1);
    EXPECT_EQ(cursors.ListIndex(), 1);
    item("mnustop").trigger();
    EXPECT_EQ(times().ListIndex(), time);
    EXPECT_EQ(volts().ListIndex(), volt);
    EXPECT_EQ(cursors.ListIndex(), 0);
    EXPECT_FALSE(control<ReadoutLabel>("LabY1").isVisible());
}

TEST_F(TimeVolt, AWheelOverTheBarMovesTheTraceOnlyWhileTheBarHasTheKeys) {
    QApplication::setActiveWindow(form.get());
    list().setFocus();
    const double top = marker().Top().number();
    const auto turn = [this] {
        const QPointF at = bar().rect().center();
        QWheelEvent event(at, bar().mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&bar(), &event);
    };
    turn();
    EXPECT_EQ(marker().Top().number(), top);
    bar().setFocus();
    turn();
    EXPECT_NE(marker().Top().number(), top);
}

} // namespace
} // namespace sixtrace::test
