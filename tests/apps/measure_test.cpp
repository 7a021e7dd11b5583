// SPDX-License-Identifier: MIT
// kqx measure, and what the commands for many files share. Programs of others read what kqx writes.
#include "apps/kqxfixture.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"
#include "support/strings.h"

#include <QJsonArray>
#include <QJsonObject>

namespace sixtrace::test {
namespace {

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

TEST_F(KqxData, WhatNobodyReadsIsAFailure) {
    capture(u"a.bin"_s);
    const Ran ran = other(u"sh"_s, {u"-c"_s, QStringLiteral(SIXTRACE_BIN "/kqx measure a.bin > /dev/full")});
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_TRUE(ran.err.contains("the output cannot be written"));
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
