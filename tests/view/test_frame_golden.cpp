// SPDX-License-Identifier: MIT
// The pictures that the program shows after opening a capture, to the pixel.
#include "capture/capturefile.h"
#include "capture/plaincaptureview.h"
#include "capture/scenes.h"
#include "platform/wholefile.h"
#include "support/golden.h"
#include "view/defaults.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;

namespace sixtrace {
namespace {

class GoldenFrame : public ::testing::Test {
protected:
    GoldenFrame() {
        m->fillTables();
        applyDefaultColours(*m);
        picture2.BackColor = m->BackColor;
        inputs.markerTop.fill(kCentreTop);
    }

    void load(const char* tag, const std::vector<CaptureBlock>& blocks) {
        const QString path = m_folder.filePath(u"capture.bin"_s);
        ASSERT_TRUE(writeWhole(path, captureBytes(*captureForm(tag), blocks)));
        PlainCaptureView view(*m);
        SimpleWav(path, *m, view);
        inputs.selected = view.ticks;
        inputs.markerTop = view.markerTops;
    }
    void loadScene(const char* tag, const char* name) {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), 1);
        ASSERT_TRUE(blocks.has_value());
        ASSERT_NO_FATAL_FAILURE(load(tag, *blocks));
    }
    void expectScreen(const QString& name) {
        renderer.PicReDrawT(*m, inputs, picture2, picHidden0);
        test::expectGolden(picture2.view(), QStringLiteral(SIXTRACE_SOURCE_DIR "/tests/view/golden"), name);
    }

    std::unique_ptr<publicM> m = std::make_unique<publicM>();
    FrameInputs inputs;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    FrameRenderer renderer;

private:
    QTemporaryDir m_folder;
};

TEST_F(GoldenFrame, EmptyScreenWithTheGraticuleOf12Divisions) {
    loadScene("V11", "empty");
    expectScreen(u"empty-graticule-12"_s);
}

TEST_F(GoldenFrame, EmptyScreenWithTheGraticuleOf10Divisions) {
    loadScene("V01", "empty");
    expectScreen(u"empty-graticule-10"_s);
}

TEST_F(GoldenFrame, EmptyScreenWithTheCrossOf12Divisions) {
    loadScene("W11", "empty");
    inputs.graticule = false;
    expectScreen(u"empty-cross-12"_s);
}

TEST_F(GoldenFrame, EmptyScreenWithTheCrossOf10Divisions) {
    loadScene("W01", "empty");
    inputs.graticule = false;
    expectScreen(u"empty-cross-10"_s);
}

TEST_F(GoldenFrame, SixTracesAsLines) {
    loadScene("V11", "six");
    expectScreen(u"six-lines"_s);
}

TEST_F(GoldenFrame, SixTracesAsPoints) {
    loadScene("V11", "six");
    inputs.line = false;
    expectScreen(u"six-points"_s);
}

TEST_F(GoldenFrame, SlowestTimeBaseThatIsNoScan) {
    loadScene("V11", "scan-a");
    expectScreen(u"scan-a"_s);
}

TEST_F(GoldenFrame, ScanInItsFirstSweep) {
    loadScene("V11", "scan-b");
    expectScreen(u"scan-b"_s);
}

TEST_F(GoldenFrame, ScanWithBothSweepsAndTheGap) {
    loadScene("V11", "scan-c");
    expectScreen(u"scan-c"_s);
}

TEST_F(GoldenFrame, ScanWhoseGapHasWrappedRound) {
    loadScene("V11", "scan-d");
    expectScreen(u"scan-d"_s);
}

TEST_F(GoldenFrame, ATraceFarOutsideTheScreen) {
    // Sawteeth of 60,000 units' height: each crosses the screen as a bundle of nearly upright lines.
    CaptureBlock block;
    block.screenPoints = 100;
    block.sampleCount = 100;
    block.timeIndex = 15;
    block.voltIndex = 7;
    block.voltPerCount = 20;
    for (int i = 0; i < 100; ++i) {
        block.samples.push_back(static_cast<std::int16_t>(i % 4 == 1 ? 30000 : i % 4 == 3 ? -29000 : 40 * (i % 8) - 100));
    }
    load("V11", {block});
    expectScreen(u"far-outside"_s);
}

} // namespace
} // namespace sixtrace
