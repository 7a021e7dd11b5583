// SPDX-License-Identifier: MIT
// The legend of a printed page, and the labels and traces of its channels.
#include "output/pagefixture.h"
#include "support/strings.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST_F(PageTest, ChannelWithWhiteLineColorHasABlackLegendRowButAWhiteLabelAndTrace) {
    addChannel(0);
    model->LineColor[0] = kWhite;
    print();
    const auto texts = printer.of(DrawnItem::Kind::Text);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].text, u"ch1 5 mS 1 V"_s);
    EXPECT_EQ(texts[0].colour, 0U);
    EXPECT_EQ(texts[1].text, u"ch1"_s);
    EXPECT_EQ(texts[1].colour, kWhite);
    // The trace lies on the middle line. At this column, 30 twips right of a tick, only the trace can be white.
    const QImage& frame = printer.frame().picture;
    const int middle = frame.height() * 6399 / 6409 / 2;
    int white = 0;
    for (int y = middle - 8; y <= middle + 8; ++y) {
        white += frame.pixel(frame.width() / 7, y) == 0xFFFFFFFF ? 1 : 0;
    }
    EXPECT_GT(white, 0);
}

TEST_F(PageTest, OnlyPureWhiteIsBlackInTheLegend) {
    addChannel(0);
    model->LineColor[0] = 0xFFFFFE;
    print();
    EXPECT_EQ(printer.of(DrawnItem::Kind::Text).at(0).colour, 0xFFFFFEU);
}

TEST_F(PageTest, TextHangsFromTheCurrentPointAndTheNextRowBelowIt) {
    addChannel(0);
    addChannel(3);
    print();
    const auto texts = printer.of(DrawnItem::Kind::Text);
    ASSERT_EQ(texts.size(), 4U);
    // The base line of a text lies below the upper edge of its row, by less than the font size of 12 points.
    EXPECT_GT(texts[0].place.top(), 567 + 120);
    EXPECT_LT(texts[0].place.top(), 567 + 300);
    EXPECT_GT(texts[1].place.top(), texts[0].place.top() + 200);
}

TEST_F(PageTest, AnUntickedChannelIsNowhereOnThePage) {
    addChannel(0);
    addChannel(2);
    print();
    const std::size_t withBoth = printer.drawn.size();
    const QImage both = printer.frame().picture;
    printer.drawn.clear();
    inputs.frame.selected[2] = false;
    print();
    EXPECT_EQ(printer.drawn.size(), withBoth - 3) << "legend row, label and tick";
    for (const DrawnItem& text : printer.of(DrawnItem::Kind::Text)) {
        EXPECT_FALSE(text.text.startsWith(u"A"_s)) << text.text.toStdString();
    }
    const QRgb trace = pixelOfColour(model->LineColor[2]);
    const auto traced = [trace](const QImage& frame) {
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                if (frame.pixel(x, y) == trace) {
                    return true;
                }
            }
        }
        return false;
    };
    EXPECT_TRUE(traced(both));
    EXPECT_FALSE(traced(printer.frame().picture));
}

TEST_F(PageTest, SelectedButAbsentChannelGetsNoLabelNoTraceAndStillSetsForeColor) {
    model->LineColor[5] = kBlue;
    inputs.frame.selected[5] = true;
    PicturePage hidden(96);
    PageComposer::Box box{1134, 677, 9599, 6399};
    ASSERT_TRUE(composer.PrinterDrawT(hidden, box, printer, inputs.frame));
    EXPECT_EQ(hidden.ForeColor, kBlue);
    EXPECT_EQ(printer.drawn.size(), 1U);
    const QImage frame = hidden.Image();
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            ASSERT_NE(frame.pixel(x, y), 0xFF0000FFU);
        }
    }
    print();
    EXPECT_TRUE(printer.of(DrawnItem::Kind::Text).empty());
}

TEST_F(PageTest, LabelsTickTheZeroLinesWhereTheMarkersStand) {
    addChannel(1);
    model->LineColor[1] = kRed;
    inputs.frame.markerTop[1] = Twips{1402.5}; // (105 + 1402.5) / 6030 is a quarter
    print();
    EXPECT_DOUBLE_EQ(composer.ChannelPageY[1], 1599.75);
    const double zeroLine = printer.frame().place.top() + 1599.75;
    const auto lines = printer.of(DrawnItem::Kind::Line);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].place.top(), zeroLine);
    EXPECT_EQ(lines[0].place.height(), 0);
    EXPECT_EQ(lines[0].place.right(), 1134); // up to the edge of the frame
    EXPECT_EQ(lines[0].colour, kRed);
    const auto texts = printer.of(DrawnItem::Kind::Text);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(texts[0].place.left(), 1134);
    EXPECT_EQ(texts[1].place.left(), 567);
    EXPECT_GT(lines[0].place.left(), 567 + 300) << "the tick begins behind the three characters";
}

TEST_F(PageTest, LegendRowsAndLabelsAreInTheColoursOfTheirChannels) {
    addChannel(1);
    addChannel(4);
    model->LineColor[1] = kRed;
    model->LineColor[4] = kBlue;
    print();
    const auto texts = printer.of(DrawnItem::Kind::Text);
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0].text, u"ch2 5 mS 1 V"_s);
    EXPECT_EQ(texts[1].text, u"C   5 mS 1 V"_s);
    EXPECT_EQ(texts[2].text, u"ch2"_s);
    EXPECT_EQ(texts[3].text, u"C  "_s);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].colour, i % 2 == 0 ? kRed : kBlue) << i;
    }
    // Rows follow each other; a label stands 110 twips above its zero line, as the first row stands at the margin.
    EXPECT_GT(texts[1].place.top(), texts[0].place.top());
    const double ascent = texts[0].place.top() - 567;
    const double zeroLine = printer.frame().place.top() + composer.ChannelPageY[1];
    EXPECT_NEAR(texts[2].place.top(), zeroLine - 110 + ascent, 0.01);
}

} // namespace
} // namespace sixtrace::test
