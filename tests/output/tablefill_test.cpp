// SPDX-License-Identifier: MIT
#include "output/tablefixture.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace sixtrace::test {
namespace {

TEST(TableFill, AtDesignTheTableHas10000EmptyRows) {
    const Table table;
    EXPECT_EQ(table.cells.Rows(), 10000);
    for (const int row : {0, 1, 9999, 10000, -1}) {
        EXPECT_EQ(table.at(row, 1), text("")) << row;
    }
}

TEST(TableFill, ChannelsOfDifferentLengthsEndInEmptyCellsAndTheSequenceRunsToTheLongest) {
    Table table;
    hold(*table.model, 0, 20, ramp(60, 1));
    hold(*table.model, 3, 0.5F, ramp(45, -1));
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 61);
    for (int row = 1; row <= 60; ++row) {
        EXPECT_EQ(table.at(row, 0), QString::number(row));
        EXPECT_EQ(table.at(row, 1), QString::number(20 * (row - 1)));
        const int half = row - 1; // 0, -0.5, -1, -1.5 ...
        const QString expected = half == 0       ? text("0")
                                 : half % 2 == 0 ? QString::number(-half / 2)
                                                 : u'-' + QString::number(half / 2) + text(".5");
        EXPECT_EQ(table.at(row, 4), row <= 45 ? expected : QString()) << row;
        EXPECT_EQ(table.at(row, 2), QString());
    }
}

TEST(TableFill, AnAbsentChannelKeepsItsHeadTextButAllItsCellsStayEmpty) {
    Table table;
    hold(*table.model, 0, 1, ramp(50, 1));
    hold(*table.model, 1, 1, ramp(50, 1));
    table.model->ChannelPresent[1] = 0;
    table.fill();
    EXPECT_EQ(table.at(0, 2), text("ch2 / 1"));
    for (int row = 1; row <= 50; ++row) {
        EXPECT_EQ(table.at(row, 1), QString::number(row - 1));
        EXPECT_EQ(table.at(row, 2), QString());
    }
}

TEST(TableFill, TheCountOfAnAbsentChannelCountsForTheRows) {
    Table table;
    hold(*table.model, 0, 1, ramp(3, 1));
    table.model->SampleCount[5] = 70;
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 71);
    EXPECT_EQ(table.at(70, 0), text("70"));
    EXPECT_EQ(table.at(4, 1), QString());
}

TEST(TableFill, ACaptureOf40SamplesOrFewerIsDoneInTheFirstStep) {
    for (const int count : {1, 39, 40}) {
        Table table;
        hold(*table.model, 2, 1, ramp(count, 1));
        TableFill fill(table.cells, *table.model);
        EXPECT_FALSE(fill.step());
        EXPECT_TRUE(fill.finished());
        EXPECT_EQ(fill.rowsWritten(), count);
        EXPECT_EQ(table.at(count, 3), QString::number(count - 1));
    }
}

TEST(TableFill, TheFirst40RowsComeAtOnceAndTheRestRowByRowInOrder) {
    Table table;
    hold(*table.model, 0, 1, ramp(43, 1));
    hold(*table.model, 5, 1, ramp(43, 2));
    TableFill fill(table.cells, *table.model);
    EXPECT_TRUE(fill.step());
    EXPECT_EQ(table.cells.Rows(), 44) << "Rows is final at once";
    EXPECT_EQ(table.at(40, 6), text("78"));
    for (int row = 41; row <= 43; ++row) {
        EXPECT_EQ(table.at(row, 0), QString());
        EXPECT_EQ(table.at(row, 6), QString());
        EXPECT_EQ(fill.step(), row < 43);
        EXPECT_EQ(fill.rowsWritten(), row);
        EXPECT_EQ(table.at(row, 0), QString::number(row));
        EXPECT_EQ(table.at(row, 6), QString::number(2 * (row - 1)));
    }
    EXPECT_TRUE(fill.finished());
    EXPECT_FALSE(fill.step());
}

TEST(TableFill, TheHeadsBearNameAndProbeFactor) {
    Table table;
    table.model->ProbeExp = {1, 0, 2, 3, -1, 15};
    hold(*table.model, 0, 12.5F, {1, -1});
    table.fill();
    const QStringList heads{text(""),         text("ch1 / 10"), text("ch2 / 1"),  text("A / 100"),
                            text("B / 1000"), text("C / 0.1"),  text("D / 1E+15")};
    for (int col = 0; col < TableCells::kCols; ++col) {
        EXPECT_EQ(table.at(0, col), heads.at(col));
    }
    EXPECT_EQ(table.at(1, 1), text("12.5")) << "the factor stands only in the head";
    EXPECT_EQ(table.at(2, 1), text("-12.5"));
}

TEST(TableFill, AVerySmallFactorGivesALongHead) {
    Table table;
    table.model->ProbeExp.fill(-310);
    table.fill();
    EXPECT_TRUE(table.at(0, 1).startsWith(text("ch1 / ")));
    EXPECT_TRUE(table.at(0, 1).endsWith(text("E-310")) || table.at(0, 1).endsWith(text("E-311")));
    table.model->ProbeExp.fill(-32768);
    table.fill();
    EXPECT_EQ(table.at(0, 6), text("D / 0"));
}

TEST(TableFill, AFactorBeyondAllNumbersEndsTheFillAfterTheHeadsOnItsRight) {
    Table table;
    table.model->ProbeExp[3] = 309;
    hold(*table.model, 0, 1, ramp(5, 1));
    table.fill();
    EXPECT_EQ(table.at(0, 6), text("D / 1"));
    EXPECT_EQ(table.at(0, 5), text("C / 1"));
    for (int col = 0; col < 5; ++col) {
        EXPECT_EQ(table.at(0, col), QString());
    }
    EXPECT_EQ(table.cells.Rows(), 10000);
    EXPECT_EQ(table.at(1, 1), QString());
}

TEST(TableFill, ASampleOf0Shows0) {
    Table table;
    hold(*table.model, 0, -3.7F, {0, 1});
    table.fill();
    EXPECT_EQ(table.at(1, 1), text("0"));
    EXPECT_EQ(table.at(2, 1), text("-3.7"));
}

TEST(TableFill, AValueIsAProductOf32BitReals) {
    Table table;
    hold(*table.model, 0, 0.1F, {30001, 32767, -32768});
    table.fill();
    // 30001 x 0.100000001490116 = 3000.1000447; as 32-bit real 3000.10009765625, seven digits of it 3000.1.
    EXPECT_EQ(table.at(1, 1), text("3000.1"));
    EXPECT_EQ(table.at(2, 1), text("3276.7"));
    EXPECT_EQ(table.at(3, 1), text("-3276.8"));

    // 27307 x 0.300000011920929 = 8192.1003255, which is 8192.1 in seven digits; but 32-bit reals stand 1/1024 apart
    // there, and the nearest one is 8192 + 103/1024 = 8192.1005859375.
    Table coarse;
    hold(*coarse.model, 0, 0.3F, {27307});
    coarse.fill();
    EXPECT_EQ(coarse.at(1, 1), text("8192.101"));
}

TEST(TableFill, TheDecimalMarkIsTheOneThatTheTableWasMadeWith) {
    const auto model = std::make_unique<publicM>();
    hold(*model, 0, 0.5F, {1});
    model->ProbeExp[0] = -1;
    TableCells cells(u',');
    fillWhole(cells, *model);
    EXPECT_EQ(cells.TextMatrix(1, 1), text("0,5"));
    EXPECT_EQ(cells.TextMatrix(0, 1), text("ch1 / 0,1"));
}

TEST(TableFill, BeforeAnyLoadItIsATableOfOneRow) {
    Table table;
    table.model->ProbeExp.fill(1);
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 1);
    EXPECT_EQ(table.at(0, 1), text("ch1 / 10"));
    EXPECT_EQ(table.at(1, 0), QString());
}

TEST(TableFill, AFullCaptureFillsTheWholeTable) {
    Table table;
    for (int channel = 0; channel < kChannels; ++channel) {
        hold(*table.model, channel, 1, ramp(kSampleRows, 1));
    }
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 10232);
    EXPECT_EQ(table.at(10231, 0), text("10231"));
    EXPECT_EQ(table.at(10231, 6), text("10230"));
    EXPECT_EQ(table.at(10232, 6), QString());
}

TEST(TableFill, HostileCountsNeitherGrowTheTableNorReadBeyondTheSamples) {
    for (const std::int32_t count : {10232, 20000, 2147483646}) {
        for (const std::uint8_t present : {std::uint8_t{0}, std::uint8_t{1}}) {
            Table table;
            hold(*table.model, 0, 1, {7});
            table.model->SampleCount[0] = count;
            table.model->ChannelPresent[0] = present;
            table.fill();
            EXPECT_EQ(table.cells.Rows(), 10232) << count;
            EXPECT_EQ(table.at(1, 1), present == 1 ? text("7") : QString());
            EXPECT_EQ(table.at(10231, 0), text("10231"));
        }
    }
}

TEST(TableFill, CountsThatGiveNoRowsEndTheFillBehindTheHeads) {
    for (const std::int32_t count : {std::numeric_limits<std::int32_t>::max(), -1, -2147483647 - 1}) {
        Table table;
        table.model->ChannelPresent[0] = 1;
        table.model->SampleCount.fill(count);
        table.fill();
        EXPECT_EQ(table.cells.Rows(), 10000) << count;
        EXPECT_EQ(table.at(0, 1), text("ch1 / 1"));
        EXPECT_EQ(table.at(1, 0), QString());
    }
}

TEST(TableFill, ANegativeCountBesideOthersIsAnEmptyColumn) {
    Table table;
    hold(*table.model, 0, 1, ramp(45, 1));
    table.model->ChannelPresent[1] = 1;
    table.model->SampleCount[1] = -5;
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 46);
    EXPECT_EQ(table.at(45, 1), text("44"));
    EXPECT_EQ(table.at(1, 2), QString());
}

TEST(TableFill, AProductBeyondTheRangeEndsTheFillWhereItStands) {
    Table table;
    hold(*table.model, 0, 1, ramp(50, 1));
    hold(*table.model, 1, 3e38F, {1, 2, 1});
    hold(*table.model, 2, 1, ramp(50, 1));
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 51);
    EXPECT_EQ(table.at(40, 0), text("40"));
    EXPECT_EQ(table.at(40, 1), text("39"));
    EXPECT_EQ(table.at(1, 2), text("3E+38"));
    EXPECT_EQ(table.at(2, 2), QString()) << "twice 3E+38 is no 32-bit real";
    EXPECT_EQ(table.at(1, 3), QString()) << "the columns behind it are not reached";
    EXPECT_EQ(table.at(41, 0), QString());

    Table late;
    hold(*late.model, 0, 3e38F, ramp(50, 0));
    late.model->SampleData(0, 44) = 9;
    late.fill();
    EXPECT_EQ(late.at(44, 1), text("0"));
    EXPECT_EQ(late.at(45, 0), text("45"));
    EXPECT_EQ(late.at(45, 1), QString());
    EXPECT_EQ(late.at(46, 0), QString());
}

TEST(TableFill, AFactorThatIsNoNumberEndsTheFill) {
    Table table;
    hold(*table.model, 0, std::numeric_limits<float>::quiet_NaN(), {1});
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 2);
    EXPECT_EQ(table.at(1, 0), text("1"));
    EXPECT_EQ(table.at(1, 1), QString());
}

TEST(TableFill, ANewFillEmptiesTheCells) {
    Table table;
    hold(*table.model, 0, 1, ramp(50, 1));
    table.fill();
    table.model->ChannelPresent[0] = 0;
    table.fill();
    EXPECT_EQ(table.at(3, 0), text("3"));
    EXPECT_EQ(table.at(3, 1), QString());
}

} // namespace
} // namespace sixtrace::test
