// SPDX-License-Identifier: MIT
#include "apps/program.h"
#include "capture/capturewriter.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

/// Sets the language of the desktop for the programs that a test starts.
class Desktop {
public:
    explicit Desktop(const char* locale)
        : m_before(qgetenv("LC_ALL")) {
        qputenv("LC_ALL", locale);
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() { m_before.isNull() ? qunsetenv("LC_ALL") : qputenv("LC_ALL", m_before); }

private:
    QByteArray m_before;
};

class KqxTable : public ::testing::Test {
protected:
    void SetUp() override {
        const CaptureBlock one{.id = '1',
                               .screenPoints = 3,
                               .sampleCount = 3,
                               .probeExp = 1,
                               .sampleInterval = 2,
                               .voltPerCount = 12.5F,
                               .samples = {1, 0, -3}};
        const CaptureBlock two{
            .id = 'A', .screenPoints = 1, .sampleCount = 1, .sampleInterval = 0.5F, .voltPerCount = 20, .samples = {7}};
        QFile file(path(u"capture.bin"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(captureBytes(*captureForm("V11"), {one, two}));
    }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] Ran table(const QString& out, const QStringList& more = {}) const {
        return run(u"kqx"_s, QStringList{u"table"_s, path(u"capture.bin"_s), path(out)} + more);
    }
    [[nodiscard]] QByteArray written(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(KqxTable, WritesCsvWithAPointAndOneHeaderRowWhateverTheLocale) {
    for (const char* locale : {"C", "C.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8", "ar_EG.UTF-8"}) {
        const Desktop desktop(locale);
        const Ran ran = table(u"t.csv"_s);
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        EXPECT_EQ(written(u"t.csv"_s), QByteArray("sequence,ch1 / 10,ch2 / 1,A / 1,B / 1,C / 1,D / 1\n"
                                                  "1,12.5,,140,,,\n"
                                                  "2,0,,,,,\n"
                                                  "3,-37.5,,,,,\n"))
            << locale;
    }
}

TEST_F(KqxTable, WritesTheTextFileWithTheDecimalMarkOfTheDesktop) {
    for (const auto& [locale, value] : {std::pair("C.UTF-8", "-37.5"), {"de_DE.UTF-8", "-37,5"}}) {
        const Desktop desktop(locale);
        const Ran ran = table(u"t.txt"_s, {u"--columns"_s, u"0,1"_s, u"--language"_s, u"1"_s});
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        EXPECT_TRUE(written(u"t.txt"_s).startsWith("Unit: mV\r\n              ch1 / 10      \r\n1             12"));
        const QByteArray last = QByteArray("3             ") + value + "         \r\n";
        EXPECT_TRUE(written(u"t.txt"_s).endsWith(last)) << locale;
    }
}

TEST_F(KqxTable, TheUnitLineIsChineseUnlessAskedOtherwise) {
    const Desktop desktop("C.UTF-8");
    EXPECT_EQ(table(u"t.txt"_s).exitCode, 0);
    EXPECT_TRUE(written(u"t.txt"_s).startsWith("单位：（mV）\r\n"));
}

TEST_F(KqxTable, WritesBothKindsOfWorkbook) {
    EXPECT_EQ(table(u"t.xls"_s).exitCode, 0);
    EXPECT_TRUE(written(u"t.xls"_s).startsWith("\xD0\xCF\x11\xE0"));
    EXPECT_EQ(table(u"t.xlsx"_s).exitCode, 0);
    EXPECT_TRUE(written(u"t.xlsx"_s).startsWith("PK"));
}

TEST_F(KqxTable, WritesTheColumnsAskedForInTheOrderInWhichTheyAreNamed) {
    EXPECT_EQ(table(u"t.csv"_s, {u"--columns"_s, u"3, 1"_s}).exitCode, 0);
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("A / 1,ch1 / 10\n140,12.5\n,0\n,-37.5\n"));
    EXPECT_EQ(table(u"t.csv"_s, {u"--columns"_s, u"1,0,1"_s}).exitCode,
              0); // a column is written once, even if it is named twice
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("ch1 / 10,sequence\n12.5,1\n0,2\n-37.5,3\n"));
    const Desktop desktop("C.UTF-8");
    EXPECT_EQ(table(u"t.txt"_s, {u"--columns"_s, u"3,1"_s, u"--language=1"_s}).exitCode, 0);
    EXPECT_TRUE(written(u"t.txt"_s).startsWith("Unit: mV\r\nA / 1         ch1 / 10      \r\n140           12.5"));
}

TEST_F(KqxTable, SamplesThatACutFileDoesNotHoldAreEmptyInACsvOnly) {
    QFile file(path(u"capture.bin"_s));
    ASSERT_TRUE(file.resize(10 + 51 + 2)); // the first of three samples
    const Ran ran = table(u"t.csv"_s);
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("at byte 63: ch1: the file ends after sample 1 of 3")) << ran.err.toStdString();
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("sequence,ch1 / 10,ch2 / 1,A / 1,B / 1,C / 1,D / 1\n"
                                              "1,12.5,,,,,\n2,,,,,,\n3,,,,,,\n"));
    const Desktop desktop("C.UTF-8");
    EXPECT_EQ(table(u"t.txt"_s, {u"--columns"_s, u"1"_s}).exitCode, 1);
    EXPECT_TRUE(written(u"t.txt"_s).endsWith("12.5          \r\n0             \r\n0             \r\n"));
}

TEST_F(KqxTable, TimeAndVoltsAreThoseAtTheProbesTip) {
    EXPECT_EQ(table(u"t.csv"_s, {u"--volts"_s, u"--columns"_s, u"0,1,3"_s}).exitCode, 0);
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("sequence,ch1_v,A_v\n1,0.125,0.14\n2,0,\n3,-0.375,\n"));
    // The intervals of the two channels differ: 2 us and 0.5 us.
    EXPECT_EQ(table(u"t.csv"_s, {u"--time"_s, u"--columns"_s, u"0,1,3"_s}).exitCode, 0);
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("sequence,time_ch1_s,ch1 / 10,time_A_s,A / 1\n"
                                              "1,0,12.5,0,140\n2,2e-6,0,,\n3,4e-6,-37.5,,\n"));
    EXPECT_EQ(table(u"t.csv"_s, {u"--time"_s, u"--volts"_s, u"--columns"_s, u"1,2"_s}).exitCode, 0);
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("time_s,ch1_v,ch2_v\n0,0.125,\n2e-6,0,\n4e-6,-0.375,\n"));
    EXPECT_EQ(table(u"t.txt"_s, {u"--time"_s}).exitCode, 2);
    EXPECT_EQ(table(u"t.xlsx"_s, {u"--volts"_s}).exitCode, 2);
}

TEST_F(KqxTable, TheLanguageFileBesideTheProgramIsFoundWithoutAHome) {
    const QByteArray home = qgetenv("HOME");
    qunsetenv("HOME");
    qunsetenv("XDG_DATA_HOME");
    const Desktop desktop("C.UTF-8");
    EXPECT_EQ(table(u"t.txt"_s, {u"--language"_s, u"1"_s}).exitCode, 0);
    EXPECT_TRUE(written(u"t.txt"_s).startsWith("Unit: mV\r\n"));
    qputenv("HOME", home);
}

TEST_F(KqxTable, ManyFilesMakeManyTables) {
    ASSERT_TRUE(QFile::copy(path(u"capture.bin"_s), path(u"other.bin"_s)));
    ASSERT_TRUE(QDir(path(QString())).mkdir(u"out"_s));
    const Ran ran = run(u"kqx"_s, {u"table"_s, u"--to"_s, u"csv"_s, u"--out-dir"_s, path(u"out"_s),
                                   path(u"capture.bin"_s), path(u"other.bin"_s)});
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(table(u"t.csv"_s).exitCode, 0);
    EXPECT_EQ(written(u"out/capture.csv"_s), written(u"t.csv"_s));
    EXPECT_EQ(written(u"out/other.csv"_s), written(u"t.csv"_s));
    const Ran printed = run(u"kqx"_s, {u"table"_s, path(u"capture.bin"_s), u"-"_s, u"--to"_s, u"csv"_s});
    EXPECT_EQ(printed.out, written(u"t.csv"_s));
}

TEST_F(KqxTable, RefusesWrongUseWithExitCode2AndWritesNothing) {
    const std::vector<std::pair<QString, QStringList>> uses{{u"t.ods"_s, {}},
                                                            {u"t"_s, {}},
                                                            {u"t.csv"_s, {u"--columns"_s, u"7"_s}},
                                                            {u"t.csv"_s, {u"--columns"_s, u""_s}},
                                                            {u"t.csv"_s, {u"--columns"_s, u"-1,x"_s}},
                                                            {u"t.csv"_s, {u"--language"_s, u"2"_s}},
                                                            {u"t.csv"_s, {u"more"_s}}};
    for (const auto& [name, more] : uses) {
        const Ran ran = table(name, more);
        EXPECT_EQ(ran.exitCode, 2) << more.join(u' ').toStdString();
        EXPECT_FALSE(ran.err.isEmpty());
        EXPECT_EQ(written(name), QByteArray("(no file)"));
    }
}

TEST_F(KqxTable, TellsWhatCannotBeReadOrWrittenWithExitCode1) {
    const Ran gone = run(u"kqx"_s, {u"table"_s, path(u"none.bin"_s), path(u"t.csv"_s)});
    EXPECT_EQ(gone.exitCode, 1);
    EXPECT_TRUE(gone.err.contains("none.bin"));
    const Ran nowhere = table(u"none/t.csv"_s);
    EXPECT_EQ(nowhere.exitCode, 1);
    EXPECT_TRUE(nowhere.err.contains("Path not found"));
    const Ran folder = run(u"kqx"_s, {u"table"_s, path(u"."_s), path(u"t.csv"_s)});
    EXPECT_EQ(folder.exitCode, 1);
    EXPECT_EQ(written(u"t.csv"_s), QByteArray("(no file)"));
}

} // namespace
} // namespace sixtrace::test
