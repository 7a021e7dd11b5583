// SPDX-License-Identifier: MIT
// The keys that users know from other windows: shortcuts, arrow keys, Tab.
#include "platform/controls/captions.h"
#include "platform/controls/toolbar.h"
#include "shell/everydaywindow.h"
#include "support/strings.h"

#include <QKeyEvent>
#include <QMenuBar>

namespace sixtrace::test {
namespace {

using Shortcuts = EverydayWindow;

TEST_F(Shortcuts, StandardKeysStandOnTheMenuItems) {
    load();
    const auto keys = [this](const char* name) { return item(name).shortcut().toString(QKeySequence::PortableText); };
    EXPECT_EQ(keys("mnuOpen"), u"Ctrl+O"_s);
    EXPECT_EQ(keys("mnuPrint"), u"Ctrl+P"_s);
    EXPECT_EQ(keys("mnuExit"), u"Ctrl+Q"_s);
    EXPECT_EQ(keys("mnuContent"), u"F1"_s);
    EXPECT_EQ(keys("mnuAcquire"), u"F5"_s);
}

TEST_F(Shortcuts, NoTwoItemsShareAKey) {
    load();
    QStringList all;
    for (const QAction* action : form->menuBar()->findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            all.append(action->shortcut().toString(QKeySequence::PortableText));
        }
    }
    EXPECT_GE(all.size(), 5);
    EXPECT_EQ(all.removeDuplicates(), 0);
}

TEST_F(Shortcuts, KeysRunTheCommandsOfTheirItems) {
    openFlatActive();
    const auto asked = dialogs.fileRequests.size();
    QTest::keyClick(form.get(), Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(dialogs.fileRequests.size(), asked + 1);
    QTest::keyClick(form.get(), Qt::Key_G, Qt::ControlModifier);
    EXPECT_FALSE(item("mnuGraticule").isChecked());
    QTest::keyClick(form.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(ends, 1);
}

TEST_F(Shortcuts, AHiddenItemHasNoneAndStaysOutOfReach) {
    openFlatActive();
    const QImage before = screenImage();
    QTest::keyClick(form.get(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(screenImage(), before);
    for (const QAction* action : form->menuBar()->findChildren<QAction*>()) {
        EXPECT_TRUE(action->isVisible() || action->shortcut().isEmpty()) << action->objectName().toStdString();
    }
}

TEST_F(Shortcuts, TimedAcquisitionGreysTheKeyWithItsItem) {
    openFlatActive();
    item("mnuAcquire").setEnabled(false);
    QTest::keyClick(form.get(), Qt::Key_F5);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

using CursorLineKeys = EverydayWindow;

TEST_F(CursorLineKeys, UpAndDownMoveAFocusedVoltageCursorByOneUnitAndItsReadoutFollows) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    // 0.5 V are 50 units: 10 mV a unit, 100 units above the zero line at 200.
    ASSERT_EQ(caption("LabY1"), number("1000.00"));
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 99);
    EXPECT_EQ(line("Line1(0)").Y2(), 99);
    EXPECT_EQ(caption("LabY1"), number("1010.00"));
    EXPECT_EQ(caption("LabDy"), number("2,010.00"));
    key(handle("Line1Keys(0)"), Qt::Key_Down);
    key(handle("Line1Keys(0)"), Qt::Key_Down);
    EXPECT_EQ(line("Line1(0)").Y1(), 101);
    EXPECT_EQ(line("Line1(1)").Y1(), 300);
    EXPECT_EQ(caption("LabY1"), number("990.00"));
}

TEST_F(CursorLineKeys, LeftAndRightMoveAFocusedTimeCursorByOneUnitAndItsReadoutDoesNotLag) {
    openFlatActive();
    chooseCursors(CursorType::Time);
    // 2.5 microseconds a sample and a unit.
    ASSERT_EQ(caption("LabX1"), number("450.00"));
    key(handle("Line2Keys(0)"), Qt::Key_Right);
    EXPECT_EQ(line("Line2(0)").X1(), 181);
    EXPECT_EQ(caption("LabX1"), number("452.50"));
    EXPECT_EQ(caption("LabDx"), number("597.50"));
    key(handle("Line2Keys(1)"), Qt::Key_Left);
    EXPECT_EQ(line("Line2(1)").X1(), 419);
    EXPECT_EQ(caption("LabDx"), number("595.00"));
}

TEST_F(CursorLineKeys, WithBothTypesAndAVoltageCursorAtTheTopTheTimeCursorsMoveAllTheSame) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    for (const double row : {0.0, 1.0}) {
        form->state().cursors.voltage[0] = ScreenY(row);
        form->showState();
        const double place = line("Line2(0)").X1();
        key(handle("Line2Keys(0)"), Qt::Key_Right);
        EXPECT_EQ(line("Line2(0)").X1(), place + 1) << row;
    }
}

TEST_F(CursorLineKeys, KeysAcrossALineDoNothing) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    key(handle("Line1Keys(0)"), Qt::Key_Left);
    key(handle("Line2Keys(0)"), Qt::Key_Down);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    EXPECT_EQ(line("Line2(0)").X1(), 180);
}

TEST_F(CursorLineKeys, TheLineThatTheMouseHoldsFollowsTheKeysAndThenTheMouseAgain) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    press(screen(), 50, 100);
    ASSERT_EQ(form->focusWidget(), &handle("Line1Keys(0)"));
    QTest::keyClick(form->focusWidget(), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 99);
    drag(screen(), 50, 120);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
    release(screen(), 50, 120);
    drag(screen(), 50, 150);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
}

TEST_F(CursorLineKeys, ALineStaysOnTheScreen) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    dragFromTo(screen(), {50, 100}, {50, 0});
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 0);
    dragFromTo(screen(), {420, 50}, {599, 50});
    key(handle("Line2Keys(1)"), Qt::Key_Right);
    EXPECT_EQ(line("Line2(1)").X1(), 599);
}

TEST_F(CursorLineKeys, DuringTimedAcquisitionTheyRefuse) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    model->AutoRun = true;
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
}

TEST_F(CursorLineKeys, OnATraceDragTheyHaveNoEffect) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    press(screen(), 50, 200);
    key(handle("Line1Keys(0)"), Qt::Key_Up);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    drag(screen(), 60, 200);
    EXPECT_EQ(model->ChannelXShift[0], 10);
    release(screen(), 60, 200);
}

TEST_F(CursorLineKeys, AHandleIsThereOnlyWhileItsLineIsShownAndTheMouseGoesThroughIt) {
    openFlatActive();
    EXPECT_FALSE(handle("Line1Keys(0)").isVisible());
    chooseCursors(CursorType::Voltage);
    EXPECT_TRUE(handle("Line1Keys(0)").isVisible());
    EXPECT_FALSE(handle("Line2Keys(0)").isVisible());
    const QPoint onLine = screen().mapTo(form.get(), QPoint(50, 100));
    EXPECT_EQ(form->childAt(onLine), &screen());
}

TEST_F(CursorLineKeys, TheFocusShowsBesideTheLineAndLeavesTheLineItself) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    const auto at = [this](int y) { return screen().grab().toImage().pixelColor(33, y); };
    const QColor lineColour = at(100);
    handle("Line1Keys(0)").setFocus(Qt::TabFocusReason);
    const QColor accent = QColor::fromRgb(bench::kAccent);
    for (const int y : {98, 99, 101, 102}) {
        EXPECT_EQ(at(y), accent) << y;
    }
    EXPECT_EQ(at(100), lineColour);
    list().setFocus();
    EXPECT_NE(at(99), accent);
}

using ZeroMarkerKeys = EverydayWindow;

TEST_F(ZeroMarkerKeys, UpAndDownMoveAFocusedMarkerByOneScreenUnitWithItsTraceAndBar) {
    openFlatActive();
    chooseCursors(CursorType::Voltage);
    // A screen unit is 6030 / 400 = 15.075 twips of the strip. A stands 50 units below the middle.
    const double top = marker(2).Top().number();
    key(marker(2), Qt::Key_Up);
    EXPECT_DOUBLE_EQ(marker(2).Top().number(), top - 15.075);
    EXPECT_EQ(list().ListIndex(), 2);
    EXPECT_NEAR(model->ChannelYPos[2], 249, 0.01);
    EXPECT_EQ(model->PlotY(2, 300), 249);
    EXPECT_FALSE(marker(2).hasBorder());
    // 249 - 100 units of 10 mV.
    EXPECT_EQ(caption("LabY1"), number("1490.00"));
    key(marker(2), Qt::Key_Down);
    EXPECT_DOUBLE_EQ(marker(2).Top().number(), top);
    EXPECT_EQ(model->PlotY(2, 300), 250);
}

TEST_F(ZeroMarkerKeys, AMarkerIsNotMovedBeyondTheStandByPositions) {
    openFlatActive();
    putMarker(0, -70);
    key(marker(0), Qt::Key_Up);
    EXPECT_EQ(marker(0).Top().number(), -70);
    putMarker(0, 5860);
    key(marker(0), Qt::Key_Down);
    EXPECT_EQ(marker(0).Top().number(), 5860);
    EXPECT_TRUE(marker(0).isVisible());
    EXPECT_FALSE(standIn(0).isVisible());
}

TEST_F(ZeroMarkerKeys, AKeyOnATickedChannelWithoutDataLeavesNothingPressedAndTheScreenAsItIs) {
    openFlatActive();
    list().setSelected(5, true);
    const QImage before = screenImage();
    key(marker(5), Qt::Key_Down);
    EXPECT_DOUBLE_EQ(marker(5).Top().number(), 3000 + 15.075);
    EXPECT_FALSE(marker(5).hasBorder());
    EXPECT_EQ(screen().picture().drawMode, DrawMode::CopyPen);
    EXPECT_EQ(screenImage(), before);
}

TEST_F(ZeroMarkerKeys, AMarkerThatHasLeftTheStripHandsTheKeysToTheBarOfItsChannel) {
    openFlatActive();
    marker(2).setFocus();
    putMarker(2, 5875);
    press(marker(2), 12, 7);
    release(marker(2), 12, 7);
    ASSERT_TRUE(marker(2).isHidden());
    auto& bar = control<PositionBar>("VScroll1");
    EXPECT_TRUE(bar.hasFocus());
    const double other = marker(0).Top().number();
    key(bar, Qt::Key_Up);
    EXPECT_TRUE(marker(2).isVisible()) << "the next key brings it back";
    EXPECT_EQ(marker(0).Top().number(), other);
}

TEST_F(ZeroMarkerKeys, OtherKeysPassAndDuringTimedAcquisitionAllAreRefused) {
    openFlatActive();
    const double top = marker(0).Top().number();
    key(marker(0), Qt::Key_Left);
    EXPECT_EQ(marker(0).Top().number(), top);
    model->AutoRun = true;
    key(marker(0), Qt::Key_Up);
    EXPECT_EQ(marker(0).Top().number(), top);
}

TEST_F(ZeroMarkerKeys, EnterChoosesTheColourAsADoubleClickDoes) {
    openFlatActive();
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        model->LineColor[2] = 0;
        dialogs.colours.emplace_back(0x00123456);
        key(marker(2), enter);
        EXPECT_EQ(model->LineColor[2], 0x00123456U);
    }
}

TEST_F(ZeroMarkerKeys, TheFocusShowsOnceAKeyBroughtItOrUsedIt) {
    openFlatActive();
    marker(0).setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(marker(0).hasFocusLine());
    QTest::keyClick(&marker(0), Qt::Key_Up);
    EXPECT_TRUE(marker(0).hasFocusLine());
    list().setFocus();
    EXPECT_FALSE(marker(0).hasFocusLine());
}

using TabOrder = EverydayWindow;

TEST_F(TabOrder, WalksOverCursorLinesBehindTheirTypeAndOverMarkersBehindTheBarAndBeginsOverAgain) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    form->centralWidget()->setFocus();
    EXPECT_EQ(walk(14).join(QLatin1Char(' ')).toStdString(),
              std::string("List1 Combo1 UpDown2 Combo2 UpDown1 Combo3 Line1Keys(0) Line1Keys(1) Line2Keys(0) "
                          "Line2Keys(1) VScroll1 image1(0) image1(2) List1"));
}

TEST_F(TabOrder, EveryControlThatTakesTheFocusIsInTheWalkOnce) {
    openFlatActive();
    chooseCursors(CursorType::Both);
    for (int row = 0; row < kChannels; ++row) {
        list().setSelected(row, true);
    }
    form->centralWidget()->setFocus();
    QStringList expected;
    for (const QWidget* widget : form->centralWidget()->findChildren<QWidget*>()) {
        if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
            expected.append(widget->objectName());
        }
    }
    QStringList walked = walk(static_cast<int>(expected.size()));
    EXPECT_EQ(walked.size(), 17);
    walked.sort();
    expected.sort();
    EXPECT_EQ(walked, expected);
}

} // namespace
} // namespace sixtrace::test
