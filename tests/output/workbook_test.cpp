// SPDX-License-Identifier: MIT
// Compares workbooks cell by cell with what programs of others read from them.
#include "output/biffworkbook.h"
#include "output/tablefixture.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <ostream>

namespace sixtrace::test {
namespace {

/// The content of a cell. Readers that print a sheet as text do not distinguish numbers from texts.
struct Found {
    QString kind; ///< "number", "text" or "any"
    QString value;
};

using Place = std::pair<int, int>;
using Sheet = std::map<Place, Found>;

/// The cells of a workbook as `reader` reads them.
void readBack(const char* reader, const QString& path, Sheet& sheet) {
    QProcess process;
    process.start(u"/usr/bin/python3"_s, {QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/output/read_workbook.py"),
                                          QString::fromUtf8(reader), path});
    ASSERT_TRUE(process.waitForFinished(120000)) << "needs python3, see packaging/packages.sh";
    const QByteArray complaints = process.readAllStandardError();
    ASSERT_EQ(process.exitCode(), 0) << reader << ": " << complaints.toStdString();
    EXPECT_TRUE(complaints.isEmpty()) << reader << ": " << complaints.toStdString();
    for (const QString& line : QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList parts = line.split(u'\t');
        ASSERT_EQ(parts.size(), 4) << line.toStdString();
        sheet[{parts.at(0).toInt(), parts.at(1).toInt()}] = {parts.at(2), parts.at(3)};
    }
}

bool isEmpty(const TableExport& what, int row, int col) {
    return what.cells.TextMatrix(row, col).isEmpty();
}

/// The expected layout: the unit in A1, all heads, and below them, each in its own column, the ticked columns whose
/// first cell is not empty.
std::map<Place, QString> layout(const TableExport& what) {
    std::map<Place, QString> cells{{{0, 0}, what.unit}};
    for (int col = 1; col <= 6; ++col) {
        if (!isEmpty(what, 0, col)) {
            cells[{0, col}] = what.cells.TextMatrix(0, col);
        }
    }
    for (int col = 0; col <= 6; ++col) {
        for (int row = 1; what.ticked.at(static_cast<std::size_t>(col)) && row < what.cells.Rows(); ++row) {
            if (!isEmpty(what, 1, col) && !isEmpty(what, row, col)) {
                cells[{row, col}] = what.cells.TextMatrix(row, col).replace(what.cells.decimalMark(), u'.');
            }
        }
    }
    return cells;
}

void expectReadBack(const TableExport& what, const QString& path, const std::vector<const char*>& readers) {
    ASSERT_TRUE(SaveExcelTable(what, path).ok());
    const std::map<Place, QString> expected = layout(what);
    for (const char* reader : readers) {
        Sheet sheet;
        ASSERT_NO_FATAL_FAILURE(readBack(reader, path, sheet));
        EXPECT_EQ(sheet.size(), expected.size()) << reader;
        int wrong = 0;
        for (const auto& [place, value] : expected) {
            const Found found = sheet[place];
            const bool isValue = place.first > 0;
            const bool right = isValue ? found.kind != u"text" && found.value.toDouble() == value.toDouble()
                                       : found.kind != u"number" && found.value == value;
            if (!right && ++wrong < 10) {
                ADD_FAILURE() << reader << " row " << place.first << " column " << place.second << ": "
                              << found.kind.toStdString() << ' ' << found.value.toStdString() << " for "
                              << value.toStdString();
            }
        }
    }
}

const std::vector<const char*> kXlsReaders{"xlrd", "xls2csv", "ssconvert"};
const std::vector<const char*> kXlsxReaders{"openpyxl", "ssconvert"};

class Workbooks : public ::testing::Test {
protected:
    void expectBothKinds(const TableExport& what) {
        expectReadBack(what, m_folder.filePath(u"t.xls"_s), kXlsReaders);
        expectReadBack(what, m_folder.filePath(u"t.xlsx"_s), kXlsxReaders);
    }
    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }

private:
    QTemporaryDir m_folder;
};

TEST_F(Workbooks, HoldTheWholeTableAsNumbersBelowItsHeads) {
    Table table;
    hold(*table.model, 0, 20, {-3, 0, 7});
    hold(*table.model, 1, 0.4F, {1, -1, 30000, 12345, 2});
    hold(*table.model, 3, 1.6e-7F, {1, -1});
    hold(*table.model, 5, -1000000.5F, {1, 2, 3, -32768});
    table.model->ProbeExp[1] = 1;
    table.fill();
    expectBothKinds({table.cells, kUnitCaption});
}

TEST_F(Workbooks, OfAFullCaptureAreTheTableCellByCell) {
    Table table;
    for (int channel = 0; channel < kChannels; ++channel) {
        std::vector<std::int16_t> samples;
        samples.reserve(kSampleRows);
        for (int i = 0; i < kSampleRows; ++i) {
            samples.push_back(static_cast<std::int16_t>(i * 6367 + channel * 9001)); // the values go through all counts
        }
        hold(*table.model, channel, 20.0F / static_cast<float>(channel + 1) / 3, samples);
    }
    table.fill();
    expectBothKinds({table.cells, u"Unit: mV"_s});
}

TEST_F(Workbooks, TheColumnOfAnAbsentChannelHoldsItsHeadOnly) {
    Table table;
    hold(*table.model, 0, 1, ramp(5, 3));
    hold(*table.model, 1, 1, ramp(5, 2));
    table.model->ChannelPresent[1] = 0;
    table.fill();
    ASSERT_TRUE(SaveExcelTable({table.cells, u"mV"_s}, path("t.xls")).ok());
    Sheet sheet;
    readBack("xlrd", path("t.xls"), sheet);
    EXPECT_EQ((sheet[{0, 2}].value), u"ch2 / 1"_s);
    for (int row = 1; row <= 5; ++row) {
        EXPECT_EQ(sheet.count({row, 2}), 0U);
        EXPECT_EQ((sheet[{row, 1}].value.toDouble()), 3 * (row - 1));
    }
}

TEST_F(Workbooks, AnUntickedColumnStaysBlankWithItsHeadAboveIt) {
    Table table;
    for (int channel = 0; channel < kChannels; ++channel) {
        hold(*table.model, channel, 0.5F, ramp(4, channel + 1));
    }
    table.fill();
    expectBothKinds({table.cells, u"mV"_s, {true, false, true, false, false, true, true}});
    expectBothKinds({table.cells, u"mV"_s, {false, true, false, true, true, false, false}});
    expectBothKinds({table.cells, u"mV"_s, {false, false, false, false, false, false, false}});
}

TEST_F(Workbooks, OnlyTheFirstRowDecidesWhetherAColumnIsWritten) {
    Table table;
    table.cells.setRows(4);
    for (int row = 1; row <= 3; ++row) {
        table.cells.setCell(row, 0, rowNumberText(static_cast<std::uint32_t>(row)));
    }
    table.cells.setCell(1, 1, numberText(5));
    table.cells.setCell(3, 1, numberText(7));
    table.cells.setCell(2, 2, numberText(6));
    expectBothKinds({table.cells, u"mV"_s});
    Sheet sheet;
    readBack("openpyxl", path("t.xlsx"), sheet);
    EXPECT_EQ(sheet.count({2, 2}), 0U) << "its column is empty in row 1";
    EXPECT_EQ((sheet[{3, 1}].value), u"7.0"_s);
}

TEST_F(Workbooks, InMidFillTheRowsThatAreNotFilledYetAreBlank) {
    Table table;
    hold(*table.model, 0, 1, ramp(60, 1));
    TableFill fill(table.cells, *table.model);
    ASSERT_TRUE(fill.step());
    ASSERT_TRUE(fill.step());
    expectBothKinds({table.cells, u"mV"_s});
    Sheet sheet;
    readBack("xlrd", path("t.xls"), sheet);
    EXPECT_EQ((sheet[{41, 1}].value), u"40.0"_s);
    EXPECT_EQ(sheet.count({42, 0}), 0U);
}

TEST_F(Workbooks, HoldNumbersWhateverTheDecimalMarkOfTheDesktop) {
    const auto model = std::make_unique<publicM>();
    hold(*model, 0, 0.5F, {1, 2, -3});
    model->ProbeExp[0] = -1;
    TableCells cells(u',');
    fillWhole(cells, *model);
    expectBothKinds({cells, u"mV"_s});
    Sheet sheet;
    readBack("xlrd", path("t.xls"), sheet);
    EXPECT_EQ((sheet[{0, 1}].value), u"ch1 / 0,1"_s);
    EXPECT_EQ((sheet[{1, 1}].value), u"0.5"_s);
}

TEST_F(Workbooks, TheEndOfTheNameChoosesTheKindInAnySpelling) {
    Table table;
    hold(*table.model, 0, 1, {1});
    table.fill();
    for (const char* name : {"t.XLSX", "t.xls.xlsx"}) {
        expectReadBack({table.cells, u"mV"_s}, path(name), {"openpyxl"});
    }
    for (const char* name : {"t", "t.XLS", "t.xlsx.xls", "xlsx"}) {
        expectReadBack({table.cells, u"mV"_s}, path(name), {"xlrd"});
    }
}

TEST_F(Workbooks, ALongHeadIsKeptUpToTheLongestTextOfACell) {
    Table table;
    table.cells.setRows(2);
    table.cells.setCell(1, 0, rowNumberText(1));
    table.cells.setHead(1, std::string(255, 'x'));
    table.cells.setHead(2, std::string(300, 'y'));
    ASSERT_TRUE(SaveExcelTable({table.cells, QString(127, QChar(0x9898))}, path("t.xls")).ok());
    Sheet sheet;
    readBack("xlrd", path("t.xls"), sheet);
    EXPECT_EQ((sheet[{0, 0}].value), QString(127, QChar(0x9898)));
    EXPECT_EQ((sheet[{0, 1}].value), QString(255, u'x'));
    EXPECT_EQ((sheet[{0, 2}].value), QString(255, u'y'));
}

TEST_F(Workbooks, KeepNumbersOfEveryKindExactly) {
    // Whole numbers of 30 bits, and hundredths of them, have a short form. These values are at its limits and just
    // beyond.
    const std::vector<double> numbers{0,         1,           -1,         0.01,       -0.01,      0.29,       1.15,
                                      536870911, 536870912,   -536870912, -536870913, 5368709.11, 5368709.12, 0.001,
                                      1e-45,     3.402823e38, 0.1,        12.5,       -72,        1234.567};
    BiffWorkbook workbook;
    for (std::size_t row = 0; row < numbers.size(); ++row) {
        workbook.number(static_cast<int>(row), 3, numbers[row]);
    }
    const Result<QByteArray> file = workbook.file();
    ASSERT_TRUE(file);
    QFile target(path("n.xls"));
    ASSERT_TRUE(target.open(QIODevice::WriteOnly));
    target.write(file.value());
    target.close();
    Sheet sheet;
    readBack("xlrd", path("n.xls"), sheet);
    ASSERT_EQ(sheet.size(), numbers.size());
    for (std::size_t row = 0; row < numbers.size(); ++row) {
        const Found& found = sheet[{static_cast<int>(row), 3}];
        EXPECT_EQ(found.kind, u"number"_s);
        EXPECT_EQ(found.value.toDouble(), numbers[row]);
    }
}

} // namespace
} // namespace sixtrace::test
