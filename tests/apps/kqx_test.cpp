// SPDX-License-Identifier: MIT
#include "apps/program.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

class Kqx : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    QString put(const QByteArray& content) const {
        QFile file(path(u"capture.bin"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }
    [[nodiscard]] QString scene(const char* tag, const char* name) const {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), 1);
        EXPECT_TRUE(blocks.has_value());
        return put(captureBytes(*captureForm(tag), *blocks));
    }
    static Ran kqx(const QStringList& arguments) { return run(u"kqx"_s, arguments); }
    [[nodiscard]] Ran screen(const QString& capture, const QStringList& more = {}) const {
        return kqx(QStringList{u"screen"_s, capture, path(u"out.png"_s)} + more);
    }
    [[nodiscard]] QImage picture() const { return QImage(path(u"out.png"_s)).convertToFormat(QImage::Format_RGB32); }
    static QImage golden(const char* name) {
        return QImage(QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/view/golden/") + QString::fromLatin1(name))
            .convertToFormat(QImage::Format_RGB32);
    }

private:
    QTemporaryDir m_folder;
};

CaptureBlock block() {
    CaptureBlock made;
    made.id = 'B';
    made.screenPoints = 4;
    made.sampleCount = 3;
    made.scanPoint = 2;
    made.timeIndex = 16;
    made.zeroLevel = 40;
    made.voltIndex = 5;
    made.probeExp = 1;
    made.sampleInterval = 0.1F;
    made.frequency = 1000;
    made.period = 1000;
    made.voltPerCount = 20;
    made.samples = {-10, 30, 5};
    return made;
}

TEST_F(Kqx, WithoutACommandOrWithAnUnknownOneItEndsWith2) {
    for (const QStringList& arguments : {QStringList{}, QStringList{u"dance"_s}, QStringList{u"--frob"_s}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 2);
        EXPECT_TRUE(ran.err.contains("Usage: kqx COMMAND"));
        EXPECT_TRUE(ran.out.isEmpty());
    }
}

TEST_F(Kqx, SaysHelpAndVersion) {
    EXPECT_EQ(kqx({u"--help"_s}).exitCode, 0);
    EXPECT_TRUE(kqx({u"--help"_s}).out.contains("screen"));
    EXPECT_EQ(kqx({u"--version"_s}).out, "kqx " SIXTRACE_VERSION "\n");
    EXPECT_TRUE(kqx({u"info"_s, u"--help"_s}).out.contains("--json"));
    EXPECT_TRUE(kqx({u"screen"_s, u"--help"_s}).out.contains("--points"));
}

TEST_F(Kqx, WrongUseOfACommandEndsWith2) {
    const QString file = scene("V11", "sine");
    const std::vector<QStringList> wrong{
        {u"info"_s},
        {u"info"_s, u"--jobs"_s, u"0"_s, file},
        {u"measure"_s},
        {u"measure"_s, u"--json"_s, u"--csv"_s, file},
        {u"measure"_s, u"--channels"_s, u"ch3"_s, file},
        {u"convert"_s, file},
        {u"convert"_s, file, path(u"o.ods"_s)},
        {u"info"_s, u"--frob"_s, file},
        {u"screen"_s, file},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"0"_s},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"17"_s},
        {u"screen"_s, file, path(u"o.png"_s), u"--scale"_s, u"x"_s},
    };
    for (const QStringList& arguments : wrong) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 2) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(ran.err.startsWith("kqx: "));
    }
    EXPECT_FALSE(QFile::exists(path(u"o.png"_s)));
}

TEST_F(Kqx, InfoAsJsonHoldsTheFieldsUnderTheirNames) {
    const Ran ran = kqx({u"info"_s, u"--json"_s, put(captureBytes(*captureForm("V11"), {block()}))});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_TRUE(ran.err.isEmpty());
    EXPECT_EQ(ran.out.count('\n'), 1) << "one line";
    const QJsonObject expected{
        {u"file"_s, path(u"capture.bin"_s)},
        {u"form"_s, u"V11"_s},
        {u"FileKind"_s, 4},
        {u"faults"_s, QJsonArray{}},
        {u"channels"_s,
         QJsonArray{QJsonObject{
             {u"index"_s, 3},          {u"label"_s, u"B"_s},    {u"ChannelPresent"_s, 1},   {u"ScreenPoints"_s, 4},
             {u"SampleCount"_s, 3},    {u"ScanPoint"_s, 2},     {u"TimeIndex"_s, 16},       {u"ZeroLevel"_s, 60},
             {u"VoltIndex"_s, 5},      {u"ProbeExp"_s, 1},      {u"SampleInterval"_s, 0.1}, {u"Frequency"_s, 1000},
             {u"Period"_s, 1000},      {u"VoltPerCount"_s, 20}, {u"TimeIndexFile"_s, 16},   {u"VoltIndexFile"_s, 5},
             {u"TimeIndexView"_s, 16}, {u"VoltIndexView"_s, 4}, {u"PeakToPeak"_s, 40},      {u"peak_to_peak_v"_s, 8},
             {u"interval_s"_s, 1e-7},  {u"probe"_s, 10},
         }}},
    };
    EXPECT_EQ(QJsonDocument::fromJson(ran.out).object(), expected) << ran.out.toStdString();
}

TEST_F(Kqx, InfoAsJsonOfACaptureWithoutChannels) {
    const QJsonObject json = QJsonDocument::fromJson(kqx({u"info"_s, scene("W01", "empty"), u"--json"_s}).out).object();
    EXPECT_EQ(json[u"form"_s].toString(), u"W01"_s);
    EXPECT_EQ(json[u"FileKind"_s].toInt(), 3);
    EXPECT_TRUE(json[u"channels"_s].toArray().isEmpty());
}

TEST_F(Kqx, InfoForPeopleNamesReadings) {
    const Ran ran = kqx({u"info"_s, put(captureBytes(*captureForm("V11"), {block()}))});
    EXPECT_EQ(ran.exitCode, 0);
    for (const char* reading : {"form V11", "\nB\n", "3, 4 a screen", "1  mS (row 16)", "1.00 V (row 4)", "1:10",
                                "0.1 us", "1000 Hz", "20 mV", "8000 mV"}) { // 40 counts x 20 mV x 10
        EXPECT_TRUE(ran.out.contains(reading)) << reading << " in\n" << ran.out.toStdString();
    }
}

TEST_F(Kqx, ADamagedFileEndsWith1AndNamesFaultAndPlace) {
    CaptureBlock bad = block();
    bad.timeIndex = 28;
    const QString file = put(captureBytes(*captureForm("V11"), {bad}));
    const Ran ran = kqx({u"info"_s, u"--json"_s, file});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("at byte 29: B: TimeIndex is 28"));
    const QJsonArray faults = QJsonDocument::fromJson(ran.out).object()[u"faults"_s].toArray();
    ASSERT_EQ(faults.size(), 1);
    EXPECT_EQ(faults[0].toObject()[u"offset"_s].toInt(), 29);
    EXPECT_TRUE(faults[0].toObject()[u"text"_s].toString().contains(u"TimeIndex is 28"_s));
}

TEST_F(Kqx, WhatIsNoCaptureEndsWith1) {
    const std::vector<std::pair<QString, QByteArray>> foreign{
        {path(u"missing"_s), "there is no such file"},
        {path(QString()), "folder"},
        {put("hello"), "instead of \"KQX\""},
    };
    for (const auto& [file, sentence] : foreign) {
        for (const QStringList& arguments :
             {QStringList{u"info"_s, file}, QStringList{u"screen"_s, file, path(u"o.png"_s)}}) {
            const Ran ran = kqx(arguments);
            EXPECT_EQ(ran.exitCode, 1) << arguments.join(u' ').toStdString();
            EXPECT_TRUE(ran.err.contains(sentence)) << ran.err.toStdString();
        }
    }
    EXPECT_FALSE(QFile::exists(path(u"o.png"_s)));
    EXPECT_FALSE(QFile::exists(path(u"missing"_s))); // looking makes no file
}

TEST_F(Kqx, HostileCountsNeitherCrashNorHang) {
    for (const std::int32_t number : {0, -1, 10232, 2147483647, -2147483647 - 1}) {
        CaptureBlock bad = block();
        bad.sampleCount = number;
        CaptureBlock worse = block();
        QByteArray bytes = captureBytes(*captureForm("V11"), {bad, worse});
        for (int i = 0; i < 4; ++i) { // screen points, written by hand so that no filling follows
            bytes[10 + 7 + i] = static_cast<char>((static_cast<std::uint32_t>(number) >> (8 * i)) & 0xFFU);
        }
        const QString file = put(bytes);
        EXPECT_EQ(kqx({u"info"_s, file}).exitCode, 1) << number;
        EXPECT_EQ(screen(file).exitCode, 1) << number;
        EXPECT_EQ(picture().size(), QSize(601, 401));
    }
}

TEST_F(Kqx, ScreenIsTheProgramsPicture) {
    ASSERT_EQ(screen(scene("V11", "six")).exitCode, 0);
    EXPECT_EQ(picture(), golden("six_lines.png"));
    ASSERT_EQ(screen(scene("V11", "six"), {u"--points"_s}).exitCode, 0);
    EXPECT_EQ(picture(), golden("six_points.png"));
    ASSERT_EQ(screen(scene("W01", "empty"), {u"--cross"_s}).exitCode, 0);
    EXPECT_EQ(picture(), golden("empty_cross_10.png"));
}

TEST_F(Kqx, ScaleEnlargesEachPixel) {
    ASSERT_EQ(screen(scene("V11", "six"), {u"--scale"_s, u"3"_s}).exitCode, 0);
    const QImage plain = golden("six_lines.png");
    const QImage large = picture();
    ASSERT_EQ(large.size(), QSize(1803, 1203));
    for (int y = 0; y < large.height(); y += 2) {
        for (int x = 0; x < large.width(); x += 2) {
            ASSERT_EQ(large.pixel(x, y), plain.pixel(x / 3, y / 3));
        }
    }
}

TEST_F(Kqx, APictureThatCannotBeWrittenEndsWith1) {
    const Ran ran = kqx({u"screen"_s, scene("V11", "sine"), path(u"none/o.png"_s)});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("Path not found"));
}

TEST_F(Kqx, AScreenGoesToAPngOnly) {
    const QString file = scene("V11", "sine");
    const Ran ran = kqx({u"screen"_s, file, path(u"o.jpg"_s)});
    EXPECT_EQ(ran.exitCode, 2);
    EXPECT_TRUE(ran.err.contains("has to end in .png")) << ran.err.toStdString();
    EXPECT_FALSE(QFile::exists(path(u"o.jpg"_s)));
    EXPECT_EQ(kqx({u"screen"_s, file, path(u"O.PNG"_s)}).exitCode, 0);
    EXPECT_EQ(QImage(path(u"O.PNG"_s)).size(), QSize(601, 401));
}

TEST_F(Kqx, ACaptureIsNotReplacedByItsPicture) {
    const QString file = scene("V11", "sine");
    ASSERT_TRUE(QFile::rename(file, path(u"odd.png"_s)));
    const Ran ran = kqx({u"screen"_s, path(u"odd.png"_s), path(u"odd.png"_s)});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(kqx({u"info"_s, path(u"odd.png"_s)}).exitCode, 0);
}

TEST_F(Kqx, NamesThatAreNoTextAreOpenedAndToldInJson) {
    const QByteArray odd = path(QString()).toUtf8().append("/b\xFF\x80.bin");
    ASSERT_EQ(std::rename(scene("V11", "six").toUtf8().constData(), odd.constData()), 0);
    // A process can be given such a name by a shell only: texts of this toolkit are no bytes.
    const auto shell = [this](const QString& line) {
        QProcess process;
        process.setWorkingDirectory(path(QString()));
        process.start(u"sh"_s, {u"-c"_s, QString(line).replace(u"KQX"_s, QStringLiteral(SIXTRACE_BIN "/kqx"))});
        process.waitForFinished(60000);
        return Ran{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    };
    const Ran info = shell(u"KQX info --json b*.bin"_s);
    EXPECT_EQ(info.exitCode, 0) << info.err.toStdString();
    const QJsonObject json = QJsonDocument::fromJson(info.out).object();
    EXPECT_EQ(json[u"file"_s].toString(), u"b\uFFFD\uFFFD.bin"_s);
    EXPECT_EQ(json[u"file_bytes"_s].toString(), u"62ff802e62696e"_s);
    EXPECT_EQ(json[u"channels"_s].toArray().size(), 6);
    EXPECT_EQ(shell(u"KQX screen b*.bin out.png"_s).exitCode, 0);
    EXPECT_EQ(picture(), golden("six_lines.png"));
    EXPECT_EQ(shell(u"KQX table b*.bin t.csv && KQX page b*.bin p.pdf && KQX convert b*.bin c.csv"_s).exitCode, 0);
    // The name of a result is made of the same bytes.
    EXPECT_EQ(shell(u"KQX convert --to npz b*.bin"_s).exitCode, 0);
    EXPECT_EQ(shell(u"test -f b$(printf '\\377\\200').npz"_s).exitCode, 0);
}

TEST_F(Kqx, SaysNothingThatNobodyAskedForOnStandardError) {
    const QString file = scene("V11", "sine");
    const QByteArray locale = qgetenv("LC_ALL");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("LC_ALL", "C");
    qunsetenv("XDG_RUNTIME_DIR");
    for (const QStringList& arguments : std::vector<QStringList>{{u"info"_s, file},
                                                                 {u"measure"_s, file},
                                                                 {u"screen"_s, file, path(u"o.png"_s)},
                                                                 {u"table"_s, file, path(u"o.csv"_s)},
                                                                 {u"page"_s, file, path(u"o.pdf"_s)},
                                                                 {u"fetch"_s, u"--help"_s},
                                                                 {u"open"_s, u"--help"_s}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 0);
        EXPECT_EQ(ran.err, QByteArray()) << arguments.join(u' ').toStdString();
    }
    qputenv("LC_ALL", locale);
    qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST_F(Kqx, OpenTellsWhatItTakesAndWhyItCannot) {
    EXPECT_TRUE(kqx({u"open"_s, u"--help"_s}).out.contains("FILE"));
    const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path(u"no-bus"_s).toUtf8());
    qputenv("XDG_RUNTIME_DIR", path(QString()).toUtf8());
    const QString file = scene("V11", "sine");
    for (const QStringList& arguments :
         {QStringList{u"open"_s}, QStringList{u"open"_s, file}, QStringList{u"open"_s, u"--"_s, file}}) {
        const Ran ran = kqx(arguments);
        EXPECT_EQ(ran.exitCode, 1) << arguments.join(u' ').toStdString();
        EXPECT_TRUE(ran.err.contains("no session bus")) << ran.err.toStdString();
    }
    const Ran gone = kqx({u"open"_s, u"--"_s, path(u"-gone.bin"_s)});
    EXPECT_EQ(gone.exitCode, 1);
    EXPECT_TRUE(gone.err.contains("no such file"));
    EXPECT_EQ(kqx({u"open"_s, file, file}).exitCode, 2);
    EXPECT_EQ(kqx({u"open"_s, u"--frob"_s}).exitCode, 2);
    bus.isNull() ? qunsetenv("DBUS_SESSION_BUS_ADDRESS") : qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
    runtime.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", runtime);
}

TEST_F(Kqx, HelpIsWrappedForATerminal) {
    for (const QString& command : {u"info"_s, u"measure"_s, u"convert"_s, u"screen"_s, u"table"_s}) {
        const QByteArray help = kqx({command, u"--help"_s}).out;
        EXPECT_TRUE(help.startsWith(QByteArray("Usage: kqx ").append(command.toUtf8()).append(" [options] FILE")))
            << help.toStdString();
        qsizetype longest = 0;
        for (const QByteArray& line : help.split('\n')) {
            longest = std::max(longest, line.size());
            EXPECT_FALSE(line.endsWith(' ')) << line.toStdString();
        }
        EXPECT_LE(longest, 79) << help.toStdString();
        EXPECT_GE(longest, 70) << help.toStdString();
    }
    EXPECT_TRUE(kqx({u"screen"_s, u"-h"_s})
                    .out.contains("\n  --points           Draw points instead of lines.\n"
                                  "  --cross            Draw a cross instead of the dotted graticule.\n"));
    EXPECT_TRUE(kqx({u"convert"_s, u"-h"_s})
                    .out.contains("\n  --channels <list>  Write only these channels: ch1, ch2, A, B, "
                                  "C, D, separated\n                     by commas.\n"));
    EXPECT_TRUE(kqx({u"convert"_s, u"-h"_s}).out.contains("\n  --files-from <list>\n                     Read more"));
}

TEST_F(Kqx, WrongOptionsAreToldWithTheirNames) {
    const QString file = scene("V11", "sine");
    const std::vector<std::pair<QStringList, QByteArray>> wrong{
        {{u"--frob"_s}, "kqx: unknown option --frob\n"},
        {{u"--frob=3"_s}, "kqx: unknown option --frob\n"},
        {{u"-x"_s}, "kqx: unknown option -x\n"},
        {{u"--json=yes"_s}, "kqx: --json takes no value\n"},
        {{u"--jobs"_s}, "kqx: --jobs needs a value\n"},
        {{u"--jobs=x"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs="_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs=2x"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
        {{u"--jobs=257"_s}, "kqx: --jobs takes a whole number from 1 to 256\n"},
    };
    for (const auto& [arguments, sentence] : wrong) {
        const Ran ran = kqx(QStringList{u"info"_s, file} + arguments);
        EXPECT_EQ(ran.exitCode, 2);
        EXPECT_EQ(ran.err, sentence);
    }
    EXPECT_EQ(kqx({u"info"_s, file, u"--jobs=1"_s, u"--jobs"_s, u"256"_s}).exitCode, 0);
}

TEST_F(Kqx, BehindTwoDashesEverythingIsAName) {
    const QString file = scene("V11", "sine");
    ASSERT_TRUE(QFile::rename(file, path(u"--json"_s)));
    QProcess process;
    process.setWorkingDirectory(path(QString()));
    process.start(QStringLiteral(SIXTRACE_BIN "/kqx"), {u"info"_s, u"--"_s, u"--json"_s});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(process.readAllStandardOutput().startsWith("form V11"));
}

TEST_F(Kqx, InfoForPeopleTellsRowsOfBothFamiliesAndWhatIsNoRow) {
    const auto told = [this](const char* tag, std::int32_t time, std::int32_t volt, std::int16_t probe) {
        CaptureBlock made = block();
        made.timeIndex = time;
        made.voltIndex = volt;
        made.probeExp = probe;
        return kqx({u"info"_s, put(captureBytes(*captureForm(tag), {made}))}).out;
    };
    EXPECT_TRUE(told("V11", 2, 1, 0).contains("time base       25 nS (row 2)\n  volts           5.00mv (row 0)\n"));
    EXPECT_TRUE(told("W11", 2, 10, 3).contains("time base       20 nS (row 2)\n  volts           5000 V (row 9)\n"));
    EXPECT_TRUE(told("V10", 26, 2, 1).contains("time base       2   S (row 26)\n"));
    EXPECT_TRUE(told("W01", 27, 2, 1).contains("time base       5   S (row 27)\n"));
    EXPECT_TRUE(told("V01", 0, 2, 1).contains("time base       5  nS (row 0)\n"));
    EXPECT_TRUE(told("V11", 28, 11, 0)
                    .contains("time base       no such row (row 28)\n  volts           no such row (row 10)\n"));
    EXPECT_TRUE(told("V11", -1, 0, 0)
                    .contains("time base       no such row (row -1)\n  volts           no such row (row -1)\n"));
    EXPECT_TRUE(told("V11", 3, 1, 4).contains("volts           no such probe (row 0)\n  probe           1:10000\n"));
    EXPECT_TRUE(told("V11", 3, 1, -1).contains("volts           no such probe (row 0)\n  probe           1:0.1\n"));
    EXPECT_TRUE(told("V11", 3, 1, 0).contains("zero level      40\n  scan point      2\n"));
}

TEST_F(Kqx, InfoOfSeveralFilesNamesEach) {
    const QString file = put(captureBytes(*captureForm("V11"), {block()}));
    const Ran one = kqx({u"info"_s, file});
    const Ran two = kqx({u"info"_s, file, file});
    EXPECT_EQ(two.out, QByteArray(file.toUtf8() + ":\n" + one.out + "\n" + file.toUtf8() + ":\n" + one.out));
}

} // namespace
} // namespace sixtrace::test
