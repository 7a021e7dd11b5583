// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "support/strings.h"
#include "view/flatscope.h"

namespace sixtrace::test {
namespace {

class CursorRules : public FlatScope {
protected:
    void SetUp() override { loadFlat(); }
    void show(CursorType type) {
        state().cursorChoice = type;
        Combo3_Click(rules());
    }
};

TEST_F(CursorRules, EachTypeReadsItsOwnPair) {
    show(CursorType::None);
    EXPECT_TRUE(state().voltages.values[0].isEmpty());
    EXPECT_TRUE(state().times.values[0].isEmpty());
    show(CursorType::Voltage);
    EXPECT_EQ(state().cursorsShown, CursorType::Voltage);
    EXPECT_EQ(state().voltages.values, (std::array{number("1000.00"), number("-1000.00")}));
    EXPECT_EQ(state().voltages.units, (std::array{u"mV"_s, u"mV"_s}));
    EXPECT_EQ(state().voltages.difference, number("2,000.00"));
    EXPECT_TRUE(state().times.values[0].isEmpty());
    show(CursorType::Time);
    EXPECT_EQ(state().times.values, (std::array{number("450.00"), number("1050.00")}));
    EXPECT_EQ(state().times.units, (std::array{u"uS"_s, u"uS"_s}));
    EXPECT_EQ(state().times.difference, number("600.00"));
}

TEST_F(CursorRules, Row16IsInMicrosecondsAfterTheChoiceAndInMillisecondsAfterwards) {
    model->TimeIndex[0] = 16;
    model->TimeIndexView[0] = 16;
    show(CursorType::Time);
    EXPECT_EQ(state().times.units[0], u"uS"_s);
    printTime(*model, state());
    EXPECT_EQ(state().times.units[1], u"mS"_s);
    EXPECT_EQ(state().times.values[0], number("0.45"));
}

TEST_F(CursorRules, ReadoutsNeedTheirTypeARowAndForTimesACapture) {
    show(CursorType::Both);
    state().cursors = placesAt(120, 280, 200, 400);
    const CursorTexts voltages = state().voltages;
    const CursorTexts times = state().times;
    const auto unchanged = [&] {
        UpdateVoltCursors(*model, state());
        printTime(*model, state());
        return state().voltages.values == voltages.values && state().times.values == times.values;
    };
    state().cursorChoice = CursorType::None;
    EXPECT_TRUE(unchanged());
    state().cursorChoice = CursorType::Both;
    state().selectedRow = -1;
    EXPECT_TRUE(unchanged());
    state().selectedRow = 0;
    model->ChannelPresent[0] = 0;
    printTime(*model, state());
    EXPECT_EQ(state().times.values, times.values);
    model->ChannelPresent[0] = 1;
    EXPECT_FALSE(unchanged());
    EXPECT_EQ(state().voltages.difference, number("1,600.00"));
    EXPECT_EQ(state().times.difference, number("500.00"));
}

TEST_F(CursorRules, TimesThatCannotBeComputedKeepTheirTexts) {
    show(CursorType::Time);
    model->SampleCount[0] = 0;
    state().cursors.time[0] = ScreenX(200);
    printTime(*model, state());
    EXPECT_EQ(state().times.values[0], number("450.00"));
}

TEST_F(CursorRules, HalfAHundredthIsRoundedAwayFromZero) {
    // One and three columns of 0.125 microseconds: 0.125 and 0.375.
    show(CursorType::Time);
    model->SampleInterval[0] = 0.125F;
    state().cursors.time = {ScreenX(1), ScreenX(3)};
    printTime(*model, state());
    EXPECT_EQ(state().times.values, (std::array{number("0.13"), number("0.38")}));
}

TEST_F(CursorRules, AMovedLineUpdatesItsOwnReadoutOnly) {
    show(CursorType::Both);
    moveVoltageCursor(*model, state(), 1, ScreenY(250));
    EXPECT_EQ(state().voltages.values, (std::array{number("1000.00"), number("-500.00")}));
    EXPECT_TRUE(state().voltages.difference.isEmpty()) << "it is computed later";
    refreshDifference(state().voltages);
    EXPECT_EQ(state().voltages.difference, number("1,500.00"));
    moveVoltageCursor(*model, state(), 1, ScreenY(250));
    EXPECT_EQ(state().voltages.difference, number("1,500.00"));
    moveTimeCursor(state(), 1, ScreenX(500));
    EXPECT_EQ(state().cursors.time, (std::array{ScreenX(180), ScreenX(500)}));
    EXPECT_EQ(state().times.values[1], number("1050.00"));
}

} // namespace
} // namespace sixtrace::test
