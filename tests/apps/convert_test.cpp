// SPDX-License-Identifier: MIT
// kqx convert. Programs of others read what it writes.
#include "apps/kqxfixture.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>

namespace sixtrace::test {
namespace {

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
    // The exit code is not checked: this reader sometimes crashes after it has written its output, also for its own
    // files.
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

} // namespace
} // namespace sixtrace::test
