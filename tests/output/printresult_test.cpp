// SPDX-License-Identifier: MIT
// The sheet of each test has 11900 by 16840 twips. A border of 300 cannot be printed, which leaves 11300 by 16240;
// margins of 567 leave 10166 by 15106.
#include "output/pagefixture.h"
#include "output/pagegraticule.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST_F(PageTest, LegendWithNoShownChannelLetsTheFrameStart110TwipsBelowTheTopMargin) {
    print();
    ASSERT_EQ(printer.drawn.size(), 1U);
    // left 567 + 567, top 567 + 110; width 10166 - 567 = 9599, height 9599 * 2 / 3 = 6399.33; the pasted picture is 10
    // larger in both.
    EXPECT_EQ(printer.frame().place, QRectF(1134, 677, 9609, 6409));
}

TEST_F(PageTest, OnAWidePageTheFrameNarrowsTo1Point5TimesItsHeight) {
    layOnItsSide();
    settings.PrintMarginBottom = 1701;
    print();
    // height 11300 - 567 - 1701 - 110 = 8922, 3 * 8922 = 26766 <= 2 * (16240 - 1134 - 567) = 29078: width 13383.
    EXPECT_EQ(printer.frame().place, QRectF(1134, 677, 13393, 8932));
}

TEST_F(PageTest, WhereTheHeightDecidesTheLegendTakesFromItOnce) {
    layOnItsSide();
    settings.PrintMarginBottom = 1701;
    addChannel(0);
    addChannel(3);
    print();
    // 11300 - 567 - 1701 = 9032 from margin to margin; the frame takes what the legend and the gap of 110 leave.
    const double legend = printer.frame().place.top() - 110 - 567;
    EXPECT_GT(legend, 2 * 240); // two rows of 12 points
    EXPECT_LT(legend, 2 * 480);
    EXPECT_NEAR(printer.frame().place.height(), 9032 - legend - 110 + 10, 1);
    EXPECT_NEAR(printer.frame().place.width(), (9032 - legend - 110) * 1.5 + 10, 2);
    EXPECT_NEAR(printer.frame().place.bottom(), 11300 - 1701 + 10, 1) << "it ends at the lower margin";
}

TEST_F(PageTest, APictureOfNewSizeBeginsAtItsOrigin) {
    PicturePage picture(96);
    ASSERT_TRUE(picture.setSize(2000, 3000));
    picture.CurrentX = 700;
    picture.CurrentY = 900;
    ASSERT_TRUE(picture.setSize(3000, 2000));
    EXPECT_EQ(picture.CurrentX, 0);
    EXPECT_EQ(picture.CurrentY, 0);
}

TEST_F(PageTest, OnATallPageTheFrameTakesTheFullWidthAndTwoThirdsOfItAsHeight) {
    addChannel(0);
    addChannel(3);
    print();
    const DrawnItem& frame = printer.frame();
    EXPECT_EQ(frame.place.left(), 1134);
    EXPECT_EQ(frame.place.width(), 9609);
    EXPECT_EQ(frame.place.height(), 6409);
    EXPECT_GT(frame.place.top(), 677 + 2 * 240); // below two rows of 12 points
}

TEST_F(PageTest, PreviewAt100PercentEqualsThePrintInTwipsWithTheDashedBoxAndTheUnprintableBorderAdded) {
    addChannel(0);
    addChannel(2);
    print();
    preview();
    ASSERT_EQ(sheet.drawn.size(), printer.drawn.size() + 4);
    const std::array box{QRectF(867, 867, 10166, 0), QRectF(867, 15973, 10166, 0), QRectF(867, 867, 0, 15106),
                         QRectF(11033, 867, 0, 15106)};
    for (std::size_t i = 0; i < box.size(); ++i) {
        EXPECT_EQ(sheet.drawn[i].place, box[i]) << i;
        EXPECT_EQ(sheet.drawn[i].style, DrawStyle::Dot);
        EXPECT_EQ(sheet.drawn[i].colour, 0xC0C0C0U);
    }
    for (std::size_t i = 0; i < printer.drawn.size(); ++i) {
        const DrawnItem& printed = printer.drawn[i];
        const DrawnItem& shown = sheet.drawn[i + 4];
        EXPECT_EQ(shown.kind, printed.kind) << i;
        EXPECT_EQ(shown.text, printed.text) << i;
        EXPECT_EQ(shown.colour, printed.colour) << i;
        if (shown.kind == DrawnItem::Kind::Line) {
            EXPECT_EQ(shown.style, DrawStyle::Solid) << "the dashes of the box end with it";
        }
        EXPECT_NEAR(shown.place.left(), printed.place.left() + 300, 0.01) << i;
        EXPECT_NEAR(shown.place.top(), printed.place.top() + 300, 0.01) << i;
        EXPECT_NEAR(shown.place.width(), printed.place.width(), 0.01) << i;
        EXPECT_NEAR(shown.place.height(), printed.place.height(), 0.01) << i;
    }
    EXPECT_EQ(sheet.Width(), 11900);
    EXPECT_EQ(sheet.Height(), 16840);
}

TEST_F(PageTest, Zoom104PercentDrawsAtScale1And105At1Point1) {
    preview(104);
    EXPECT_NEAR(sheet.Width(), 11900, 0.01);
    EXPECT_NEAR(sheet.FontSize, 12, 1e-6);
    preview(105);
    EXPECT_NEAR(sheet.Width(), 13090, 0.01);
    EXPECT_NEAR(sheet.Height(), 18524, 0.01);
    EXPECT_NEAR(sheet.FontSize, 13.2, 1e-6);
    EXPECT_EQ(previewScale(75), 0.8F);
    EXPECT_EQ(previewScale(4), 0.0F);
}

TEST_F(PageTest, AtEightTenthsMarginsAndPaperShrinkButIndentAndGapDoNot) {
    preview(75);
    EXPECT_NEAR(sheet.Width(), 9520, 0.01);
    EXPECT_NEAR(sheet.Height(), 13472, 0.01);
    EXPECT_NEAR(sheet.FontSize, 9.6, 1e-6);
    // 0.8 of 867 is 693.6, of 10166 8132.8, of 15106 12084.8.
    EXPECT_EQ(sheet.drawn[0].place, QRectF(694, 694, 8133, 0));
    EXPECT_EQ(sheet.drawn[1].place, QRectF(694, 694 + 12085, 8133, 0));
    // 8133 - 567 = 7566, two thirds of it 5044.
    EXPECT_EQ(sheet.frame().place, QRectF(694 + 567, 694 + 110, 7576, 5054));
}

TEST_F(PageTest, HalvesGoToTheEvenTwip) {
    devices.unprintable = 601;
    preview();
    // 300.5 becomes 300: the box begins at 867 and measures 11299 - 1134 by 16239 - 1134.
    EXPECT_EQ(sheet.drawn[0].place, QRectF(867, 867, 10165, 0));
    EXPECT_EQ(sheet.drawn[2].place, QRectF(867, 867, 0, 15105));
    devices.unprintable = 603;
    sheet.drawn.clear();
    preview();
    EXPECT_EQ(sheet.drawn[0].place.left(), 869) << "301.5 becomes 302";
    // A frame 8921 high is 13381.5 wide: 13382.
    devices.unprintable = 600;
    layOnItsSide();
    settings.PrintMarginBottom = 1702;
    print();
    EXPECT_EQ(printer.frame().place, QRectF(1134, 677, 13392, 8931));
}

TEST_F(PageTest, AScaleOfNothingEndsTheCompositionBeforeItBegins) {
    for (const int percent : {0, 4, -100}) {
        const Outcome done = composer.PrintResult(sheet, percent, inputs);
        ASSERT_FALSE(done);
        EXPECT_EQ(done.error().code(), 5);
        EXPECT_TRUE(sheet.drawn.empty());
    }
}

TEST_F(PageTest, PaperWithoutSizeOrBeyondEveryMemoryIsSurvived) {
    settings.PaperWidth = 0;
    EXPECT_FALSE(composer.PrintResult(sheet, 100, inputs));
    settings.PaperWidth = 2147483647;
    settings.PaperHeight = 2147483647;
    EXPECT_TRUE(composer.PrintResult(sheet, 100, inputs));
    const QImage& picture = sheet.Image();
    EXPECT_LE(static_cast<double>(picture.width()) * picture.height(), 65e6);
    EXPECT_FALSE(composer.PrintResult(sheet, 2147483647, inputs)) << "margins of that size overflow";
}

TEST_F(PageTest, TracesDivideByTheSamplesHeldAndTakeTheShiftUnscaled) {
    addChannel(0);
    model->ChannelXShift[0] = 60;
    model->SampleData(0, 10) = 50;
    print();
    // X = W/2 - (W/2 - 60) + i * 9599 / 100, Y = 6399 / 2 - 50 * 10 * 6399 / (0.5 * 8000)
    EXPECT_EQ(model->PlotX(0, 0), 60);
    EXPECT_EQ(model->PlotX(0, 10), 1020);
    EXPECT_EQ(model->PlotX(0, 99), 9563);
    EXPECT_EQ(model->PlotY(0, 10), 2400);
    EXPECT_EQ(model->PlotY(0, 11), 3200); // 3199.5 is rounded to the even number
    EXPECT_FLOAT_EQ(model->VoltPerPixel[0], static_cast<float>(0.5 * 8 / 6399));
    EXPECT_FLOAT_EQ(model->MsPerPixel[0], static_cast<float>(model->TimeBaseTable[10] * 12 / 9599));
}

TEST_F(PageTest, FineTicksOfTheMiddleReach100TwipsToTheLeftAnd110ToTheRight) {
    PicturePage picture(360); // four twips a pixel, lines of four pixels
    picture.BackColor = 0;
    ASSERT_TRUE(picture.setSize(12010, 8010));
    picture.ForeColor = kWhite;
    drawPageGraticule(picture, 12000, 8000, Graticule::Dotted, 12);
    const int row = 1800 / 4; // the ninth of forty, on no division
    const auto lit = [&](int x) { return picture.Image().pixel(x, row) == 0xFFFFFFFF; };
    EXPECT_FALSE(lit(5900 / 4 - 1));
    EXPECT_TRUE(lit(5900 / 4));
    EXPECT_TRUE(lit(6110 / 4 + 3));
    EXPECT_FALSE(lit(6110 / 4 + 4));
    EXPECT_TRUE(lit(110 / 4));
    EXPECT_FALSE(lit(110 / 4 + 4));
}

TEST_F(PageTest, FineTicksStandWithoutTheGraticuleToo) {
    PicturePage picture(360); // four twips a pixel, lines of four pixels
    picture.BackColor = 0;
    ASSERT_TRUE(picture.setSize(12010, 8010));
    picture.ForeColor = kWhite;
    drawPageGraticule(picture, 12000, 8000, Graticule::Cross, 12);
    const auto lit = [&](int x, int y) { return picture.Image().pixel(x, y) == 0xFFFFFFFF; };
    // The ninth row of forty and the first column of sixty: on no division, so no long tick covers them.
    for (const int x : {20, 1476, 1500, 2980}) {
        EXPECT_TRUE(lit(x, 450)) << x;
    }
    for (const int x : {40, 1460, 1540, 2960}) {
        EXPECT_FALSE(lit(x, 450)) << x;
    }
    for (const int y : {20, 980, 1025, 1980}) {
        EXPECT_TRUE(lit(51, y)) << y;
    }
    for (const int y : {40, 960, 1040, 1960}) {
        EXPECT_FALSE(lit(51, y)) << y;
    }
}

TEST_F(PageTest, FineTicksStandAtAllFourEdgesAndOnBothCentreLines) {
    PicturePage picture(360); // four twips a pixel, lines of four pixels
    picture.BackColor = 0;
    ASSERT_TRUE(picture.setSize(12010, 8010));
    picture.ForeColor = kWhite;
    drawPageGraticule(picture, 12000, 8000, Graticule::Dotted, 12);
    const auto lit = [&](int x, int y) { return picture.Image().pixel(x, y) == 0xFFFFFFFF; };
    // The ninth row of forty: 110 twips at the right edge.
    EXPECT_FALSE(lit((12000 - 110) / 4 - 1, 450));
    EXPECT_TRUE(lit((12000 - 110) / 4, 450));
    // The first column of sixty: 110 twips at the upper edge, to both sides of the middle and at the lower edge.
    for (const int y : {20, 980, 1025, 1980}) {
        EXPECT_TRUE(lit(51, y)) << y;
    }
    for (const int y : {40, 960, 1040, 1960}) {
        EXPECT_FALSE(lit(51, y)) << y;
    }
}

TEST_F(PageTest, ThePageIsInTheScreensColours) {
    model->BackColor = 0x204060;
    print();
    const QImage& frame = printer.frame().picture;
    EXPECT_EQ(frame.pixel(frame.width() / 7, frame.height() / 7), 0xFF604020U);
}

TEST_F(PageTest, WithoutAnyPrinterTheCompositionEndsWithError482) {
    devices.installed.clear();
    devices.standard.clear();
    const Outcome done = composer.PrintResult(sheet, 100, inputs);
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().code(), 482);
    EXPECT_TRUE(sheet.drawn.empty());
}

TEST_F(PageTest, ADocumentThatFailsInItsMiddleIsThrownAway) {
    Printer real(devices);
    PageComposer realComposer(*model, settings, real);
    addChannel(0);
    addChannel(1, 0); // a division by the samples held
    const Outcome done = realComposer.PrintResult(real, 100, inputs);
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().number, ErrorNumber::DivisionByZero);
    EXPECT_EQ(devices.dropped, 1);
    EXPECT_TRUE(devices.documents.empty());
}

TEST_F(PageTest, MarginsThatLeaveNoRoomEndTheComposition) {
    settings.PrintMarginLeft = 5670;
    settings.PrintMarginRight = 5670;
    const Outcome done = composer.PrintResult(printer, 100, inputs);
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().number, ErrorNumber::InvalidCall);
}

} // namespace
} // namespace sixtrace::test
