// SPDX-License-Identifier: MIT
#include "shell/capturewindow.h"

namespace sixtrace::test {
namespace {

TEST_F(CursorWindow, EachTypeShowsItsLinesAndLabelsOnly) {
    struct Row {
        int type;
        bool voltage;
        bool time;
    };
    for (const Row& row : {Row{1, true, false}, Row{2, false, true}, Row{3, true, true}, Row{0, false, false}}) {
        cursorType().setListIndex(row.type);
        EXPECT_EQ(line("Line1(0)").isVisible(), row.voltage) << row.type;
        EXPECT_EQ(line("Line1(1)").isVisible(), row.voltage) << row.type;
        EXPECT_EQ(line("Line2(0)").isVisible(), row.time) << row.type;
        EXPECT_EQ(line("Line2(1)").isVisible(), row.time) << row.type;
        EXPECT_EQ(shown({"LabY1", "LabY2", "LabDy", "LabYY1", "LabYY2", "LabYY11", "LabYY22", "LabDDYY", "Labddy"}),
                  row.voltage);
        EXPECT_EQ(shown({"LabX1", "LabX2", "LabDx", "LabXX1", "LabXX2", "LabXX11", "LabXX22", "LabDDXX", "labDDx"}),
                  row.time);
    }
}

TEST_F(CursorWindow, DuringTimedAcquisitionTheTypeChangesNothing) {
    model->AutoRun = true;
    cursorType().setListIndex(3);
    EXPECT_FALSE(line("Line1(0)").isVisible());
    EXPECT_TRUE(caption("LabY1").isEmpty());
}

TEST_F(CursorWindow, BothPairsAtTheSameSpotTakeTheFirstVoltageCursorThenTheSecondThenATimeCursorThenATrace) {
    cursorType().setListIndex(3);
    dragFromTo(screen(), {10, 300}, {10, 100});
    EXPECT_EQ(line("Line1(1)").Y1(), 100);
    // At 180, 100 both voltage cursors and a time cursor lie under the pointer.
    dragFromTo(screen(), {180, 100}, {200, 200});
    EXPECT_EQ(line("Line1(0)").Y1(), 200);
    EXPECT_EQ(line("Line1(1)").Y1(), 100);
    EXPECT_EQ(line("Line2(0)").X1(), 180);
    dragFromTo(screen(), {180, 100}, {200, 50});
    EXPECT_EQ(line("Line1(1)").Y1(), 50);
    EXPECT_EQ(line("Line2(0)").X1(), 180) << "a voltage cursor before a time cursor";
    // The trace lies on row 250.
    dragFromTo(screen(), {180, 250}, {190, 250});
    EXPECT_EQ(line("Line2(0)").X1(), 190);
    EXPECT_EQ(model->ChannelXShift[2], 0) << "a cursor before a trace";
}

TEST_F(CursorWindow, WithoutCursorsAPressWithinTwoUnitsOfAnInvisibleLineStartsNoTraceDrag) {
    cursorType().setListIndex(0);
    dragFromTo(screen(), {181, 200}, {191, 200});
    EXPECT_EQ(model->ChannelXShift[0], 0);
    EXPECT_EQ(line("Line2(0)").X1(), 180) << "the hidden line takes the press and stays";
    dragFromTo(screen(), {182, 200}, {192, 200});
    EXPECT_EQ(model->ChannelXShift[0], 10) << "a distance of exactly 2 is no hit";
}

TEST_F(CursorWindow, TwoTracesAtTheSameSpotPickTheLowerChannel) {
    open({flat('2', 0), flat('B', 0)});
    dragFromTo(screen(), {50, 200}, {57, 200});
    EXPECT_EQ(model->ChannelXShift[1], 7);
    EXPECT_EQ(model->ChannelXShift[3], 0);
}

TEST_F(CursorWindow, AHiddenTraceCanBePicked) {
    list().setSelected(0, false);
    dragFromTo(screen(), {50, 200}, {57, 200});
    EXPECT_EQ(model->ChannelXShift[0], 7);
}

TEST_F(CursorWindow, APressAtAnIndexEqualToTheSampleCountPassesTheRangeTest) {
    // Column 600 stands for sample 600 of 600.
    press(screen(), 600, 200);
    drag(screen(), 595, 200);
    drag(screen(), 590, 200);
    release(screen(), 590, 200);
    EXPECT_EQ(model->ChannelXShift[0], -10);
}

TEST_F(CursorWindow, ADragOutOfTheScreenStopsAtTheEdgeAndGoesOnWhenItComesBack) {
    cursorType().setListIndex(1);
    press(screen(), 10, 100);
    drag(screen(), 10, 20);
    for (const QPointF outside : {QPointF(10, -1), QPointF(10, 400), QPointF(-1, 50), QPointF(600, 50)}) {
        drag(screen(), outside.x(), outside.y());
        EXPECT_EQ(line("Line1(0)").Y1(), 20);
    }
    drag(screen(), 10, 399);
    EXPECT_EQ(line("Line1(0)").Y1(), 399);
    release(screen(), 700, -50);
    drag(screen(), 10, 60);
    EXPECT_EQ(line("Line1(0)").Y1(), 399) << "the release outside has ended the drag";
}

TEST_F(CursorWindow, ATraceDragOutOfTheScreenGoesOnFromTheLastPlaceInside) {
    press(screen(), 50, 200);
    drag(screen(), 60, 200);
    drag(screen(), -30, 200);
    drag(screen(), 45, 200);
    release(screen(), 45, 500);
    EXPECT_EQ(model->ChannelXShift[0], -5);
    drag(screen(), 80, 200);
    EXPECT_EQ(model->ChannelXShift[0], -5);
}

TEST_F(CursorWindow, ATraceDragIsTakenAtTheTimeBaseOfTheView) {
    control<ListCombo>("Combo1").setListIndex(13); // 100 microseconds where the capture has 10
    // Ten times the time a division: the trace fills the 60 units around the middle.
    dragFromTo(screen(), {300, 200}, {303, 200});
    EXPECT_FLOAT_EQ(model->ChannelXShift[0], 30);
}

TEST_F(CursorWindow, ACursorMovesInItsOwnTypeOnly) {
    cursorType().setListIndex(1);
    dragFromTo(screen(), {180, 50}, {200, 60});
    EXPECT_EQ(line("Line2(0)").X1(), 180);
    cursorType().setListIndex(2);
    dragFromTo(screen(), {10, 100}, {10, 130});
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
}

TEST_F(CursorWindow, PointerShapesTellWhatAPressWouldTake) {
    hover(screen(), 10, 100);
    EXPECT_EQ(pointer(), Qt::ArrowCursor) << "a hidden cursor gives no shape";
    hover(screen(), 50, 205);
    EXPECT_EQ(pointer(), Qt::SizeHorCursor) << "five units from a trace";
    hover(screen(), 50, 206);
    EXPECT_EQ(pointer(), Qt::ArrowCursor);
    cursorType().setListIndex(3);
    hover(screen(), 10, 101);
    EXPECT_EQ(pointer(), Qt::SizeVerCursor);
    hover(screen(), 10, 102);
    EXPECT_EQ(pointer(), Qt::ArrowCursor);
    hover(screen(), 419, 30);
    EXPECT_EQ(pointer(), Qt::SizeHorCursor);
    hover(screen(), 418, 30);
    EXPECT_EQ(pointer(), Qt::ArrowCursor);
}

TEST_F(CursorWindow, AMoveOfTheMouseOverTheTracesRepaintsNothing) {
    class Paints : public QObject {
    public:
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } paints;
    cursorType().setListIndex(3);
    hover(screen(), 50, 50);
    QCoreApplication::processEvents();
    screen().installEventFilter(&paints);
    for (int y = 0; y < 400; y += 3) {
        hover(screen(), 50 + y, y);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.count, 0);
    dragFromTo(screen(), {50, 100}, {50, 110});
    QCoreApplication::processEvents();
    EXPECT_GT(paints.count, 0) << "a moved cursor does";
}

TEST_F(CursorWindow, DuringTimedAcquisitionNeitherCursorNorTraceCanBeGrabbed) {
    cursorType().setListIndex(3);
    model->AutoRun = true;
    dragFromTo(screen(), {10, 100}, {10, 150});
    dragFromTo(screen(), {50, 200}, {60, 200});
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    EXPECT_EQ(model->ChannelXShift[0], 0);
}

TEST_F(CursorWindow, DuringTimedAcquisitionAReleaseEndsNoDragAndDrawsNoFrame) {
    cursorType().setListIndex(1);
    press(screen(), 10, 100);
    model->SampleData(0, 300) = 50; // a frame would show it
    const QImage before = screenImage();
    model->AutoRun = true;
    release(screen(), 10, 100);
    EXPECT_EQ(screenImage(), before);
    model->AutoRun = false;
    drag(screen(), 10, 120);
    EXPECT_EQ(line("Line1(0)").Y1(), 120) << "the line is held still";
    release(screen(), 10, 120);
    drag(screen(), 10, 140);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
    EXPECT_NE(screenImage(), before);
}

TEST_F(CursorWindow, AMoveThatFailsIsMadeUpForByTheNext) {
    press(screen(), 50, 200);
    model->TimeIndexView[0] = 99;
    drag(screen(), 60, 200);
    EXPECT_EQ(model->ChannelXShift[0], 0);
    model->TimeIndexView[0] = 10;
    drag(screen(), 63, 200);
    EXPECT_EQ(model->ChannelXShift[0], 13) << "reckoned from the last move that was handled";
    release(screen(), 63, 200);
}

TEST_F(CursorWindow, FractionsOfAPixelAreRoundedDown) {
    cursorType().setListIndex(1);
    press(screen(), 10, 98.9); // row 98, a distance of exactly 2
    drag(screen(), 10, 110);
    EXPECT_EQ(line("Line1(0)").Y1(), 100);
    release(screen(), 10, 110);
    press(screen(), 10, 101.9);
    drag(screen(), 10, 120.7);
    EXPECT_EQ(line("Line1(0)").Y1(), 120);
    release(screen(), 10, 120.7);
}

TEST_F(CursorWindow, WithNoRowSelectedAPressTakesCursorsButNoTrace) {
    cursorType().setListIndex(2);
    list().setCurrentRow(-1);
    dragFromTo(screen(), {50, 200}, {60, 200});
    EXPECT_EQ(model->ChannelXShift[0], 0);
    dragFromTo(screen(), {180, 50}, {190, 50});
    EXPECT_EQ(line("Line2(0)").X1(), 190);
}

TEST_F(CursorWindow, APressThatFailsOverATraceBeginsNoDragWhateverTheShape) {
    hover(screen(), 50, 200);
    ASSERT_EQ(pointer(), Qt::SizeHorCursor);
    model->SampleCount[0] = 0; // the picking step is a division by zero
    press(screen(), 50, 200);
    EXPECT_EQ(screen().picture().drawMode, DrawMode::CopyPen);
    EXPECT_EQ(pointer(), Qt::SizeHorCursor);
    release(screen(), 50, 200);
}

TEST_F(CursorWindow, ADragWithoutACaptureIsQuiet) {
    form.reset();
    model = std::make_unique<publicM>();
    load();
    form->show();
    const QImage before = screenImage();
    dragFromTo(screen(), {50, 200}, {90, 200});
    EXPECT_EQ(screenImage(), before);
    cursorType().setListIndex(2);
    dragFromTo(screen(), {180, 50}, {190, 50});
    EXPECT_EQ(line("Line2(0)").X1(), 190);
    EXPECT_TRUE(caption("LabX1").isEmpty());
}

TEST_F(CursorWindow, ADragOverACountFromAHostileFileEndsQuietly) {
    model->SampleCount[0] = 2000000000;
    dragFromTo(screen(), {50, 200}, {90, 200});
    model->SampleCount[0] = -5;
    dragFromTo(screen(), {50, 200}, {90, 200});
    model->SampleCount[0] = 600;
    model->TimeIndexView[0] = 99;
    dragFromTo(screen(), {50, 200}, {90, 200});
    hover(screen(), 60, 200);
    EXPECT_EQ(model->ChannelXShift[0], 0);
}

TEST_F(CursorWindow, ATimeCursorPulledOverAVoltageCursorWaitsForTheNextMove) {
    cursorType().setListIndex(3);
    press(screen(), 180, 50);
    drag(screen(), 200, 101);
    EXPECT_EQ(line("Line2(0)").X1(), 180) << "the voltage cursor on row 100 takes this move";
    EXPECT_EQ(pointer(), Qt::SizeVerCursor);
    drag(screen(), 201, 102);
    EXPECT_EQ(line("Line2(0)").X1(), 201);
    release(screen(), 201, 102);
}

TEST_F(CursorWindow, APressBesideATraceUnderAShapeThatWasLeftOverSetsThePenAndDrawsNothing) {
    cursorType().setListIndex(2);
    hover(screen(), 419, 30);
    ASSERT_EQ(pointer(), Qt::SizeHorCursor);
    const QImage before = screenImage();
    press(screen(), 425, 30); // without a move in between
    EXPECT_EQ(screen().picture().drawMode, DrawMode::XorPen);
    EXPECT_EQ(screenImage(), before);
    drag(screen(), 435, 30);
    release(screen(), 435, 30);
    EXPECT_EQ(screen().picture().drawMode, DrawMode::CopyPen) << "the release draws a frame";
    EXPECT_EQ(screenImage(), before);
    EXPECT_EQ(model->ChannelXShift[0], 0);
    EXPECT_EQ(line("Line2(1)").X1(), 420);
}

} // namespace
} // namespace sixtrace::test
