// SPDX-License-Identifier: MIT
// The capture reader, the fault finder and a frame of what was read, over any bytes.
#include "capture/capturecheck.h"
#include "capture/capturefile.h"
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

void drawFrame(Bench& bench, const ScreenState& screen, TraceStyle style) {
    FrameInputs inputs = frameInputs(screen);
    inputs.style = style;
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
    UnseenScreen loaded(model);
    SimpleWav(bench.path, loaded.scope());
    for (int c = 0; c < kChannels; ++c) {
        require(model.ChannelPresent[c] <= 1);
        require(loaded.state.ticks[c] ? model.FileKind != 0 : true);
    }
    require(checkCapture(bench.path).size() <= kFaultLimit);
    drawFrame(bench, loaded.state, TraceStyle::Lines);
    drawFrame(bench, loaded.state, TraceStyle::Points);
    static_cast<void>(OpenBinFile(bench.path, loaded.scope()));
    return 0;
}
