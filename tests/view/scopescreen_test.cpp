// SPDX-License-Identifier: MIT
#include "view/scopescreen.h"

#include "support/strings.h"
#include "view/drags.h"
#include "view/flatscope.h"
#include "view/scene.h"

namespace sixtrace::test {
namespace {

class ScreenPictures : public FlatScope {
protected:
    void SetUp() override { loadFlat(); }
    [[nodiscard]] ScopeScreen& screen() const { return scope->screen(); }
    /// What picHidden(0) holds, to compare with later.
    [[nodiscard]] QImage background() const { return screen().background().view().copy(); }
};

TEST_F(ScreenPictures, AFinishedFrameIsTheNextBackground) {
    const QImage before = background();
    model->TimeIndexView[0] = 13;
    screen().PicReDrawT();
    EXPECT_NE(background(), before);
    EXPECT_TRUE(sameRows(screen().background(), scope->Picture2, 600, 400));
}

TEST_F(ScreenPictures, AFrameThatIsAbortedLeavesTheBackground) {
    const QImage before = background();
    model->TimeIndexView[2] = 99; // A has no time base, ch1 is drawn before it
    model->ChannelXShift[0] = 100;
    screen().PicReDrawT();
    EXPECT_FALSE(sameRows(screen().background(), scope->Picture2, 600, 400));
    EXPECT_EQ(background(), before);
}

TEST_F(ScreenPictures, AnEmptyScreenHasNoGraticuleAndLeavesTheBackground) {
    const QImage before = background();
    screen().PicReDrawT(); // it is not copied yet
    const unsigned changes = screen().changes();
    screen().blankDue();
    EXPECT_EQ(screen().changes(), changes + 1);
    EXPECT_EQ(scope->Picture2.Point(300, 200), model->BackColor);
    EXPECT_EQ(scope->Picture2.Point(50, 200), model->BackColor);
    EXPECT_EQ(background(), before);
}

TEST_F(ScreenPictures, ANewBackgroundShowsInTheHiddenPicturesAtOnceAndOnTheScreenWithItsNextFrame) {
    screen().PicReDrawT();
    screen().setScreenColor(0x00112233);
    EXPECT_EQ(state().screenColor, 0x00112233U);
    EXPECT_EQ(screen().background().Point(300, 300), 0x00112233U);
    EXPECT_EQ(scope->Picture2.Point(310, 310), model->BackColor);
    screen().PicReDrawT();
    EXPECT_EQ(scope->Picture2.Point(310, 310), 0x00112233U);
}

TEST_F(ScreenPictures, ReadoutsThatAreDueAreThoseOfBothPairs) {
    state().cursorChoice = CursorType::Both;
    screen().readoutsDue();
    EXPECT_EQ(state().voltages.values[0], number("1000.00"));
    EXPECT_EQ(state().times.values[0], number("450.00"));
}

TEST_F(ScreenPictures, ALoadClosesTheTableAndThenLoadsIt) {
    QString order;
    screen().setTable([&] { order += u'c'; }, [&] { order += u'o'; });
    loadFlat();
    EXPECT_EQ(order, u"co"_s);
}

TEST_F(ScreenPictures, EveryStepOfADragChangesThePicture) {
    unsigned changes = screen().changes();
    EXPECT_TRUE(screen().beginTraceDrag(0));
    EXPECT_EQ(screen().changes(), ++changes);
    EXPECT_TRUE(screen().moveTraceDrag(0, ScreenX(5)));
    EXPECT_EQ(screen().changes(), ++changes);
    screen().PicReDrawT();
    EXPECT_EQ(screen().changes(), ++changes);
    screen().beginMarkerDrag(0);
    EXPECT_EQ(screen().changes(), ++changes);
    EXPECT_EQ(scope->Picture2.ForeColor, 0x00FF0000U) << "blue";
    EXPECT_EQ(scope->Picture2.drawMode, DrawMode::XorPen);
    screen().moveMarkerDrag(0);
    EXPECT_EQ(screen().changes(), ++changes);
}

TEST_F(ScreenPictures, ADragStartsFromTheFrameThatWasFinishedLast) {
    model->ChannelXShift[0] = 100;
    screen().PicReDrawT();
    const QImage frame = scope->Picture2.view().copy(0, 0, 600, 400);
    EXPECT_TRUE(screen().beginTraceDrag(0));
    EXPECT_EQ(screen().background().view().copy(0, 0, 600, 400), frame) << "without the ghost";
}

TEST_F(ScreenPictures, ATraceThatIsTakenIsDrawnOnTheWorkingPictureAndOnNoPage) {
    Picture visible(kSurfaceWidth, kSurfaceHeight);
    Picture copy(kSurfaceWidth, kSurfaceHeight);
    Picture working(kSurfaceWidth, kSurfaceHeight);
    Picture page(kSurfaceWidth, kSurfaceHeight);
    ScopeScreen own(*model, state(), {visible, {&copy, &working, &page}});
    own.setScreenColor(0);
    own.PicReDrawT();
    EXPECT_TRUE(own.beginTraceDrag(0));
    EXPECT_EQ(working.Point(53, 200), kGhostColour);
    EXPECT_EQ(page.Point(53, 200), 0U);
}

TEST_F(ScreenPictures, AFrameThatIsDrawnDuringADragIsTheBackgroundOfItsNextStep) {
    ASSERT_EQ(scope->Picture2.Point(53, 250), model->LineColor[2]);
    EXPECT_TRUE(screen().beginTraceDrag(0));
    marker(2).top = Twips(5171.25); // A goes from row 250 to row 350
    screen().PicReDrawT();
    EXPECT_TRUE(screen().moveTraceDrag(0, ScreenX(5)));
    EXPECT_EQ(scope->Picture2.Point(53, 350), model->LineColor[2]);
    EXPECT_NE(scope->Picture2.Point(53, 250), model->LineColor[2]);
}

TEST_F(ScreenPictures, AMarkersDragKeepsTheOtherTraces) {
    screen().beginMarkerDrag(0);
    marker(0).top = Twips(5171.25); // row 350
    screen().moveMarkerDrag(0);
    EXPECT_EQ(scope->Picture2.Point(53, 250), model->LineColor[2]);
}

TEST_F(ScreenPictures, AMarkersDragStartsFromTheScreenWithItsGhost) {
    screen().PicReDrawT();
    const QImage frame = scope->Picture2.view().copy(0, 0, 600, 400);
    screen().beginMarkerDrag(0);
    EXPECT_NE(screen().background().view().copy(0, 0, 600, 400), frame);
    EXPECT_TRUE(sameRows(screen().background(), scope->Picture2, 600, 400));
}

} // namespace
} // namespace sixtrace::test
