// SPDX-License-Identifier: MIT
// The page in the window of the preview: where it stands, and how the mouse and the keys move it. The
// paper has 11900 by 16840 twips; the window shows 11400 by 9210 twips of it, 760 by 614 pixels.
#include "output/printwindow.h"

#include <QMenu>

namespace sixtrace::test {
namespace {

TEST_F(Preview, PictureSmallerThanTheWindowOnAnAxisStandsCentredAndCannotBeDraggedOnThatAxis) {
    openPreview();
    typePercent("70"); // 8330 by 11788: narrower than 11400, taller than 9210
    EXPECT_EQ(page().Left().number(), 1535);
    EXPECT_EQ(page().Top().number(), 0);
    drag(-40, -40);
    EXPECT_EQ(page().Left().number(), 1535);
    EXPECT_EQ(page().Top().number(), -600);
    typePercent("40"); // 4760 by 6736
    EXPECT_EQ(page().Left().number(), 3320);
    EXPECT_EQ(page().Top().number(), 1237);
    drag(40, -40);
    EXPECT_EQ(page().Left().number(), 3320);
    EXPECT_EQ(page().Top().number(), 1237);
}

TEST_F(Preview, DraggingNeverBringsTheNearEdgeInsideNorLetsTheFarEdgeLeave) {
    openPreview();
    drag(10, 10);
    EXPECT_EQ(page().Left().number(), 0);
    drag(-20, -100);
    EXPECT_EQ(page().Left().number(), -300);
    EXPECT_EQ(page().Top().number(), -1500);
    drag(-300, -300);
    EXPECT_EQ(page().Left().number(), 11400 - 11900);
    EXPECT_EQ(page().Top().number(), -6000);
    drag(-10, -300);
    EXPECT_EQ(page().Top().number(), 9210 - 16840);
    drag(5, 0);
    EXPECT_EQ(page().Left().number(), -425);
    drag(300, 600);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
}

TEST_F(Preview, ThePointOfThePressStaysThroughAllMovesOfADrag) {
    openPreview();
    const QPoint press(300, 200);
    QTest::mousePress(&page(), Qt::LeftButton, {}, press);
    // Places of the mouse are relative to the picture, which follows the mouse. When the mouse moves by 20 pixels and
    // then rests, its place is once 20 pixels away from the place of the press, and then the place of the press again.
    move(page(), press + QPoint(0, -20), Qt::LeftButton);
    EXPECT_EQ(page().Top().number(), -300);
    move(page(), press, Qt::LeftButton);
    EXPECT_EQ(page().Top().number(), -300);
    move(page(), press + QPoint(-3, -40), Qt::LeftButton);
    EXPECT_EQ(page().Left().number(), -45);
    EXPECT_EQ(page().Top().number(), -900);
    move(page(), press + QPoint(2, 10), Qt::LeftButton);
    EXPECT_EQ(page().Left().number(), -15);
    EXPECT_EQ(page().Top().number(), -750);
    QTest::mouseRelease(&page(), Qt::LeftButton, {}, press);
}

TEST_F(Preview, ArrowKeysBringWhatLiesInTheirDirectionIntoSightAndEscapeCloses) {
    frmPrintPreview& preview = openPreview();
    QTest::keyClick(&preview, Qt::Key_Down);
    EXPECT_EQ(page().Top().number(), -600);
    QTest::keyClick(&preview, Qt::Key_Right);
    EXPECT_EQ(page().Left().number(), 11400 - 11900) << "the far edge does not leave";
    QTest::keyClick(&preview, Qt::Key_Left);
    EXPECT_EQ(page().Left().number(), 0);
    QTest::keyClick(&preview, Qt::Key_Up);
    EXPECT_EQ(page().Top().number(), 0);
    QTest::keyClick(&preview, Qt::Key_Up);
    EXPECT_EQ(page().Top().number(), 0);
    QTest::keyClick(&preview, Qt::Key_A);
    EXPECT_TRUE(preview.isVisible());
    QTest::keyClick(&preview, Qt::Key_Escape);
    unloadClosed();
    EXPECT_EQ(printing().preview(), nullptr);
}

TEST_F(Preview, MovesWithoutTheLeftButtonLeaveThePage) {
    openPreview();
    move(page(), QPoint(10, 10), Qt::NoButton);
    move(page(), QPoint(-90, -90), Qt::RightButton);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
}

TEST_F(Preview, RightButtonOpensTheViewMenu) {
    frmPrintPreview& preview = openPreview();
    auto& view = in<QMenu>(preview, "mnuView");
    QTest::mousePress(&page(), Qt::RightButton, {}, QPoint(20, 20));
    EXPECT_TRUE(view.isVisible());
    view.close();
    typePercent("40");
    QTest::mousePress(&in<PageDesk>(preview, "frameA"), Qt::RightButton, {}, QPoint(5, 5));
    EXPECT_TRUE(view.isVisible());
    view.close();
}

TEST_F(Preview, ResizingTheWindowPlacesThePageAnew) {
    frmPrintPreview& preview = openPreview();
    drag(-20, -100);
    preview.resize(1000, 1226); // 15000 by 18000 twips inside
    EXPECT_EQ(page().Left().number(), 1550);
    EXPECT_EQ(page().Top().number(), 580);
    preview.resize(760, 640);
    EXPECT_EQ(page().pos(), QPoint(0, 0));
}

} // namespace
} // namespace sixtrace::test
