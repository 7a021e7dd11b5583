// SPDX-License-Identifier: MIT
// kqx screen: pictures and thumbnails.
#include "apps/kqxfixture.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/strings.h"

#include <QFile>
#include <QImage>

namespace sixtrace::test {
namespace {

TEST_F(KqxData, ThumbnailsAreSmallSmoothAndOpaque) {
    put(u"six.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"six"_s, 1)));
    for (const auto& [size, height] : {std::pair(128, 85), {256, 170}, {4096, 401}}) {
        const Ran ran = kqx({u"screen"_s, u"--thumbnail"_s, QString::number(size), u"six.bin"_s, u"/dev/stdout"_s});
        EXPECT_EQ(ran.exitCode, 1) << "what is no file is not replaced";
        EXPECT_EQ(kqx({u"screen"_s, u"--thumbnail"_s, QString::number(size), u"six.bin"_s, u"thumb.tmp"_s}).exitCode,
                  0);
        const QByteArray told = python("import struct\nb = open('thumb.tmp', 'rb').read()\n"
                                       "print(b[1:4], *struct.unpack('>IIBB', b[16:26]))");
        // Colour type 2 has no transparency.
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

} // namespace
} // namespace sixtrace::test
