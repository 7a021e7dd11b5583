// SPDX-License-Identifier: MIT
// The frame of a page on a picture with four twips a pixel and lines of four pixels.
#include "output/pagefixture.h"
#include "output/pagegraticule.h"

#include <vector>

namespace sixtrace::test {
namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr QRgb kLit = 0xFFFFFFFF;
constexpr int kPen = 4; // pixels

class PageFrame : public PageTest {
protected:
    PageFrame() {
        model->BackColor = 0;
        model->GridColor = kWhite;
    }
    /// A frame of 12000 by 8000 twips.
    Outcome draw() {
        PageComposer::Box box{1134, 677, 12000, 8000};
        Outcome done = composer.PrinterDrawT(hidden, box, printer, inputs.frame);
        EXPECT_EQ(box.left, 0);
        EXPECT_EQ(box.top, 0);
        return done;
    }
    /// The first columns of the lit runs of a row.
    [[nodiscard]] std::vector<int> startsInRow(int row) const {
        std::vector<int> starts;
        for (int x = 0; x < hidden.Image().width(); ++x) {
            if (lit(x, row) && (x == 0 || !lit(x - 1, row))) {
                starts.push_back(x);
            }
        }
        return starts;
    }
    [[nodiscard]] bool lit(int x, int y) const { return hidden.Image().pixel(x, y) == kLit; }
    static std::vector<int> multiples(int step, int count) {
        std::vector<int> numbers;
        numbers.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            numbers.push_back(i * step);
        }
        return numbers;
    }
    /// A slow scan of 100 slots with its zero line in the middle. No frame has set its positions yet.
    void addScan(int samples, int writePosition) {
        addChannel(0, samples);
        model->ScreenPoints[0] = 100;
        model->TimeIndex[0] = 22;
        model->TimeIndexView[0] = 22;
        model->ScanPoint[0] = writePosition;
        composer.ChannelPageY[0] = 4000;
        for (int row = 0; row < kSampleRows; ++row) {
            model->PlotX(0, row) = -1;
            model->PlotY(0, row) = -1;
        }
    }
    /// The samples whose positions a frame has computed.
    [[nodiscard]] std::vector<int> visited() const {
        std::vector<int> rows;
        for (int row = 0; row < 200; ++row) {
            if (model->PlotX(0, row) != -1) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    static std::vector<int> rows(std::initializer_list<std::pair<int, int>> ranges) {
        std::vector<int> all;
        for (const auto& [first, last] : ranges) {
            for (int row = first; row <= last; ++row) {
                all.push_back(row);
            }
        }
        return all;
    }

    PicturePage hidden{360};
};

TEST_F(PageFrame, HasDottedDivisionLinesSevenAcrossAndOneFewerThanDivisionsDown) {
    inputs.frame.graticule = Graticule::Dotted;
    for (const std::int16_t kind : std::initializer_list<std::int16_t>{1, 2, 3, 4}) {
        const int divisions = kind == 2 || kind == 3 ? 10 : 12;
        model->FileKind = kind;
        ASSERT_TRUE(draw());
        // Row 120 is the first row of a dash and has no ticks: only borders and division lines cross it.
        EXPECT_EQ(startsInRow(120), multiples(3000 / divisions, divisions + 1)) << kind;
        // Row 10 crosses the fine ticks of the upper edge, five in a division.
        EXPECT_EQ(startsInRow(10), multiples(3000 / divisions / 5, 5 * divisions + 1)) << kind;
    }
    // No division line runs down column 240; seven dashed lines and two borders cross it.
    std::vector<int> starts;
    for (int y = 0; y < hidden.Image().height(); ++y) {
        if (lit(240, y) && (y == 0 || !lit(240, y - 1))) {
            starts.push_back(y);
        }
    }
    EXPECT_EQ(starts, multiples(250, 9));
}

TEST_F(PageFrame, WithoutTheGraticuleTheCentreCrossIsDottedAndDivisionTicksAre220TwipsLong) {
    inputs.frame.graticule = Graticule::Cross;
    ASSERT_TRUE(draw());
    // The vertical centre line between two fine ticks: dashes and gaps of three line widths each, counted from the top.
    for (int y = 104; y < 150; ++y) {
        EXPECT_EQ(lit(1500, y), y % 24 < 12) << y;
    }
    // The horizontal centre line in the same way, counted from the left.
    for (int x = 104; x < 150; ++x) {
        EXPECT_EQ(lit(x, 1000), x % 24 < 12) << x;
    }
    // A division has ticks at the upper edge and in the middle, at twips 0 to 220 and 3780 to 4220.
    const int column = 250;
    EXPECT_TRUE(lit(column, 55 + kPen - 1));
    EXPECT_FALSE(lit(column, 55 + kPen));
    EXPECT_FALSE(lit(column, 944));
    EXPECT_TRUE(lit(column, 945));
    EXPECT_TRUE(lit(column, 1055 + kPen - 1));
    EXPECT_FALSE(lit(column, 1055 + kPen));
    EXPECT_FALSE(lit(column, 1944));
    EXPECT_TRUE(lit(column, 1945));
    // The first horizontal division has ticks of 110 twips at the edges and of 220 twips on both sides of the middle,
    // and no grid line between them.
    EXPECT_EQ(startsInRow(250), (std::vector{0, (6000 - 220) / 4, (12000 - 110) / 4}));
    EXPECT_TRUE(lit((6000 + 220) / 4 + kPen - 1, 250));
    EXPECT_FALSE(lit((6000 + 220) / 4 + kPen, 250));
    EXPECT_FALSE(lit(110 / 4 + kPen, 250));
}

TEST_F(PageFrame, IsTenTwipsLargerThanItsBoxSoThatTheRightAndLowerBorderShow) {
    ASSERT_TRUE(draw());
    EXPECT_EQ(hidden.Width(), 12010);
    EXPECT_EQ(hidden.Height(), 8010);
    EXPECT_TRUE(lit(3000, 777));
    EXPECT_TRUE(lit(777, 2000));
    EXPECT_EQ(printer.frame().place, QRectF(1134, 677, 12010, 8010));
}

TEST_F(PageFrame, AScanInItsFirstSweepIsDividedByTheSamplesHeld) {
    addScan(60, 10);
    ASSERT_TRUE(draw());
    EXPECT_EQ(visited(), rows({{0, 59}}));
    EXPECT_EQ(model->PlotX(0, 59), 11800); // 59 * 12000 / 60
}

TEST_F(PageFrame, AScanLeavesAGapOfEightPercentAheadOfItsWritePosition) {
    addScan(100, 40);
    inputs.frame.style = TraceStyle::Lines;
    ASSERT_TRUE(draw());
    EXPECT_EQ(visited(), rows({{0, 39}, {48, 100}}));
    EXPECT_EQ(model->PlotX(0, 48), 5760);
    EXPECT_EQ(model->PlotY(0, 48), 4000);
    inputs.frame.style = TraceStyle::Points;
    addScan(100, 40);
    ASSERT_TRUE(draw());
    EXPECT_EQ(visited(), rows({{0, 40}, {48, 100}})) << "as dots, the write position itself is drawn";
}

TEST_F(PageFrame, AWritePositionOfExactly92PercentStillDrawsBothSweeps) {
    addScan(100, 92);
    inputs.frame.style = TraceStyle::Lines;
    ASSERT_TRUE(draw());
    EXPECT_EQ(visited(), rows({{0, 91}, {100, 100}}));
}

TEST_F(PageFrame, Beyond92PercentTheGapHasEatenTheStartOfTheSweep) {
    for (const TraceStyle style : {TraceStyle::Lines, TraceStyle::Points}) {
        addScan(100, 95);
        inputs.frame.style = style;
        ASSERT_TRUE(draw());
        EXPECT_EQ(visited(), rows({{3, 95}})) << static_cast<int>(style); // 8 - (100 - 95)
    }
}

TEST_F(PageFrame, TheLiftOverTheGapLeavesADotWhereAnEarlierFrameHadTheWritePosition) {
    addScan(100, 40);
    inputs.frame.style = TraceStyle::Lines;
    model->LineColor[0] = 0x0000FF;
    model->PlotX(0, 40) = 5000;
    model->PlotY(0, 40) = 1500;
    ASSERT_TRUE(draw());
    EXPECT_EQ(hidden.Image().pixel(1250, 375), 0xFFFF0000U);
    EXPECT_NE(hidden.Image().pixel(1250 + kPen, 375), 0xFFFF0000U);
}

TEST_F(PageFrame, PointsStandAloneAndLinesJoinThem) {
    addChannel(0, 2); // samples at 0 and 6000 twips
    composer.ChannelPageY[0] = 4500;
    model->LineColor[0] = 0x0000FF;
    const int row = 4500 / 4;
    for (const TraceStyle style : {TraceStyle::Lines, TraceStyle::Points}) {
        inputs.frame.style = style;
        ASSERT_TRUE(draw());
        EXPECT_EQ(hidden.Image().pixel(1500 + 1, row), 0xFFFF0000U);
        EXPECT_EQ(hidden.Image().pixel(700, row) == 0xFFFF0000U, style == TraceStyle::Lines);
    }
}

TEST_F(PageFrame, ATraceIsCutByTheEdgeOfTheFrame) {
    addChannel(0, 100);
    model->SampleData(0, 50) = 32767;
    model->SampleData(0, 51) = -32768;
    print();
    EXPECT_LT(model->PlotY(0, 50), 0);
    EXPECT_GT(model->PlotY(0, 51), 6409);
    EXPECT_EQ(printer.frame().place.height(), 6409);
}

TEST_F(PageFrame, WhatEndsATraceIsToldByItsNumberAndNoFrameIsPasted) {
    const auto errorAfter = [this](auto change) {
        addChannel(0);
        change();
        sheet.drawn.clear();
        const Outcome done = composer.PrintResult(sheet, 100, inputs);
        EXPECT_TRUE(sheet.of(DrawnItem::Kind::Picture).empty());
        EXPECT_EQ(sheet.of(DrawnItem::Kind::Text).size(), 2U) << "what is drawn stays";
        return done ? 0 : done.error().code();
    };
    EXPECT_EQ(errorAfter([this] { model->SampleCount[0] = 0; }), 11);
    EXPECT_EQ(errorAfter([this] { model->VoltIndexView[0] = 99; }), 9);
    EXPECT_EQ(errorAfter([this] { model->TimeIndex[0] = -1; }), 9);
    EXPECT_EQ(errorAfter([this] { model->SampleCount[0] = kSampleRows + 1; }), 9);
    // 5 s a division, shown at the fastest time base: about a hundred million times wider than the page.
    EXPECT_EQ(errorAfter([this] {
                  model->TimeIndex[0] = 27;
                  model->TimeIndexView[0] = 0;
              }),
              6);
    // With this shift the place of sample 0 is far outside but still in range. The samples after it are out of range.
    EXPECT_EQ(errorAfter([this] {
                  model->TimeIndex[0] = 27;
                  model->TimeIndexView[0] = 0;
                  model->ChannelXShift[0] = 4800;
              }),
              6);
}

TEST_F(PageFrame, APrinterThatNamesItsQualityByANegativeNumberGetsASharpFrame) {
    auto properties = printer.properties().value();
    properties.PrintQuality = -4;
    printer.set(properties);
    print();
    EXPECT_EQ(printer.frame().picture.width(), 4004); // 9609 twips at 600 dots per inch
}

} // namespace
} // namespace sixtrace::test
