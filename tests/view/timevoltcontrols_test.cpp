// SPDX-License-Identifier: MIT
#include "view/timevoltcontrols.h"

#include "support/strings.h"
#include "view/cursors.h"
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

class TimeVoltRules : public FlatScope {
protected:
    void SetUp() override { loadFlat(); }
    [[nodiscard]] unsigned frames() const { return scope->screen().changes(); }
};

TEST_F(TimeVoltRules, BothWritersOfARowShowTheFactorAndDifferByOneBlank) {
    load({flat('1', 0, 2)});
    ASSERT_EQ(model->ProbeExp[0], 2);
    chooseTimeRow(rules(), 16);
    EXPECT_EQ(state().rows[0], u"ch1          1  mS          50.0 V        / 100"_s);
    chooseVoltRow(rules(), 7);
    EXPECT_EQ(state().rows[0], u"ch1          1  mS          100  V       / 100"_s);
}

TEST_F(TimeVoltRules, ProbesWithoutAListOfTheirOwnKeepTheOneBefore) {
    load({flat('1', 0, 3)});
    ASSERT_EQ(state().voltList[0], u"5.00 V"_s);
    for (const int probe : {-1, 4}) {
        FillVoltList(state(), probe);
        EXPECT_EQ(state().voltList[0], u"5.00 V"_s);
        EXPECT_EQ(state().voltRow, 6);
    }
    model->ProbeExp[0] = -1;
    chooseTimeRow(rules(), 16);
    EXPECT_TRUE(state().rows[0].startsWith(u"ch1          1  mS          500  V        / 0"_s))
        << state().rows[0].toStdString();
}

TEST_F(TimeVoltRules, ArrowsStepFromTheRowOfTheTraceNotFromTheEntryThatIsShown) {
    model->AutoRun = true;
    stepTimeRow(rules(), Step::Up);
    EXPECT_EQ(state().timeRow, 11);
    stepTimeRow(rules(), Step::Up);
    EXPECT_EQ(state().timeRow, 11);
    stepTimeRow(rules(), Step::Down);
    EXPECT_EQ(state().timeRow, 9);
    stepVoltRow(rules(), Step::Up);
    stepVoltRow(rules(), Step::Up);
    EXPECT_EQ(state().voltRow, 7);
    stepVoltRow(rules(), Step::Down);
    EXPECT_EQ(state().voltRow, 5);
    EXPECT_EQ(model->TimeIndexView[0], 10);
    EXPECT_EQ(model->VoltIndexView[0], 6);
}

TEST_F(TimeVoltRules, ArrowsReachBothEndsAndStopThere) {
    for (int press = 0; press < 40; ++press) {
        stepTimeRow(rules(), Step::Up);
        stepVoltRow(rules(), Step::Up);
    }
    EXPECT_EQ(model->TimeIndexView[0], 27);
    EXPECT_EQ(model->VoltIndexView[0], 9);
    for (int press = 0; press < 40; ++press) {
        stepTimeRow(rules(), Step::Down);
        stepVoltRow(rules(), Step::Down);
    }
    EXPECT_EQ(model->TimeIndexView[0], 0);
    EXPECT_EQ(model->VoltIndexView[0], 0);
}

TEST_F(TimeVoltRules, AnArrowWhoseEntryIsShownAlreadyRaisesNoClick) {
    state().timeRow = 11;
    state().voltRow = 7;
    const unsigned before = frames();
    stepTimeRow(rules(), Step::Up);
    stepVoltRow(rules(), Step::Up);
    EXPECT_EQ(frames(), before);
    EXPECT_EQ(model->TimeIndexView[0], 10);
    EXPECT_EQ(model->VoltIndexView[0], 6);
}

TEST_F(TimeVoltRules, BeforeAChannelIsChosenTheVoltControlsRefuse) {
    state().CurChannel = -1;
    stepVoltRow(rules(), Step::Up);
    EXPECT_EQ(state().voltRow, 6);
    chooseVoltRow(rules(), 2);
    EXPECT_EQ(model->VoltIndexView[0], 6);
    VScroll1_Scroll(rules());
    EXPECT_FALSE(state().CenterPoint);
    stepTimeRow(rules(), Step::Up);
    EXPECT_EQ(model->TimeIndexView[0], 11) << "the time arrows do not need it";
}

TEST_F(TimeVoltRules, WithNoRowSelectedTheControlsChangeNothing) {
    selectRow(rules(), -1);
    ASSERT_EQ(state().CurChannel, 0) << "the bar keeps its channel";
    const unsigned before = frames();
    for (const Step step : {Step::Up, Step::Down}) {
        stepVoltRow(rules(), step);
        stepTimeRow(rules(), step);
    }
    EXPECT_EQ(state().voltRow, 6);
    EXPECT_EQ(state().timeRow, 10);
    chooseTimeRow(rules(), 3);
    chooseVoltRow(rules(), 3);
    EXPECT_EQ(model->TimeIndexView[0], 10);
    EXPECT_EQ(model->VoltIndexView[0], 6);
    EXPECT_EQ(frames(), before);
    showTrueChoices(rules());
    EXPECT_EQ(state().timeRow, 3);
    state().bar.value = 98;
    VScroll1_Scroll(rules());
    EXPECT_EQ(state().CenterPoint, u" 的零点位置格数为2"_s);
}

TEST_F(TimeVoltRules, AListWithoutAChosenEntryChangesNothing) {
    chooseVoltRow(rules(), -1);
    EXPECT_EQ(model->VoltIndexView[0], 6);
}

TEST_F(TimeVoltRules, AMarkerOutsideTheNewRangeStaysAndTheBarGoesToItsEnd) {
    for (const double divisions : {11.0, -11.0}) {
        const double top = 3000 + divisions * 753.75;
        marker(0).top = Twips(top);
        chooseVoltRow(rules(), 5); // ten divisions either way
        EXPECT_EQ(state().bar.maximum, 20);
        EXPECT_EQ(state().bar.value, divisions > 0 ? 20 : 0);
        EXPECT_EQ(marker(0).top, Twips(top));
        chooseVoltRow(rules(), 0);
        EXPECT_EQ(state().bar.maximum, 800);
        EXPECT_EQ(state().bar.value, divisions > 0 ? 411 : 389);
        EXPECT_EQ(marker(0).top, Twips(top));
    }
}

TEST_F(TimeVoltRules, ABarBetweenTwoValuesTakesTheEvenOne) {
    for (const auto& [halves, value] : {std::pair{1, 10}, {3, 12}, {5, 12}, {-1, 10}, {-3, 8}}) {
        marker(0).top = Twips(3000 + halves * 376.875);
        chooseVoltRow(rules(), 9);
        EXPECT_EQ(state().bar.value, value) << halves;
    }
}

TEST_F(TimeVoltRules, ANewVoltRangeIsDrawnAndReadOut) {
    state().cursorChoice = CursorType::Voltage;
    Combo3_Click(rules());
    const unsigned before = frames();
    chooseVoltRow(rules(), 7); // 1 V a division: 20 mV a row
    EXPECT_EQ(frames(), before + 1);
    EXPECT_EQ(state().voltages.values[0], number("2.00"));
    EXPECT_EQ(state().voltages.units[0], u" V"_s);
    EXPECT_EQ(state().voltages.difference, number("4.00"));
}

TEST_F(TimeVoltRules, ANewTimeBaseIsDrawnAndReadOut) {
    state().cursorChoice = CursorType::Time;
    Combo3_Click(rules());
    const unsigned before = frames();
    chooseTimeRow(rules(), 13);
    EXPECT_EQ(frames(), before + 1);
    // Ten times the time a division: the trace begins at column 270, a column holds ten samples of 2.5 microseconds.
    EXPECT_EQ(state().times.values[0], number("-2250.00"));
    EXPECT_EQ(state().times.difference, number("6,000.00"));
}

TEST_F(TimeVoltRules, TheHeightOfTheZeroLineIsShownInChineseInBothLanguages) {
    state().bar.value = 105;
    for (const bool english : {false, true}) {
        model->LanguageId = english ? 1 : 0;
        List1_Click(rules());
        state().bar.value = 105;
        VScroll1_Scroll(rules());
        EXPECT_EQ(state().CenterPoint, u"ch1  的零点位置格数为-5"_s);
        endScroll(state());
        EXPECT_FALSE(state().CenterPoint);
    }
}

TEST_F(TimeVoltRules, ABarOfAChannelWithoutDataShowsAndMovesNothing) {
    selectRow(rules(), 1);
    VScroll1_Scroll(rules());
    EXPECT_FALSE(state().CenterPoint);
    const unsigned before = frames();
    state().CenterPoint = u"shown"_s;
    state().bar.value = 3;
    VScroll1_Change(rules());
    EXPECT_FALSE(state().CenterPoint);
    EXPECT_EQ(marker(1).top, Twips(3000));
    EXPECT_EQ(frames(), before);
}

TEST_F(TimeVoltRules, AStepOfTheBarIsADivision) {
    state().cursorChoice = CursorType::Voltage;
    Combo3_Click(rules());
    state().bar.value = 101;
    VScroll1_Change(rules());
    EXPECT_EQ(marker(0).top, Twips(3753.75));
    EXPECT_TRUE(marker(0).shown);
    EXPECT_EQ(model->ChannelYPos[0], 256);
    EXPECT_EQ(state().voltages.values[0], number("1560.00"));
    state().bar.value = 104;
    VScroll1_Change(rules());
    EXPECT_EQ(marker(0).top, Twips(6015));
    EXPECT_FALSE(marker(0).shown);
    EXPECT_TRUE(marker(0).standInShown);
    EXPECT_EQ(marker(0).standInTop, Twips(5865));
    EXPECT_EQ(marker(0).standInBack, model->LineColor[0]);
}

TEST_F(TimeVoltRules, ABarThatIsNotLiveHasNoEffectAtAll) {
    state().ScrollLive = false;
    state().CenterPoint = u"shown"_s;
    state().bar.value = 0;
    VScroll1_Change(rules());
    EXPECT_EQ(state().CenterPoint, u"shown"_s);
    EXPECT_EQ(marker(0).top, Twips(2910));
}

TEST_F(TimeVoltRules, DuringTimedAcquisitionTheListsMoveAndAfterItTheyShowTheModelAgain) {
    model->AutoRun = true;
    const QString row = state().rows[0];
    const unsigned before = frames();
    chooseTimeRow(rules(), 3);
    chooseVoltRow(rules(), 2);
    state().cursorChoice = CursorType::Both;
    Combo3_Click(rules());
    EXPECT_EQ(state().timeRow, 3);
    EXPECT_EQ(state().voltRow, 2);
    EXPECT_EQ(state().cursorsShown, CursorType::None);
    EXPECT_EQ(model->TimeIndexView[0], 10);
    EXPECT_EQ(model->VoltIndexView[0], 6);
    EXPECT_EQ(state().bar.maximum, 200);
    EXPECT_EQ(state().rows[0], row);
    EXPECT_EQ(frames(), before);
    showTrueChoices(rules());
    EXPECT_EQ(state().timeRow, 10);
    EXPECT_EQ(state().voltRow, 6);
    EXPECT_EQ(state().cursorChoice, CursorType::None);
}

TEST_F(TimeVoltRules, RowsThatTheListsDoNotHaveLeaveTheirEntries) {
    model->AutoRun = true;
    chooseTimeRow(rules(), 3);
    chooseVoltRow(rules(), 2);
    for (const auto& [time, volts] : {std::pair{28, 10}, {-1, -1}}) {
        model->TimeIndexView[0] = static_cast<std::int16_t>(time);
        model->VoltIndexView[0] = static_cast<std::int16_t>(volts);
        showTrueChoices(rules());
        EXPECT_EQ(state().timeRow, 3);
        EXPECT_EQ(state().voltRow, 2);
    }
    model->TimeIndexView[0] = 27;
    model->VoltIndexView[0] = 9;
    showTrueChoices(rules());
    EXPECT_EQ(state().timeRow, 27);
    EXPECT_EQ(state().voltRow, 9);
    model->TimeIndexView[0] = 0;
    model->VoltIndexView[0] = 0;
    showTrueChoices(rules());
    EXPECT_EQ(state().timeRow, 0);
    EXPECT_EQ(state().voltRow, 0);
}

} // namespace
} // namespace sixtrace::test
