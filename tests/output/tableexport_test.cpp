// SPDX-License-Identifier: MIT
#include "output/tablefixture.h"
#include "support/hardships.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

/// The expected text file: each cell is padded with blanks to the next multiple of 14.
QByteArray byRule(const TableExport& table) {
    QByteArray file = table.unit.toLocal8Bit() + "\r\n";
    for (int row = 0; row < table.cells.Rows(); ++row) {
        int onLine = 0;
        for (int col = 0; col < TableCells::kCols; ++col) {
            if (!table.ticked[static_cast<std::size_t>(col)]) {
                continue;
            }
            const QByteArray cell = table.cells.TextMatrix(row, col).toLatin1();
            file += cell;
            onLine += static_cast<int>(cell.size());
            do {
                file += ' ';
                ++onLine;
            } while (onLine % 14 != 0);
        }
        file += "\r\n";
    }
    return file;
}

NumberedArray<bool, TableCells::kCols> mix(unsigned bits) {
    NumberedArray<bool, TableCells::kCols> ticked{};
    for (std::size_t col = 0; col < ticked.size(); ++col) {
        ticked[col] = (bits >> col & 1U) != 0;
    }
    return ticked;
}

/// Channels of different lengths, one of them without samples, with negative and fractional values.
Table uneven() {
    Table table;
    hold(*table.model, 0, 20, {-3, 0, 7});
    hold(*table.model, 1, 0.4F, {1, -1, 30000, 12345, 2});
    hold(*table.model, 3, 1.6e-7F, {1, -1});
    hold(*table.model, 5, -1000000.5F, {1, 2, 3, -32768});
    table.model->ProbeExp[1] = 1;
    table.fill();
    return table;
}

TEST(TextTable, IsThisForTwoChannels) {
    Table table;
    hold(*table.model, 0, 20, {-1, 0});
    hold(*table.model, 1, 0.5F, {5});
    table.model->ProbeExp[1] = 1;
    table.fill();
    const QByteArray expected =
        "mV\r\n"
        "              ch1 / 1       ch2 / 10      A / 1         B / 1         C / 1         D / 1         \r\n"
        "1             -20           2.5                                                                   \r\n"
        "2             0                                                                                   \r\n";
    EXPECT_EQ(textTable({table.cells, u"mV"_s}), expected);
}

TEST(TextTable, EveryMixOfTicksForUnevenChannelsIsByteForByteTheRule) {
    const Table table = uneven();
    for (unsigned bits = 0; bits < 128; ++bits) {
        const TableExport what{table.cells, u"单位：（mV）"_s, mix(bits)};
        ASSERT_EQ(textTable(what), byRule(what)) << bits;
    }
}

TEST(TextTable, WithoutAnyTickItIsTheUnitLineAndBareLineEnds) {
    const Table table = uneven(); // five samples at most
    EXPECT_EQ(textTable({table.cells, u"mV"_s, mix(0)}), QByteArray("mV\r\n\r\n\r\n\r\n\r\n\r\n\r\n"));
}

TEST(TextTable, AColumnWithoutATickLeavesNoTraceAndTheOthersMoveLeft) {
    Table table;
    hold(*table.model, 2, 1, {8});
    table.fill();
    EXPECT_EQ(textTable({table.cells, u"mV"_s, mix(0b1001)}),
              QByteArray("mV\r\n              A / 1         \r\n1             8             \r\n"));
}

TEST(TextTable, AHeadOf14CharactersOrMoreTakesTheNextZone) {
    Table table;
    table.cells.setRows(2);
    table.cells.setHead(1, std::string(14, 'x'));
    table.cells.setHead(2, "y");
    EXPECT_EQ(textTable({table.cells, u"mV"_s, mix(0b110)}), "mV\r\n" + QByteArray(14, 'x') + QByteArray(14, ' ') +
                                                                 "y" + QByteArray(13, ' ') + "\r\n" +
                                                                 QByteArray(28, ' ') + "\r\n");
}

TEST(TextTable, BeforeTheFillItHasTheRowsOfTheDesign) {
    const Table table;
    const QByteArray file = textTable({table.cells, u"mV"_s, mix(1)});
    EXPECT_EQ(file.size(), 4 + 10000 * 16);
    EXPECT_EQ(file.count("\r\n"), 10001);
}

TEST(TextTable, InMidFillTheRowsThatAreNotFilledYetAreBlank) {
    Table table;
    hold(*table.model, 0, 1, ramp(60, 1));
    TableFill fill(table.cells, *table.model);
    EXPECT_TRUE(fill.step());
    EXPECT_TRUE(fill.step()); // row 41
    const TableExport what{table.cells, u"mV"_s};
    const QByteArray file = textTable(what);
    EXPECT_EQ(file, byRule(what));
    EXPECT_EQ(file.count("\r\n"), 62) << "Rows is final";
    const QList<QByteArray> lines = file.split('\n');
    EXPECT_TRUE(lines.at(42).startsWith("41            40 "));
    for (int row = 42; row <= 60; ++row) {
        EXPECT_EQ(lines.at(row + 1), QByteArray(98, ' ') + '\r');
    }
}

TEST(TextTable, WritesTheDecimalMarkOfTheDesktop) {
    const auto model = std::make_unique<publicM>();
    hold(*model, 0, 0.5F, {1, 2});
    for (const char16_t mark : {u',', u'\u066B'}) {
        TableCells cells(mark);
        fillWhole(cells, *model);
        const QByteArray file = textTable({cells, u"mV"_s, mix(0b10)});
        EXPECT_EQ(QString::fromLocal8Bit(file),
                  u"mV\r\nch1 / 1       \r\n0"_s + QChar(mark) + u"5           \r\n1             \r\n"_s);
    }
}

TEST(CsvTable, HasOneHeaderRowAndAPointWhateverTheDesktopSays) {
    const auto model = std::make_unique<publicM>();
    hold(*model, 0, 0.5F, {1, -3});
    hold(*model, 2, 20, {7});
    TableCells cells(u',');
    fillWhole(cells, *model);
    EXPECT_EQ(csvTable({cells, u"单位"_s}), QByteArray("sequence,ch1 / 1,ch2 / 1,A / 1,B / 1,C / 1,D / 1\n"
                                                       "1,0.5,,140,,,\n"
                                                       "2,-1.5,,,,,\n"));
    EXPECT_EQ(csvTable({cells, u"mV"_s, mix(0b1010)}), QByteArray("ch1 / 1,A / 1\n0.5,140\n-1.5,\n"));
}

class TableFiles : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
    static QByteArray read(const QString& file) {
        QFile source(file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray("(no file)");
    }
    static void put(const QString& file, const QByteArray& content) {
        QFile target(file);
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        ASSERT_EQ(target.write(content), content.size());
    }
    Table table = uneven();
    TableExport what{table.cells, u"mV"_s};

    [[nodiscard]] QStringList names() const {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

private:
    QTemporaryDir m_folder;
};

const std::vector<std::pair<const char*, Outcome (*)(const TableExport&, const QString&)>> kSaves{
    {"t.txt", SaveTextTable}, {"t.xls", SaveExcelTable}, {"t.xlsx", SaveExcelTable}};

TEST_F(TableFiles, TheTextFileReplacesAnExistingOne) {
    put(path("t.txt"), QByteArray(10000, 'x'));
    ASSERT_TRUE(SaveTextTable(what, path("t.txt")).ok());
    EXPECT_EQ(read(path("t.txt")), textTable(what));
}

TEST_F(TableFiles, APathThatCannotBeWrittenIsTheErrorOfItsKind) {
    const std::vector<std::pair<QString, int>> paths{
        {path("none/t"), 76}, {path("."), 75}, {u"/dev/full"_s, 75}, {u"/dev/null"_s, 75}};
    for (const auto& [target, number] : paths) {
        for (const auto save : {SaveTextTable, SaveExcelTable}) {
            const Outcome saved = save(what, target);
            ASSERT_FALSE(saved.ok()) << target.toStdString();
            EXPECT_EQ(saved.error().code(), number) << target.toStdString();
        }
    }
    EXPECT_EQ(SaveExcelTable(what, path("none/t.xlsx")).error().code(), 76);
}

TEST_F(TableFiles, AWorkbookWithoutANameIsNone) {
    EXPECT_TRUE(SaveExcelTable(what, QString()).ok());
}

TEST_F(TableFiles, AWorkbookOfATableOfOneRowFailsAndLeavesTheExistingFile) {
    Table empty;
    empty.fill();
    for (const char* name : {"t.xls", "t.xlsx"}) {
        put(path(name), "kept");
        for (const unsigned bits : {127U, 0U}) {
            const Outcome saved = SaveExcelTable({empty.cells, u"mV"_s, mix(bits)}, path(name));
            ASSERT_FALSE(saved.ok());
            EXPECT_EQ(saved.error(), RuntimeError::of(ErrorNumber::SubscriptOutOfRange));
        }
        EXPECT_EQ(read(path(name)), QByteArray("kept"));
    }
    EXPECT_TRUE(SaveTextTable({empty.cells, u"mV"_s}, path("t.txt")).ok());
}

TEST_F(TableFiles, AFullDiskIsError61AndTheExistingFileSurvives) {
    Table full;
    for (int channel = 0; channel < kChannels; ++channel) {
        hold(*full.model, channel, 0.7F, ramp(kSampleRows, channel + 1));
    }
    full.fill();
    for (const auto& [name, save] : kSaves) {
        for (const rlim_t room : {rlim_t{0}, rlim_t{700}, rlim_t{4096}, rlim_t{100'000}, rlim_t{300'000}}) {
            put(path(name), "kept");
            Outcome saved = success();
            {
                const SmallDisk disk(room);
                saved = save({full.cells, u"mV"_s}, path(name));
            }
            ASSERT_FALSE(saved.ok()) << name << ' ' << room;
            EXPECT_EQ(saved.error().code(), 61) << name << ' ' << room;
            EXPECT_EQ(read(path(name)), QByteArray("kept")) << name << ' ' << room;
        }
    }
    EXPECT_EQ(names(), (QStringList{u"t.txt"_s, u"t.xls"_s, u"t.xlsx"_s})) << "nothing half written is left";
}

TEST_F(TableFiles, AReadOnlyFolderIsError70AndTheExistingFileSurvives) {
    const QDir folder(path("locked"));
    ASSERT_TRUE(folder.mkpath(u"."_s));
    for (const auto& [name, save] : kSaves) {
        put(folder.filePath(QString::fromUtf8(name)), "kept");
    }
    constexpr QFile::Permissions kLocked =
        QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    for (const QString& each : {path("."), folder.path()}) {
        ASSERT_TRUE(QFile::setPermissions(each, kLocked));
    }
    for (const auto& [name, save] : kSaves) {
        Outcome saved = success();
        {
            const OrdinaryUser user;
            saved = save(what, folder.filePath(QString::fromUtf8(name)));
        }
        ASSERT_FALSE(saved.ok()) << name;
        EXPECT_EQ(saved.error().code(), 70) << name;
        EXPECT_EQ(read(folder.filePath(QString::fromUtf8(name))), QByteArray("kept")) << name;
    }
    for (const QString& each : {path("."), folder.path()}) {
        ASSERT_TRUE(QFile::setPermissions(each, kLocked | QFile::WriteOwner));
    }
}

TEST_F(TableFiles, AWorkbookThatCannotBeLaidOutLeavesNothingBehind) {
    Table empty;
    empty.fill();
    EXPECT_FALSE(SaveExcelTable({empty.cells, u"mV"_s}, path("new.xlsx")).ok());
    EXPECT_FALSE(SaveExcelTable({empty.cells, u"mV"_s}, path("new.xls")).ok());
    EXPECT_EQ(names(), QStringList());
}

} // namespace
} // namespace sixtrace::test
