// SPDX-License-Identifier: MIT
// A capture of any bytes: it is loaded by both readers, checked and drawn.
#include "capture/capturecheck.h"
#include "capture/capturefile.h"
#include "capture/plaincaptureview.h"
#include "scratchfile.h"
#include "view/defaults.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <memory>

using namespace sixtrace;

namespace {

/// Everything that an input needs, made once.
struct Program {
    fuzz::ScratchFile file{QStringLiteral("capture.bin")};
    const std::unique_ptr<const publicM> fresh = [] {
        auto made = std::make_unique<publicM>();
        made->fillTables();
        applyDefaultColours(*made);
        return made;
    }();
    const std::unique_ptr<publicM> model = std::make_unique<publicM>();
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    FrameRenderer renderer;

    void draw(const PlainCaptureView& view, bool line) {
        FrameInputs inputs;
        inputs.line = line;
        inputs.selected = view.ticks;
        inputs.markerTop = view.markerTops;
        renderer.PicReDrawT(*model, inputs, picture2, picHidden0);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Program program;
    // Every input begins with the same state, so that a finding repeats.
    *program.model = *program.fresh;
    program.file.put(data, size);

    const std::vector<CaptureFault> faults = checkCapture(program.file.path());
    fuzz::require(faults.size() <= kFaultLimit);
    for (const CaptureFault& fault : faults) {
        fuzz::require(fault.offset >= 0 && fault.offset <= static_cast<std::int64_t>(size) && !fault.text.isEmpty());
    }
    PlainCaptureView view(*program.model);
    SimpleWav(program.file.path(), *program.model, view);
    fuzz::require(!faults.empty() || program.model->FileKind != 0); // a sound file is loaded
    program.draw(view, size % 2 == 0);

    if (OpenBinFile(program.file.path(), *program.model, view) == BinFileOutcome::Loaded) {
        program.draw(view, true);
    }
    return 0;
}
