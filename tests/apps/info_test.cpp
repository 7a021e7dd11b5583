// SPDX-License-Identifier: MIT
// kqx info, and what the commands report about damaged captures.
#include "apps/kqxfixture.h"
#include "capture/capturewriter.h"
#include "support/strings.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace sixtrace::test {
namespace {

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
    EXPECT_FALSE(QFile::exists(path(u"missing"_s))); // info does not create the file
}

TEST_F(Kqx, HostileCountsNeitherCrashNorHang) {
    for (const std::int32_t number : {0, -1, 10232, 2147483647, -2147483647 - 1}) {
        CaptureBlock bad = block();
        bad.sampleCount = number;
        CaptureBlock worse = block();
        QByteArray bytes = captureBytes(*captureForm("V11"), {bad, worse});
        for (int i = 0; i < 4; ++i) { // screen points; written by hand, so that no filling slots follow
            bytes[10 + 7 + i] = static_cast<char>((static_cast<std::uint32_t>(number) >> (8 * i)) & 0xFFU);
        }
        const QString file = put(bytes);
        EXPECT_EQ(kqx({u"info"_s, file}).exitCode, 1) << number;
        EXPECT_EQ(screen(file).exitCode, 1) << number;
        EXPECT_EQ(picture().size(), QSize(601, 401));
    }
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
