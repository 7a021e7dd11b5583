// SPDX-License-Identifier: MIT
#include "output/tablefixture.h"

#include "support/strings.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <limits>

namespace sixtrace::test {
namespace {

TEST(TableFill, AtDesignTheTableHas10000EmptyRows) {
    const Table table;
    EXPECT_EQ(table.cells.Rows(), 10000);
    for (const int row : {0, 1, 9999, 10000, -1}) {
        EXPECT_EQ(table.at(row, 1), u""_s) << row;
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
        const QString expected = half == 0       ? u"0"_s
                                 : half % 2 == 0 ? QString::number(-half / 2)
                                                 : u'-' + QString::number(half / 2) + u".5"_s;
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
    EXPECT_EQ(table.at(0, 2), u"ch2 / 1"_s);
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
    EXPECT_EQ(table.at(70, 0), u"70"_s);
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
    EXPECT_EQ(table.at(40, 6), u"78"_s);
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
    const QStringList heads{u""_s,         u"ch1 / 10"_s, u"ch2 / 1"_s,  u"A / 100"_s,
                            u"B / 1000"_s, u"C / 0.1"_s,  u"D / 1E+15"_s};
    for (int col = 0; col < TableCells::kCols; ++col) {
        EXPECT_EQ(table.at(0, col), heads.at(col));
    }
    EXPECT_EQ(table.at(1, 1), u"12.5"_s) << "the factor stands only in the head";
    EXPECT_EQ(table.at(2, 1), u"-12.5"_s);
}

TEST(TableFill, AVerySmallFactorGivesALongHead) {
    Table table;
    table.model->ProbeExp.fill(-310);
    table.fill();
    EXPECT_TRUE(table.at(0, 1).startsWith(u"ch1 / "_s));
    EXPECT_TRUE(table.at(0, 1).endsWith(u"E-310"_s) || table.at(0, 1).endsWith(u"E-311"_s));
    table.model->ProbeExp.fill(-32768);
    table.fill();
    EXPECT_EQ(table.at(0, 6), u"D / 0"_s);
}

TEST(TableFill, AFactorBeyondAllNumbersEndsTheFillAfterTheHeadsOnItsRight) {
    Table table;
    table.model->ProbeExp[3] = 309;
    hold(*table.model, 0, 1, ramp(5, 1));
    table.fill();
    EXPECT_EQ(table.at(0, 6), u"D / 1"_s);
    EXPECT_EQ(table.at(0, 5), u"C / 1"_s);
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
    EXPECT_EQ(table.at(1, 1), u"0"_s);
    EXPECT_EQ(table.at(2, 1), u"-3.7"_s);
}

TEST(TableFill, AValueIsAProductOf32BitReals) {
    Table table;
    hold(*table.model, 0, 0.1F, {30001, 32767, -32768});
    table.fill();
    // 30001 x 0.100000001490116 = 3000.1000447; as 32-bit real 3000.10009765625, seven digits of it 3000.1.
    EXPECT_EQ(table.at(1, 1), u"3000.1"_s);
    EXPECT_EQ(table.at(2, 1), u"3276.7"_s);
    EXPECT_EQ(table.at(3, 1), u"-3276.8"_s);

    // 27307 x 0.300000011920929 = 8192.1003255, which is 8192.1 in seven digits; but 32-bit reals stand 1/1024 apart
    // there, and the nearest one is 8192 + 103/1024 = 8192.1005859375.
    Table coarse;
    hold(*coarse.model, 0, 0.3F, {27307});
    coarse.fill();
    EXPECT_EQ(coarse.at(1, 1), u"8192.101"_s);
}

TEST(TableFill, TheDecimalMarkIsTheOneThatTheTableWasMadeWith) {
    const auto model = std::make_unique<publicM>();
    hold(*model, 0, 0.5F, {1});
    model->ProbeExp[0] = -1;
    TableCells cells(u',');
    fillWhole(cells, *model);
    EXPECT_EQ(cells.TextMatrix(1, 1), u"0,5"_s);
    EXPECT_EQ(cells.TextMatrix(0, 1), u"ch1 / 0,1"_s);
}

TEST(TableFill, BeforeAnyLoadItIsATableOfOneRow) {
    Table table;
    table.model->ProbeExp.fill(1);
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 1);
    EXPECT_EQ(table.at(0, 1), u"ch1 / 10"_s);
    EXPECT_EQ(table.at(1, 0), QString());
}

TEST(TableFill, AFullCaptureFillsTheWholeTable) {
    Table table;
    for (int channel = 0; channel < kChannels; ++channel) {
        hold(*table.model, channel, 1, ramp(kSampleRows, 1));
    }
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 10232);
    EXPECT_EQ(table.at(10231, 0), u"10231"_s);
    EXPECT_EQ(table.at(10231, 6), u"10230"_s);
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
            EXPECT_EQ(table.at(1, 1), present == 1 ? u"7"_s : QString());
            EXPECT_EQ(table.at(10231, 0), u"10231"_s);
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
        EXPECT_EQ(table.at(0, 1), u"ch1 / 1"_s);
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
    EXPECT_EQ(table.at(45, 1), u"44"_s);
    EXPECT_EQ(table.at(1, 2), QString());
}

TEST(TableFill, AProductBeyondTheRangeEndsTheFillWhereItStands) {
    Table table;
    hold(*table.model, 0, 1, ramp(50, 1));
    hold(*table.model, 1, 3e38F, {1, 2, 1});
    hold(*table.model, 2, 1, ramp(50, 1));
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 51);
    EXPECT_EQ(table.at(40, 0), u"40"_s);
    EXPECT_EQ(table.at(40, 1), u"39"_s);
    EXPECT_EQ(table.at(1, 2), u"3E+38"_s);
    EXPECT_EQ(table.at(2, 2), QString()) << "twice 3E+38 is no 32-bit real";
    EXPECT_EQ(table.at(1, 3), QString()) << "the columns behind it are not reached";
    EXPECT_EQ(table.at(41, 0), QString());

    Table late;
    hold(*late.model, 0, 3e38F, ramp(50, 0));
    late.model->SampleData(0, 44) = 9;
    late.fill();
    EXPECT_EQ(late.at(44, 1), u"0"_s);
    EXPECT_EQ(late.at(45, 0), u"45"_s);
    EXPECT_EQ(late.at(45, 1), QString());
    EXPECT_EQ(late.at(46, 0), QString());
}

TEST(TableFill, AFactorThatIsNoNumberEndsTheFill) {
    Table table;
    hold(*table.model, 0, std::numeric_limits<float>::quiet_NaN(), {1});
    table.fill();
    EXPECT_EQ(table.cells.Rows(), 2);
    EXPECT_EQ(table.at(1, 0), u"1"_s);
    EXPECT_EQ(table.at(1, 1), QString());
}

TEST(TableFill, ANewFillEmptiesTheCells) {
    Table table;
    hold(*table.model, 0, 1, ramp(50, 1));
    table.fill();
    table.model->ChannelPresent[0] = 0;
    table.fill();
    EXPECT_EQ(table.at(3, 0), u"3"_s);
    EXPECT_EQ(table.at(3, 1), QString());
}

} // namespace
} // namespace sixtrace::test
