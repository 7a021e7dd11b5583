// SPDX-License-Identifier: MIT
#include "platform/controls/listcombo.h"
#include "platform/controls/look.h"
#include "platform/controls/ticklist.h"
#include "support/strings.h"

#include <QtTest/QtTest>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

/// A list of six rows that records the events it raises, for example "check 2", "click 2".
struct RecordedList : TickList {
    RecordedList()
        : TickList(nullptr) {
        resize(521, 88);
        for (int row = 0; row < 6; ++row) {
            addRow(u"row %1"_s.arg(row));
        }
        QObject::connect(this, &TickList::ItemCheck, this, [this](int row) { events.append(u"check %1"_s.arg(row)); });
        QObject::connect(this, &TickList::Click, this, [this] { events.append(u"click %1"_s.arg(ListIndex())); });
    }
    QStringList events;
};

class TickListControl : public ::testing::Test {
protected:
    void SetUp() override { applyLook(*qApp); }
};

TEST_F(TickListControl, SettingATickByCodeMakesTheRowCurrentAndRaisesCheckThenClick) {
    RecordedList list;
    list.setSelected(3, true);
    EXPECT_EQ(list.ListIndex(), 3);
    EXPECT_TRUE(list.Selected(3));
    EXPECT_EQ(list.events, (QStringList{u"check 3"_s, u"click 3"_s}));
}

TEST_F(TickListControl, ClearingATickThatIsAlreadyClearStillMovesTheRowAndRaisesBoth) {
    RecordedList list;
    list.setSelected(5, false);
    EXPECT_EQ(list.ListIndex(), 5);
    EXPECT_EQ(list.events, (QStringList{u"check 5"_s, u"click 5"_s}));
}

TEST_F(TickListControl, UsersClickOnTheBoxTicksItAndRaisesCheckThenClick) {
    RecordedList list;
    list.show();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.tickRect(2).center());
    EXPECT_TRUE(list.Selected(2));
    EXPECT_EQ(list.events, (QStringList{u"check 2"_s, u"click 2"_s}));
}

TEST_F(TickListControl, UsersClickOnTheTextSelectsTheRowAndLeavesItsTick) {
    RecordedList list;
    list.show();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(200, list.tickRect(4).center().y()));
    EXPECT_FALSE(list.Selected(4));
    EXPECT_EQ(list.ListIndex(), 4);
    EXPECT_EQ(list.events, QStringList{u"click 4"_s});
}

TEST_F(TickListControl, SpaceTicksTheCurrentRowAndArrowsMoveIt) {
    RecordedList list;
    list.setListIndex(0);
    list.events.clear();
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_TRUE(list.Selected(1));
    EXPECT_EQ(list.events, (QStringList{u"click 1"_s, u"check 1"_s, u"click 1"_s}));
}

TEST_F(TickListControl, SettingTheIndexByCodeRaisesClickEvenOnTheSameRow) {
    RecordedList list;
    list.setListIndex(2);
    list.setListIndex(2);
    EXPECT_EQ(list.events, (QStringList{u"click 2"_s, u"click 2"_s}));
}

TEST_F(TickListControl, RowsThatDoNotExistChangeNothing) {
    RecordedList list;
    list.setSelected(6, true);
    list.setSelected(-1, true);
    list.setListIndex(6);
    list.setList(9, u"x"_s);
    EXPECT_TRUE(list.events.isEmpty());
    EXPECT_EQ(list.List(6), QString());
    EXPECT_FALSE(list.Selected(6));
}

TEST_F(TickListControl, ShowsTextChipAndTickAtTheirPlaces) {
    RecordedList list;
    list.setChipBack(rgb(64, 0, 64));
    list.setChipColour(0, rgb(255, 0, 0));
    list.setSelected(1, false);
    list.setSelected(0, true);
    list.setListIndex(1); // so that row 0 has the plain background
    list.show();
    const QImage shown = list.grab().toImage();
    // The first row begins two pixels below the top of the list and one pixel right of its left edge.
    EXPECT_EQ(shown.pixelColor(1 + 22, 2 + 7), QColor(64, 0, 64));
    EXPECT_EQ(shown.pixelColor(1 + 33, 2 + 6), QColor(255, 0, 0));
    EXPECT_EQ(shown.pixelColor(1 + 43, 2 + 7), QColor(64, 0, 64));
    EXPECT_EQ(shown.pixelColor(1 + 44, 2 + 7), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(1 + 6, 2 + 10), QColor::fromRgb(bench::kAccent));
    EXPECT_EQ(shown.pixelColor(1 + 9, 2 + 14 + 7), QColor::fromRgb(bench::kField)) << "an empty box is white";
    EXPECT_EQ(shown.pixelColor(300, 2 + 14 + 7), QColor::fromRgb(bench::kSelectedRow));
    EXPECT_EQ(list.visualItemRect(list.item(5)).bottom(), 6 * 14 - 1) << "six rows of 14 pixels";
}

} // namespace
} // namespace sixtrace::test
