// SPDX-License-Identifier: MIT
// Pictures that a person has looked at, compared to the pixel. SIXTRACE_REGENERATE=1 writes them again.
#include "capture/capturefile.h"
#include "capture/scenes.h"
#include "support/sourcefolder.h"
#include "support/strings.h"
#include "view/scene.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

void compareWithGolden(const Picture& picture, const QString& name) {
    const QString golden = QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/view/golden/") + name + u".png"_s;
    const QImage actual = picture.view().convertToFormat(QImage::Format_RGB32);
    if (qEnvironmentVariableIsSet("SIXTRACE_REGENERATE")) {
        ASSERT_TRUE(actual.save(golden));
        return;
    }
    const QImage expected = QImage(golden).convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(expected.size(), actual.size()) << golden.toStdString();
    if (expected == actual) {
        return;
    }
    QImage difference(actual.size(), QImage::Format_RGB32);
    int different = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const bool same = actual.pixel(x, y) == expected.pixel(x, y);
            difference.setPixel(x, y, same ? 0xFF000000U : 0xFFFFFFFFU);
            different += same ? 0 : 1;
        }
    }
    const QString beside = QStringLiteral(SIXTRACE_OUTPUT_DIR "/") + name;
    actual.save(beside + u"_actual.png"_s);
    difference.save(beside + u"_difference.png"_s);
    FAIL() << different << " pixels differ; see " << beside.toStdString() << "_actual.png";
}

/// The screen after loading a scene in a form.
void drawScene(TestScreen& screen, const char* scene, const char* form, std::uint32_t seed = 1) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"scene.bin"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(captureBytes(*captureForm(form), *sceneBlocks(QString::fromLatin1(scene), seed)));
    file.close();
    UnseenScreen loaded(*screen.model);
    SimpleWav(path, loaded.scope());
    const FrameInputs inputs = frameInputs(loaded.state);
    screen.inputs.selected = inputs.selected;
    screen.inputs.markerTop = inputs.markerTop;
    screen.draw();
}

TEST(FrameGolden, EmptyScreenWithGraticuleOf12Divisions) {
    TestScreen screen;
    screen.draw();
    compareWithGolden(screen.picture2, u"empty_graticule_12"_s);
}

TEST(FrameGolden, EmptyScreenWithGraticuleOf10Divisions) {
    TestScreen screen;
    screen.model->FileKind = 2;
    screen.draw();
    compareWithGolden(screen.picture2, u"empty_graticule_10"_s);
}

TEST(FrameGolden, EmptyScreenWithCrossOf12Divisions) {
    TestScreen screen;
    screen.inputs.graticule = Graticule::Cross;
    screen.draw();
    compareWithGolden(screen.picture2, u"empty_cross_12"_s);
}

TEST(FrameGolden, EmptyScreenWithCrossOf10Divisions) {
    TestScreen screen;
    screen.inputs.graticule = Graticule::Cross;
    screen.model->FileKind = 3;
    screen.draw();
    compareWithGolden(screen.picture2, u"empty_cross_10"_s);
}

TEST(FrameGolden, SixTracesAsLines) {
    TestScreen screen;
    drawScene(screen, "six", "V11");
    compareWithGolden(screen.picture2, u"six_lines"_s);
}

TEST(FrameGolden, SixTracesAsPoints) {
    TestScreen screen;
    screen.inputs.style = TraceStyle::Points;
    drawScene(screen, "six", "V11");
    compareWithGolden(screen.picture2, u"six_points"_s);
}

TEST(FrameGolden, TheSlowestFastTimeBase) {
    TestScreen screen;
    drawScene(screen, "scan-a", "V11");
    compareWithGolden(screen.picture2, u"scan_a"_s);
}

TEST(FrameGolden, ASlowScanInItsFirstSweep) {
    TestScreen screen;
    drawScene(screen, "scan-b", "W11");
    compareWithGolden(screen.picture2, u"scan_b"_s);
}

TEST(FrameGolden, ASlowScanWithItsGap) {
    TestScreen screen;
    drawScene(screen, "scan-c", "V10");
    compareWithGolden(screen.picture2, u"scan_c"_s);
}

TEST(FrameGolden, ASlowScanWhoseGapHasWrappedRound) {
    TestScreen screen;
    drawScene(screen, "scan-d", "V01");
    compareWithGolden(screen.picture2, u"scan_d"_s);
}

TEST(FrameGolden, ATraceFarOutsideTheScreen) {
    TestScreen screen;
    drawScene(screen, "sine", "V11");
    screen.model->VoltIndexView[0] = 0; // a hundred times as high
    screen.model->TimeIndexView[0] = 19;
    screen.draw();
    compareWithGolden(screen.picture2, u"far_outside"_s);
}

} // namespace
} // namespace sixtrace::test
