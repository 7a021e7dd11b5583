// SPDX-License-Identifier: MIT
// The capture reader, the fault finder and a frame of what was read, over any bytes.
#include "capture/capturecheck.h"
#include "capture/capturefile.h"
#include "capture/plaincaptureview.h"
#include "view/defaults.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace {

using namespace sixtrace;

/// Ends the run when something holds that never may.
void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

struct Bench {
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("input.bin"));
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    FrameRenderer renderer;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
};

void drawFrame(Bench& bench, const PlainCaptureView& view, bool line) {
    FrameInputs inputs;
    inputs.line = line;
    inputs.selected = view.ticks;
    inputs.markerTop = view.markerTops;
    bench.renderer.PicReDrawT(*bench.model, inputs, bench.picture2, bench.picHidden0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Bench bench;
    publicM& model = *bench.model;
    model.fillTables();
    applyDefaultColours(model);
    {
        QFile file(bench.path);
        require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    PlainCaptureView view(model);
    SimpleWav(bench.path, model, view);
    for (std::size_t c = 0; c < kChannels; ++c) {
        require(model.ChannelPresent[c] <= 1);
        require(view.ticks[c] ? model.FileKind != 0 : true);
    }
    require(checkCapture(bench.path).size() <= kFaultLimit);
    drawFrame(bench, view, true);
    drawFrame(bench, view, false);
    static_cast<void>(OpenBinFile(bench.path, model, view));
    return 0;
}
