// SPDX-License-Identifier: MIT
// Values in a capture that no table or field holds.
#include "capture/bytes.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(SimpleWavTest, ATimeIndexOf28LeavesTheRowTextUnchangedAndLoadsOn) {
    load("V11", {{}});
    load("V11", {{.timeIndex = 28}, {.mark = "CH2"}});
    // Clearing the channel rewrote the row with the values of the load before; rewriting it for the block failed.
    EXPECT_EQ(view->rows[0], u"ch1          500uS          1.00 V       / 1"_s);
    EXPECT_EQ(model->TimeIndex[0], 28);
    EXPECT_EQ(model->TimeIndexView[0], 28);
    EXPECT_TRUE(view->ticks[0]);
    EXPECT_EQ(view->rows[1], u"ch2          500uS          500 mV       / 1"_s);
}

TEST_F(SimpleWavTest, ANegativeTimeIndexLeavesTheRowTextUnchanged) {
    load("V11", {{.timeIndex = -1}});
    EXPECT_EQ(view->rows[0], u"ch1          5  nS          5.00mV       / 1"_s);
    EXPECT_EQ(model->TimeIndexView[0], -1);
}

TEST_F(SimpleWavTest, AVoltIndexOutOfRangeLeavesTheRowTextUnchanged) {
    load("V11", {{.voltIndex = 11}, {.mark = "CH2", .voltIndex = -4}});
    EXPECT_EQ(view->rows[0], u"ch1          5  nS          5.00mV       / 1"_s);
    EXPECT_EQ(view->rows[1], u"ch2          5  nS          5.00mV       / 1"_s);
    EXPECT_EQ(model->VoltIndexView[0], 10);
    EXPECT_EQ(model->VoltIndexView[1], -5);
    // The next load finds both rows without a volt text.
    load("V11", {});
    EXPECT_EQ(view->rows[0], u"ch1          5  nS          5.00mV       / 1"_s);
}

TEST_F(SimpleWavTest, AVoltIndexOf10FailsOnlyWhereTheRowIsCleared) {
    load("V11", {{.voltIndex = 10}});
    EXPECT_EQ(view->rows[0], u"ch1          500uS          5.00 V       / 1"_s);
    load("V11", {});
    EXPECT_EQ(view->rows[0], u"ch1          500uS          5.00 V       / 1"_s);
}

TEST_F(SimpleWavTest, VoltIndexFileOf0GivesViewOfMinus1WhichNoRowMatches) {
    load("V11", {{.voltIndex = 0}});
    EXPECT_EQ(model->VoltIndexFile[0], 0);
    EXPECT_EQ(model->VoltIndexView[0], -1);
    EXPECT_EQ(view->rows[0], u"ch1          5  nS          5.00mV       / 1"_s);
}

TEST_F(SimpleWavTest, IndexesBeyond16BitsLeaveTheDerivedFieldsStale) {
    load("V11", {{}});
    load("V11", {{.timeIndex = 40000, .voltIndex = -40000}});
    EXPECT_EQ(model->TimeIndex[0], 40000);
    EXPECT_EQ(model->TimeIndexFile[0], 15);
    EXPECT_EQ(model->TimeIndexView[0], 15);
    EXPECT_EQ(model->VoltIndex[0], -40000);
    EXPECT_EQ(model->VoltIndexFile[0], 7);
    EXPECT_EQ(model->VoltIndexView[0], 6);
}

TEST_F(SimpleWavTest, ALeastVoltIndexLeavesTheViewStale) {
    load("V11", {{}});
    load("V11", {{.voltIndex = -32768}});
    EXPECT_EQ(model->VoltIndexFile[0], -32768);
    EXPECT_EQ(model->VoltIndexView[0], 6);
}

TEST_F(SimpleWavTest, PeakToPeakThatOverflowsKeepsItsOldValue) {
    load("V11", {{}});
    ASSERT_EQ(model->PeakToPeak[0], 3);
    load("V11", {{.samples = {-32768, 32767, 0, 0}}});
    EXPECT_EQ(model->PeakToPeak[0], 3);
    load("V11", {{.samples = {-1, 32766, 0, 0}}});
    EXPECT_EQ(model->PeakToPeak[0], 32767);
}

TEST_F(SimpleWavTest, AZeroLevelThatOverflowsKeepsItsOldValue) {
    load("V11", {{.zeroLevel = 40}});
    load("V11", {{.zeroLevel = -2147483647 - 1}});
    EXPECT_EQ(model->ZeroLevel[0], 60);
    EXPECT_EQ(view->markers[0].top, Twips(6030.0 * 60 / 200 - 105));
}

TEST_F(SimpleWavTest, AFactorBeyondAllNumbersLeavesTheRow) {
    load("V11", {{.probeExp = 400}});
    EXPECT_EQ(view->rows[0], u"ch1          5  nS          5.00mV       / 1"_s);
    EXPECT_TRUE(view->ticks[0]);
}

} // namespace
} // namespace sixtrace::test
