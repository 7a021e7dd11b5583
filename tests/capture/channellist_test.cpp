// SPDX-License-Identifier: MIT
#include "capture/channellist.h"

#include "capture/bytes.h"
#include "capture/zeromarkers.h"

#include <cmath>

namespace sixtrace::test {
namespace {

class ChannelRules : public CaptureTest {
protected:
    /// ch1 three quarters up the screen: its marker stands at 6030 x 75 / 200 - 105. A has no data.
    void SetUp() override { load("V11", {{.zeroLevel = 25}}); }
};

TEST_F(ChannelRules, AtTheStartTheBarHasTheRangeOfRow0AndStandsInItsMiddle) {
    view->bar = {};
    model->ChannelPresent.fill(0); // as before any load
    beginStart(view->scope());
    EXPECT_EQ(view->bar.maximum, 800);
    EXPECT_EQ(view->bar.value, 400);
    EXPECT_EQ(view->selectedRow, 0) << "the last tick that is cleared";
    for (int channel = 0; channel < kChannels; ++channel) {
        EXPECT_FALSE(view->ticks[channel]);
        EXPECT_FALSE(view->markers[channel].shown);
    }
}

TEST_F(ChannelRules, AfterTheStartNoChannelIsChosenAndTheBarIsLive) {
    view->ScrollLive = false;
    const int before = view->frames;
    endStart(view->scope());
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_EQ(view->CurChannel, -1);
    EXPECT_TRUE(view->ScrollLive);
}

TEST_F(ChannelRules, ASelectedChannelGivesTheBarItsRangeAndItsMarkersPlace) {
    view->bar = {};
    selectRow(view->scope(), 0);
    EXPECT_EQ(view->bar.maximum, 200);
    EXPECT_EQ(view->bar.value, 99) << "(2156.25 - 3000) / 6030 x 8 is 1.12 above the middle";
    EXPECT_EQ(view->CurChannel, 0);
    EXPECT_EQ(view->timeRow, 15);
    EXPECT_EQ(view->voltRow, 6);
    EXPECT_EQ(view->markers[0].back, model->LineColor[0]);
}

TEST_F(ChannelRules, ASelectedChannelWithoutDataLeavesTheBar) {
    view->bar = {40, 7};
    selectRow(view->scope(), 2);
    EXPECT_EQ(view->bar.maximum, 40);
    EXPECT_EQ(view->bar.value, 7);
    EXPECT_EQ(view->CurChannel, 2);
    EXPECT_TRUE(view->measurements.frequency.isEmpty());
}

TEST_F(ChannelRules, RowsThatTheListDoesNotHaveCannotBeSelected) {
    selectRow(view->scope(), 5);
    EXPECT_EQ(view->CurChannel, 5);
    selectRow(view->scope(), 6);
    EXPECT_EQ(view->selectedRow, 5);
    view->selectedRow = 6;
    List1_Click(view->scope());
    EXPECT_EQ(view->CurChannel, 5);
    selectRow(view->scope(), -1);
    EXPECT_EQ(view->selectedRow, -1);
    EXPECT_EQ(view->CurChannel, 5);
}

TEST_F(ChannelRules, ViewRowsBeyondTheListsLeaveTheirEntries) {
    selectRow(view->scope(), 0);
    for (const auto& [time, volts] : {std::pair{28, 10}, {-1, -1}}) {
        model->TimeIndexView[0] = static_cast<std::int16_t>(time);
        model->VoltIndexView[0] = static_cast<std::int16_t>(volts);
        selectRow(view->scope(), 0);
        EXPECT_EQ(view->timeRow, 15);
        EXPECT_EQ(view->voltRow, 6);
        EXPECT_EQ(view->bar.maximum, 200);
    }
    model->TimeIndexView[0] = 27;
    model->VoltIndexView[0] = 9;
    selectRow(view->scope(), 0);
    EXPECT_EQ(view->timeRow, 27);
    EXPECT_EQ(view->voltRow, 9);
    EXPECT_EQ(view->bar.maximum, 20);
    model->TimeIndexView[0] = 0;
    model->VoltIndexView[0] = 0;
    selectRow(view->scope(), 0);
    EXPECT_EQ(view->timeRow, 0);
    EXPECT_EQ(view->voltRow, 0);
    EXPECT_EQ(view->bar.maximum, 800);
}

TEST_F(ChannelRules, ATickDrawsAFrameUnlessTimedAcquisitionWillDoSo) {
    const int before = view->frames;
    setTick(view->scope(), 4, true);
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_TRUE(view->markers[4].shown);
    EXPECT_EQ(view->CurChannel, 4);
    model->AutoRun = true;
    setTick(view->scope(), 4, false);
    EXPECT_EQ(view->frames, before + 1);
    EXPECT_FALSE(view->markers[4].shown);
}

TEST_F(ChannelRules, OnlyMarkersBeyondTheStandByPlacesAreReplaced) {
    for (const auto& [top, standIn] : {std::pair{-75.0, 0.0}, {-75.5, -75.0}, {5865.0, 0.0}, {5865.5, 5865.0}}) {
        ZeroMarker& marker = view->markers[1];
        marker.top = Twips(top);
        marker.back = 7;
        MarkerClamp(*view, 1);
        EXPECT_EQ(marker.standInShown, standIn != 0) << top;
        EXPECT_EQ(marker.shown, standIn == 0) << top;
        if (standIn != 0) {
            EXPECT_EQ(marker.standInTop, Twips(standIn));
            EXPECT_EQ(marker.standInBack, 7U);
        }
    }
    MarkerClamp(*view, -1);
    MarkerClamp(*view, kChannels);
}

TEST_F(ChannelRules, AMarkerWithoutAPlaceLeavesTheBar) {
    view->bar = {200, 42};
    view->markers[0].top = Twips(std::nan(""));
    placeBarAtMarker(*view, 0);
    EXPECT_EQ(view->bar.value, 42);
}

} // namespace
} // namespace sixtrace::test
