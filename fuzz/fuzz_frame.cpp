// SPDX-License-Identifier: MIT
// Draws a frame of a capture of any bytes, in lines or in points.
#include "capturebench.h"
#include "view/frame.h"
#include "view/geometry.h"

namespace {

using namespace sixtrace;

struct Pictures {
    FrameRenderer renderer;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static CaptureBench bench;
    static Pictures pictures;
    bench.clear(size);
    bench.load(inputBytes(data, size));
    FrameInputs inputs = frameInputs(bench.state());
    inputs.style = size % 2 == 0 ? TraceStyle::Lines : TraceStyle::Points;
    pictures.renderer.PicReDrawT(*bench.model, inputs, pictures.picture2, pictures.picHidden0);
    return 0;
}
