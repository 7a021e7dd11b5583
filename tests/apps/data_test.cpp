// SPDX-License-Identifier: MIT
// kqx measure, kqx convert and what the commands share that take many files; what they write is read back by programs
// that are not ours.
#include "apps/program.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

/// ch1 behind a 10:1 probe at 2 us and 0.02 V a count, A at 2 us and 1 mV a count.
std::vector<CaptureBlock> twoBlocks() {
    return {{.id = '1',
             .screenPoints = 4,
             .sampleCount = 4,
             .timeIndex = 3,
             .voltIndex = 5,
             .probeExp = 1,
             .sampleInterval = 2,
             .frequency = 1000,
             .period = 1000,
             .voltPerCount = 2,
             .samples = {1, 0, -3, 5}},
            {.id = 'A',
             .screenPoints = 4,
             .sampleCount = 4,
             .timeIndex = 3,
             .sampleInterval = 2,
             .voltPerCount = 1,
             .samples = {7, 8, 9, -10}}};
}

class KqxData : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    QString put(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(content), content.size());
        return file.fileName();
    }
    QString capture(const QString& name, const std::vector<CaptureBlock>& blocks = twoBlocks()) const {
        return put(name, captureBytes(*captureForm("V11"), blocks));
    }
    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    /// kqx in the test's folder, with this on standard input.
    [[nodiscard]] Ran kqx(const QStringList& arguments, const QByteArray& input = {}) const {
        return other(QStringLiteral(SIXTRACE_BIN "/kqx"), arguments, input);
    }
    [[nodiscard]] Ran other(const QString& program, const QStringList& arguments, const QByteArray& input = {}) const {
        QProcess process;
        process.setWorkingDirectory(path(QString()));
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(240000)) {
            process.kill();
            process.waitForFinished();
            return {};
        }
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }
    [[nodiscard]] QByteArray python(const char* program, const QStringList& arguments = {}) const {
        const Ran ran = other(u"/usr/bin/python3"_s, QStringList{u"-c"_s, QString::fromLatin1(program)} + arguments);
        EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
        return ran.out;
    }
    static QJsonObject lineOf(const Ran& ran, int line) {
        return QJsonDocument::fromJson(ran.out.split('\n').value(line)).object();
    }
    [[nodiscard]] QStringList files() const { return QDir(path(QString())).entryList(QDir::Files, QDir::Name); }

private:
    QTemporaryDir m_folder;
};

TEST_F(KqxData, EverySceneMeasuresAsAModelInNumPyDoes) {
    QStringList captures;
    for (const Scene& scene : scenes()) {
        for (const CaptureForm& form : captureForms()) {
            const QString name = QString::fromLatin1(scene.name) + u'-' +
                                 QString::fromLatin1(form.tag.data(), static_cast<qsizetype>(form.tag.size()));
            put(name, captureBytes(form, *sceneBlocks(QString::fromLatin1(scene.name), 3)));
            captures << name;
        }
    }
    const Ran ran =
        other(u"/usr/bin/python3"_s, QStringList{QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/apps/measure_model.py"),
                                                 QStringLiteral(SIXTRACE_BIN "/kqx")} +
                                         captures);
    EXPECT_EQ(ran.exitCode, 0) << ran.out.right(2000).toStdString() << ran.err.toStdString();
    EXPECT_TRUE(ran.out.contains(" 0 differ"));
}

TEST_F(KqxData, MeasureAsJsonIsOneLineOfAllKeys) {
    const Ran ran = kqx({u"measure"_s, u"--json"_s, capture(u"a.bin"_s)});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_EQ(ran.out.count('\n'), 1);
    const QJsonObject line = lineOf(ran, 0);
    EXPECT_EQ(line.keys(), (QStringList{u"channels"_s, u"faults"_s, u"file"_s, u"form"_s}));
    EXPECT_EQ(line[u"form"_s].toString(), u"V11"_s);
    const QJsonObject ch1 = line[u"channels"_s].toArray()[0].toObject();
    EXPECT_EQ(ch1.size(), 25);
    EXPECT_EQ(ch1[u"label"_s].toString(), u"ch1"_s);
    EXPECT_EQ(ch1[u"samples"_s].toDouble(), 4);
    EXPECT_EQ(ch1[u"interval_s"_s].toDouble(), 2e-6);
    EXPECT_EQ(ch1[u"duration_s"_s].toDouble(), 8e-6);
    EXPECT_EQ(ch1[u"max_v"_s].toDouble(), 0.1); // 5 counts x 2 mV x 10
    EXPECT_EQ(ch1[u"mean_v"_s].toDouble(), 0.015);
    EXPECT_TRUE(ch1[u"frequency_hz"_s].isNull());
    EXPECT_EQ(ch1[u"instrument_period_s"_s].toDouble(), 0.001);
    EXPECT_TRUE(line[u"channels"_s].toArray()[1].toObject()[u"instrument_frequency_hz"_s].isNull());
}

TEST_F(KqxData, MeasureAsCsvIsReadByPython) {
    capture(u"a,\"b\".bin"_s);
    const Ran ran = kqx({u"measure"_s, u"--csv"_s, u"a,\"b\".bin"_s});
    EXPECT_EQ(ran.exitCode, 0);
    EXPECT_TRUE(ran.out.startsWith("file,label,samples,interval_s,duration_s,min_v,"));
    EXPECT_EQ(ran.out.count("\r\n"), 3);
    put(u"m.csv"_s, ran.out);
    const QByteArray rows = python("import csv\n"
                                   "for r in csv.DictReader(open('m.csv', newline='')):\n"
                                   "  print(r['file'], r['label'], r['max_v'], repr(r['frequency_hz']), len(r))\n");
    EXPECT_EQ(rows, "a,\"b\".bin ch1 0.1 '' 26\na,\"b\".bin A 0.009 '' 26\n");
}

TEST_F(KqxData, MeasureForPeopleIsATableInTheWindowsUnits) {
    const Ran ran = kqx({u"measure"_s, put(u"s.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1)))});
    EXPECT_EQ(ran.exitCode, 0);
    for (const char* line : {"                              ch1\n", "samples                      1200\n",
                             "duration                12.000 mS\n", "peak to peak              3.000 V\n",
                             "mean                     0.000 mV\n", "frequency                500.0 Hz\n",
                             "period                  0.00200 S\n", "duty                      50.00 %\n",
                             "rise time              590.000 uS\n", "instrument period       0.00200 S\n"}) {
        EXPECT_TRUE(ran.out.contains(line)) << line << "in\n" << ran.out.toStdString();
    }
    const Ran none = kqx({u"measure"_s, capture(u"a.bin"_s)});
    EXPECT_TRUE(none.out.contains("\nfrequency                       -           -\n")) << none.out.toStdString();
    EXPECT_TRUE(none.out.contains("\nmin                    -60.000 mV  -10.000 mV\n")) << none.out.toStdString();
}

TEST_F(KqxData, ChannelsAreChosenByTheirLabels) {
    const Ran ran = kqx({u"measure"_s, u"--json"_s, u"--channels"_s, u"A,D"_s, capture(u"a.bin"_s)});
    EXPECT_EQ(ran.exitCode, 0);
    const QJsonArray channels = lineOf(ran, 0)[u"channels"_s].toArray();
    ASSERT_EQ(channels.size(), 1);
    EXPECT_EQ(channels[0].toObject()[u"label"_s].toString(), u"A"_s);
}

TEST_F(KqxData, AFileThatCannotBeReadGivesItsLineAndTheRestGoOn) {
    capture(u"a.bin"_s);
    put(u"b.txt"_s, "hello");
    capture(u"c.bin"_s);
    for (const QString& command : {u"info"_s, u"measure"_s}) {
        const Ran ran = kqx({command, u"--json"_s, u"a.bin"_s, u"b.txt"_s, u"gone"_s, u"c.bin"_s});
        EXPECT_EQ(ran.exitCode, 1);
        EXPECT_EQ(ran.out.count('\n'), 4);
        EXPECT_EQ(lineOf(ran, 0)[u"file"_s].toString(), u"a.bin"_s);
        EXPECT_EQ(lineOf(ran, 1)[u"error"_s].toString(), u"not a capture: it begins with \"hel\" instead of \"KQX\""_s);
        EXPECT_EQ(lineOf(ran, 2), (QJsonObject{{u"file"_s, u"gone"_s}, {u"error"_s, u"there is no such file"_s}}));
        EXPECT_EQ(lineOf(ran, 3)[u"channels"_s].toArray().size(), 2);
        EXPECT_TRUE(ran.err.contains("kqx: gone: there is no such file\n"));
    }
    const Ran csv = kqx({u"measure"_s, u"--csv"_s, u"b.txt"_s, u"c.bin"_s});
    EXPECT_EQ(csv.exitCode, 1);
    EXPECT_EQ(csv.out.count('\n'), 3) << "a head and the rows of the one capture";
    EXPECT_TRUE(csv.err.contains("b.txt"));
}

TEST_F(KqxData, ADamagedCaptureGivesTheFiguresOfTheSamplesItHolds) {
    const QByteArray whole = captureBytes(*captureForm("V11"), twoBlocks());
    put(u"cut.bin"_s, whole.left(10 + 59 + 51 + 5));
    const Ran ran = kqx({u"measure"_s, u"--json"_s, u"cut.bin"_s});
    EXPECT_EQ(ran.exitCode, 1);
    const QJsonObject line = lineOf(ran, 0);
    EXPECT_EQ(line[u"faults"_s].toArray().size(), 1);
    const QJsonObject a = line[u"channels"_s].toArray()[1].toObject();
    EXPECT_EQ(a[u"samples"_s].toDouble(), 2);
    EXPECT_EQ(a[u"max_v"_s].toDouble(), 0.008);
    EXPECT_EQ(kqx({u"convert"_s, u"cut.bin"_s, u"cut.csv"_s}).exitCode, 1);
    EXPECT_EQ(content(u"cut.csv"_s), "time_s,ch1_v,A_v\n0,0.02,0.007\n2e-6,0,0.008\n4e-6,-0.06,\n6e-6,0.1,\n");
}

TEST_F(KqxData, NamesComeFromAListToo) {
    capture(u"a.bin"_s);
    capture(u"with blank.bin"_s);
    const auto told = [](const Ran& ran) {
        QStringList names;
        for (int i = 0; i < ran.out.count('\n'); ++i) {
            names << lineOf(ran, i)[u"file"_s].toString();
        }
        return names;
    };
    const QStringList both{u"a.bin"_s, u"with blank.bin"_s};
    EXPECT_EQ(told(kqx({u"info"_s, u"--json"_s, u"--files-from"_s, u"-"_s}, "a.bin\n\nwith blank.bin")), both);
    EXPECT_EQ(told(kqx({u"info"_s, u"--json"_s, u"--null"_s, u"--files-from=-"_s},
                       QByteArray("a.bin\0with blank.bin\0", 21))),
              both);
    put(u"list"_s, "with blank.bin\n");
    EXPECT_EQ(told(kqx({u"info"_s, u"--json"_s, u"--files-from"_s, u"list"_s, u"a.bin"_s})), both);
    EXPECT_EQ(kqx({u"info"_s, u"--files-from"_s, u"none"_s}).exitCode, 1);
    const Ran empty = kqx({u"info"_s, u"--files-from"_s, u"-"_s});
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_EQ(empty.out, QByteArray());
}

TEST_F(KqxData, ManyJobsPrintInTheOrderOfTheNames) {
    QByteArray list;
    for (int i = 0; i < 300; ++i) {
        auto blocks = twoBlocks();
        blocks[0].scanPoint = i;
        const QString name = u"f%1.bin"_s.arg(i);
        if (i % 50 == 49) {
            put(name, "KQX???");
        } else {
            capture(name, blocks);
        }
        list += name.toUtf8() + '\n';
    }
    const Ran one = kqx({u"info"_s, u"--json"_s, u"--jobs"_s, u"1"_s, u"--files-from"_s, u"-"_s}, list);
    const Ran many = kqx({u"info"_s, u"--json"_s, u"--jobs"_s, u"7"_s, u"--files-from"_s, u"-"_s}, list);
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_EQ(many.exitCode, 1);
    EXPECT_EQ(one.out.count('\n'), 300);
    EXPECT_EQ(many.out, one.out);
    EXPECT_EQ(many.err, one.err);
    EXPECT_EQ(lineOf(one, 123)[u"channels"_s].toArray()[0].toObject()[u"ScanPoint"_s].toInt(), 123);
}

TEST_F(KqxData, ConvertMakesCsvThatPythonReads) {
    capture(u"a.bin"_s);
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"a.csv"_s}).exitCode, 0);
    EXPECT_EQ(content(u"a.csv"_s), "time_s,ch1_v,A_v\n0,0.02,0.007\n2e-6,0,0.008\n4e-6,-0.06,0.009\n6e-6,0.1,-0.01\n");
    EXPECT_EQ(python("import csv\nprint([float(r['ch1_v']) for r in csv.DictReader(open('a.csv'))])"),
              "[0.02, 0.0, -0.06, 0.1]\n");
    auto blocks = twoBlocks();
    blocks[1].sampleInterval = 0.5F;
    blocks[1].sampleCount = 2;
    capture(u"b.bin"_s, blocks);
    EXPECT_EQ(kqx({u"convert"_s, u"b.bin"_s, u"b.csv"_s}).exitCode, 0);
    EXPECT_EQ(content(u"b.csv"_s), "time_ch1_s,ch1_v,time_A_s,A_v\n0,0.02,0,0.007\n2e-6,0,5e-7,0.008\n"
                                   "4e-6,-0.06,,\n6e-6,0.1,,\n");
}

TEST_F(KqxData, ConvertMakesArraysThatNumPyLoadsWithoutPickle) {
    const QString name = u"\u6ce2.bin"_s;
    capture(name);
    const Ran made = kqx({u"convert"_s, name, u"a.npz"_s});
    EXPECT_EQ(made.exitCode, 0);
    EXPECT_EQ(made.err, QByteArray());
    const QByteArray told =
        python("import numpy, json, sys\n"
               "z = numpy.load('a.npz', allow_pickle=False)\n"
               "print(sorted(z.files), z['t_ch1'].dtype, z['v_ch1'].dtype)\n"
               "print(z['t_ch1'].tolist(), z['v_ch1'].tolist() == numpy.float32([.02, 0, -.06, .1]).tolist())\n"
               "print(z['v_A'].shape, z['info'].shape)\n"
               "i = json.loads(z['info'].item())\n"
               "print(ascii(i['file']), [c['label'] for c in i['channels']])\n");
    EXPECT_EQ(told, "['info', 't_A', 't_ch1', 'v_A', 'v_ch1'] float64 float32\n"
                    "[0.0, 2e-06, 4e-06, 6e-06] True\n"
                    "(4,) ()\n"
                    "'\\u6ce2.bin' ['ch1', 'A']\n");
    const QByteArray first = content(u"a.npz"_s);
    EXPECT_EQ(kqx({u"convert"_s, name, u"-"_s, u"--to"_s, u"npz"_s}).out, first) << "the same bytes at any time";
}

TEST_F(KqxData, ConvertMakesSessionsThatSigrokReads) {
    capture(u"a.bin"_s);
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"a.sr"_s}).exitCode, 0);
    const Ran shown = other(u"sigrok-cli"_s, {u"-i"_s, u"a.sr"_s, u"--show"_s});
    EXPECT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    for (const char* line : {"Samplerate: 500000\n", "- ch1: analog\n", "- A: analog\n", "Analog sample count: 4\n"}) {
        EXPECT_TRUE(shown.out.contains(line)) << line << "in\n" << shown.out.toStdString();
    }
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"one.sr"_s, u"--channels"_s, u"ch1"_s}).exitCode, 0);
    const Ran values = other(u"sigrok-cli"_s, {u"-i"_s, u"one.sr"_s, u"-O"_s, u"csv:label=off:header=false"_s});
    // Its exit code says nothing: this reader may end with a fault of its own after it has written, its own files too.
    QList<double> read;
    for (const QByteArray& line : values.out.split('\n')) {
        bool isNumber = false;
        if (const double value = line.toDouble(&isNumber); isNumber) {
            read << value;
        }
    }
    ASSERT_EQ(read.size(), 4) << values.out.toStdString();
    const std::array expected{0.02, 0.0, -0.06, 0.1};
    for (qsizetype i = 0; i < 4; ++i) {
        EXPECT_NEAR(read[i], expected.at(static_cast<std::size_t>(i)), 1e-6);
    }
}

TEST_F(KqxData, ChannelsThatCannotShareASessionAreNamedInTheirGroups) {
    auto blocks = twoBlocks();
    blocks.push_back(blocks[1]);
    blocks[2].id = 'B';
    blocks[2].sampleInterval = 3;
    capture(u"a.bin"_s, blocks);
    const Ran ran = kqx({u"convert"_s, u"a.bin"_s, u"a.sr"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(
        ran.err,
        "kqx: a.bin: the channels of a .sr file must have the same rate and length; choose with --channels one of "
        "these groups: ch1,A (4 samples, 500000 Hz); B (4 samples, 333333.333333 Hz)\n");
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"a.sr"_s, u"--channels"_s, u"A,ch1"_s}).exitCode, 0);
    const Ran odd = kqx({u"convert"_s, u"a.bin"_s, u"b.sr"_s, u"--channels"_s, u"B"_s});
    EXPECT_EQ(odd.exitCode, 1);
    EXPECT_TRUE(odd.err.contains("a whole number of hertz")) << odd.err.toStdString();
    blocks[2].sampleInterval = 2;
    blocks[2].sampleCount = 3;
    capture(u"c.bin"_s, blocks);
    EXPECT_TRUE(kqx({u"convert"_s, u"c.bin"_s, u"c.sr"_s}).err.contains("B (3 samples, 500000 Hz)"));
    EXPECT_EQ(files(), (QStringList{u"a.bin"_s, u"a.sr"_s, u"c.bin"_s}));
}

TEST_F(KqxData, ATableWithoutRowsIsNoWorkbook) {
    capture(u"e.bin"_s, {});
    const Ran ran = kqx({u"table"_s, u"e.bin"_s, u"e.xlsx"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(ran.err, "kqx: e.bin: Subscript out of range\n");
    EXPECT_EQ(files(), QStringList{u"e.bin"_s});
}

TEST_F(KqxData, ACaptureWithoutChannelsConvertsToNoSamples) {
    capture(u"e.bin"_s, {});
    EXPECT_EQ(kqx({u"convert"_s, u"e.bin"_s, u"e.csv"_s}).exitCode, 0);
    EXPECT_EQ(content(u"e.csv"_s), "time_s\n");
    EXPECT_EQ(kqx({u"convert"_s, u"e.bin"_s, u"e.npz"_s}).exitCode, 0);
    EXPECT_EQ(python("import numpy\nprint(numpy.load('e.npz').files)"), "['info']\n");
    EXPECT_EQ(kqx({u"convert"_s, u"e.bin"_s, u"e.sr"_s}).exitCode, 1);
}

TEST_F(KqxData, ResultsOfManyFilesBearTheirNames) {
    capture(u"in/a.bin"_s);
    capture(u"in/b.x.bin"_s);
    capture(u"in/noext"_s);
    EXPECT_EQ(kqx({u"convert"_s, u"--to"_s, u"csv"_s, u"in/a.bin"_s, u"in/b.x.bin"_s, u"in/noext"_s}).exitCode, 0);
    EXPECT_EQ(files(), (QStringList{u"a.csv"_s, u"b.x.csv"_s, u"noext.csv"_s}));
    ASSERT_TRUE(QDir(path(QString())).mkdir(u"out"_s));
    EXPECT_EQ(kqx({u"screen"_s, u"--out-dir"_s, u"out"_s, u"in/a.bin"_s, u"in/noext"_s}).exitCode, 0);
    EXPECT_TRUE(content(u"out/a.png"_s).startsWith("\x89PNG"));
    EXPECT_TRUE(content(u"out/noext.png"_s).startsWith("\x89PNG"));
    EXPECT_EQ(kqx({u"page"_s, u"--out-dir"_s, u"out/"_s, u"--jobs"_s, u"2"_s, u"in/a.bin"_s, u"in/noext"_s}).exitCode,
              0);
    EXPECT_TRUE(content(u"out/noext.pdf"_s).startsWith("%PDF"));
    EXPECT_EQ(kqx({u"convert"_s, u"--to"_s, u"csv"_s, u"--out-dir"_s, u"none"_s, u"in/a.bin"_s}).exitCode, 1);
    const Ran several = kqx({u"convert"_s, u"in/a.bin"_s, u"in/noext"_s, u"x.csv"_s});
    EXPECT_EQ(several.exitCode, 2);
    EXPECT_TRUE(several.err.contains("--to EXT or --out-dir"));
    EXPECT_EQ(kqx({u"convert"_s, u"--out-dir"_s, u"out"_s, u"in/a.bin"_s}).exitCode, 2) << "of what kind?";
}

TEST_F(KqxData, ANameThatWouldBeWrittenTwiceIsAnErrorBeforeAnythingIsWritten) {
    capture(u"x/a.bin"_s);
    capture(u"y/a.bin"_s);
    capture(u"b.bin"_s);
    const Ran ran = kqx({u"convert"_s, u"--to"_s, u"csv"_s, u"b.bin"_s, u"x/a.bin"_s, u"y/a.bin"_s});
    EXPECT_EQ(ran.exitCode, 2);
    EXPECT_TRUE(ran.err.contains("a.csv would be written twice"));
    EXPECT_EQ(files(), QStringList{u"b.bin"_s});
}

TEST_F(KqxData, ExistingFilesAreReplacedWholeOrKeptOnRequest) {
    capture(u"a.bin"_s);
    put(u"a.csv"_s, "mine");
    ASSERT_TRUE(QFile::setPermissions(path(u"a.csv"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    const Ran kept = kqx({u"convert"_s, u"--no-clobber"_s, u"a.bin"_s, u"a.csv"_s});
    EXPECT_EQ(kept.exitCode, 1);
    EXPECT_TRUE(kept.err.contains("a.csv: File already exists")) << kept.err.toStdString();
    EXPECT_EQ(content(u"a.csv"_s), "mine");
    ASSERT_TRUE(QFile::link(path(u"a.csv"_s), path(u"link.csv"_s)));
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"link.csv"_s}).exitCode, 0);
    EXPECT_TRUE(content(u"a.csv"_s).startsWith("time_s,"));
    EXPECT_TRUE(QFileInfo(path(u"link.csv"_s)).isSymLink());
    EXPECT_TRUE(QFile::permissions(path(u"a.csv"_s)).testFlag(QFile::ReadOther));
    EXPECT_FALSE(QFile::permissions(path(u"a.csv"_s)).testFlag(QFile::ReadGroup));
    EXPECT_EQ(kqx({u"convert"_s, u"--no-clobber"_s, u"a.bin"_s, u"new.csv"_s}).exitCode, 0);
    EXPECT_EQ(content(u"new.csv"_s), content(u"a.csv"_s));
    ASSERT_TRUE(QDir(path(QString())).mkdir(u"folder.csv"_s));
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"folder.csv"_s}).exitCode, 1);
    EXPECT_EQ(files(), (QStringList{u"a.bin"_s, u"a.csv"_s, u"link.csv"_s, u"new.csv"_s})) << "nothing is left over";
}

TEST_F(KqxData, StandardOutputTakesResultsToo) {
    capture(u"a.bin"_s);
    EXPECT_TRUE(kqx({u"screen"_s, u"a.bin"_s, u"-"_s}).out.startsWith("\x89PNG"));
    EXPECT_TRUE(kqx({u"page"_s, u"a.bin"_s, u"-"_s}).out.startsWith("%PDF"));
    EXPECT_TRUE(kqx({u"table"_s, u"a.bin"_s, u"-"_s, u"--to"_s, u"xlsx"_s}).out.startsWith("PK"));
    EXPECT_TRUE(kqx({u"convert"_s, u"a.bin"_s, u"-"_s, u"--to"_s, u"csv"_s}).out.startsWith("time_s"));
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"-"_s}).exitCode, 2);
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"-"_s, u"--to"_s, u"zip"_s}).exitCode, 2);
    EXPECT_EQ(kqx({u"table"_s, u"a.bin"_s, u"a.bin"_s, u"-"_s, u"--to"_s, u"csv"_s}).exitCode, 2);
}

TEST_F(KqxData, WhatNobodyReadsIsAFailure) {
    capture(u"a.bin"_s);
    const Ran ran = other(u"sh"_s, {u"-c"_s, QStringLiteral(SIXTRACE_BIN "/kqx measure a.bin > /dev/full")});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("the output cannot be written"));
}

TEST_F(KqxData, ThumbnailsAreSmallSmoothAndOpaque) {
    put(u"six.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"six"_s, 1)));
    for (const auto& [size, height] : {std::pair(128, 85), {256, 170}, {4096, 401}}) {
        const Ran ran = kqx({u"screen"_s, u"--thumbnail"_s, QString::number(size), u"six.bin"_s, u"/dev/stdout"_s});
        EXPECT_EQ(ran.exitCode, 1) << "what is no file is not replaced";
        EXPECT_EQ(kqx({u"screen"_s, u"--thumbnail"_s, QString::number(size), u"six.bin"_s, u"thumb.tmp"_s}).exitCode,
                  0);
        const QByteArray told = python("import struct\nb = open('thumb.tmp', 'rb').read()\n"
                                       "print(b[1:4], *struct.unpack('>IIBB', b[16:26]))");
        // Kind 2 has no transparency.
        EXPECT_EQ(told, u"b'PNG' %1 %2 8 2\n"_s.arg(std::min(size, 601)).arg(height).toUtf8());
    }
    put(u"bad.bin"_s, "KQXV11");
    const Ran bad = kqx({u"screen"_s, u"--thumbnail"_s, u"128"_s, u"bad.bin"_s, u"bad.tmp"_s});
    EXPECT_EQ(bad.exitCode, 1);
    EXPECT_EQ(bad.err, QByteArray());
    EXPECT_FALSE(QFile::exists(path(u"bad.tmp"_s)));
    EXPECT_EQ(kqx({u"screen"_s, u"--thumbnail"_s, u"0"_s, u"six.bin"_s, u"t"_s}).exitCode, 2);
}

TEST_F(KqxData, OfTwoCapturesThatAPatternMatchesNoneIsReplacedByAThumbnail) {
    capture(u"a.bin"_s);
    const QByteArray before = QFile::exists(capture(u"b.bin"_s)) ? content(u"b.bin"_s) : QByteArray();
    const Ran ran = kqx({u"screen"_s, u"--thumbnail"_s, u"128"_s, u"a.bin"_s, u"b.bin"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(ran.err, "kqx: b.bin: this is a capture, and kqx does not replace captures\n");
    EXPECT_TRUE(before.startsWith("KQXV11"));
    EXPECT_EQ(content(u"b.bin"_s), before);
    capture(u"c.csv"_s);
    EXPECT_EQ(kqx({u"convert"_s, u"a.bin"_s, u"c.csv"_s}).exitCode, 1);
    EXPECT_TRUE(content(u"c.csv"_s).startsWith("KQXV11"));
}

TEST_F(KqxData, OfManyThumbnailsThoseThatLackAreNamed) {
    capture(u"a.bin"_s);
    put(u"bad.bin"_s, "KQXV12");
    capture(u"c.bin"_s);
    const Ran ran =
        kqx({u"screen"_s, u"--thumbnail"_s, u"64"_s, u"--to"_s, u"png"_s, u"a.bin"_s, u"bad.bin"_s, u"c.bin"_s});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(ran.err, "kqx: bad.bin: at byte 3: unknown version tag \"V12\"\n");
    EXPECT_EQ(files(), (QStringList{u"a.bin"_s, u"a.png"_s, u"bad.bin"_s, u"c.bin"_s, u"c.png"_s}));
}

TEST_F(KqxData, CommandsForNumbersLoadNoLibraryOfTheDesktop) {
    const Ran ran = other(u"ldd"_s, {QStringLiteral(SIXTRACE_BIN "/kqx")});
    EXPECT_EQ(ran.exitCode, 0);
    for (const char* library : {"Qt6", "dbus", "usb", "xlsxwriter", "X11"}) {
        EXPECT_FALSE(ran.out.contains(library)) << ran.out.toStdString();
    }
}

} // namespace
} // namespace sixtrace::test
