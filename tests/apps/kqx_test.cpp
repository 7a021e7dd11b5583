// SPDX-License-Identifier: MIT
#include "apps/program.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

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
        {u"info"_s, file, file},
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
    const QJsonObject expected{
        {u"form"_s, u"V11"_s},
        {u"FileKind"_s, 4},
        {u"faults"_s, QJsonArray{}},
        {u"channels"_s,
         QJsonArray{QJsonObject{
             {u"index"_s, 3},          {u"label"_s, u"B"_s},    {u"ChannelPresent"_s, 1},   {u"ScreenPoints"_s, 4},
             {u"SampleCount"_s, 3},    {u"ScanPoint"_s, 2},     {u"TimeIndex"_s, 16},       {u"ZeroLevel"_s, 60},
             {u"VoltIndex"_s, 5},      {u"ProbeExp"_s, 1},      {u"SampleInterval"_s, 0.1}, {u"Frequency"_s, 1000},
             {u"Period"_s, 1000},      {u"VoltPerCount"_s, 20}, {u"TimeIndexFile"_s, 16},   {u"VoltIndexFile"_s, 5},
             {u"TimeIndexView"_s, 16}, {u"VoltIndexView"_s, 4}, {u"PeakToPeak"_s, 40},
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

} // namespace
} // namespace sixtrace::test
