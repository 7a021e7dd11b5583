// SPDX-License-Identifier: MIT
// A frame of six traces of 10231 samples against one QPainter::drawLine per segment, and against the bare minimum.
#include "noise.h"
#include "ratios.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <QImage>
#include <QPainter>

#include <hwy/targets.h>

#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

using namespace sixtrace;
using bench::nextRandom;

enum class Content { Mixed, Noise };

std::int16_t sampleOf(Content content, int channel, int i, std::uint32_t& state) {
    constexpr double kTurn = 6.283185307179586;
    if (content == Content::Noise) {
        return static_cast<std::int16_t>(static_cast<int>(nextRandom(state) % 401) - 200);
    }
    switch (channel % 3) {
    case 0:
        return static_cast<std::int16_t>(std::lround(150 * std::sin(i * kTurn * (3 + channel) / kSampleRows)));
    case 1:
        return static_cast<std::int16_t>(((i / 900) % 2 != 0 ? 100 : -100) + static_cast<int>(nextRandom(state) % 21) -
                                         10);
    default:
        return static_cast<std::int16_t>(i % 2000 / 10 - 100);
    }
}

/// A capture of six full channels, one pixel a count.
struct Scene {
    publicM model;
    FrameInputs inputs;
    FrameRenderer renderer;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    FrameCopy copy{picture2, picHidden0};

    explicit Scene(Content content, Vectors vectors = Vectors::Allowed)
        : renderer(vectors) {
        model.fillTables();
        model.FileKind = 4;
        model.GridColor = rgb(0, 255, 255);
        picture2.BackColor = rgb(64, 0, 64);
        std::uint32_t state = 1;
        for (int c = 0; c < kChannels; ++c) {
            const auto at = static_cast<std::size_t>(c);
            model.ChannelPresent[at] = 1;
            model.ScreenPoints[at] = kSampleRows;
            model.SampleCount[at] = kSampleRows;
            model.TimeIndex[at] = 10;
            model.TimeIndexView[at] = 10;
            model.VoltIndexView[at] = 6;
            model.VoltPerCount[at] = 10.0F; // 0.5 V a division: 50 counts
            model.LineColor[at] = rgb(255, 40 * c, 255 - 40 * c);
            inputs.selected[at] = true;
            inputs.markerTop[at] = Twips{2910};
            for (int i = 0; i < kSampleRows; ++i) {
                model.SampleData(c, i) = sampleOf(content, c, i, state);
            }
        }
    }
};

/// The vectors that a frame may use.
enum class Way { Best, Avx2, Plain };

/// As the window draws it: the copy for drags is made when a drag begins.
void frame(benchmark::State& state, Content content, Way way = Way::Best) {
    const auto scene = std::make_unique<Scene>(content, way == Way::Plain ? Vectors::Avoided : Vectors::Allowed);
    hwy::SetSupportedTargetsForTest(way == Way::Avx2 ? HWY_AVX2 | HWY_SSE4 | HWY_SSSE3 | HWY_STATIC_TARGET : 0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    for ([[maybe_unused]] auto _ : state) {
        scene->renderer.PicReDrawT(scene->model, scene->inputs, scene->picture2, scene->copy);
        benchmark::ClobberMemory();
    }
}

/// The same frame with a painter: background, graticule left out, one drawLine per segment, copied at the end.
void drawLines(benchmark::State& state, Content content) {
    const auto scene = std::make_unique<Scene>(content);
    scene->renderer.PicReDrawT(scene->model, scene->inputs, scene->picture2, scene->picHidden0);
    QImage image(kSurfaceWidth, kSurfaceHeight, QImage::Format_RGB32);
    for ([[maybe_unused]] auto _ : state) {
        image.fill(0xFF400040U);
        QPainter painter(&image);
        painter.setClipRect(0, 0, kSurfaceWidth, kSurfaceHeight);
        for (int c = 0; c < kChannels; ++c) {
            painter.setPen(QColor::fromRgb(pixelOfColour(scene->model.LineColor[c])));
            for (int i = 1; i < kSampleRows; ++i) {
                painter.drawLine(scene->model.PlotX(c, i - 1), scene->model.PlotY(c, i - 1), scene->model.PlotX(c, i),
                                 scene->model.PlotY(c, i));
            }
        }
        painter.end();
        benchmark::DoNotOptimize(image.copy());
    }
}

/// What no frame can do without: fill the picture, read every sample, write both its coordinates, copy the picture.
void bareMinimum(benchmark::State& state) {
    const auto scene = std::make_unique<Scene>(Content::Mixed);
    publicM& model = scene->model;
    for ([[maybe_unused]] auto _ : state) {
        scene->picture2.Cls();
        for (int c = 0; c < kChannels; ++c) {
            for (int i = 0; i < kSampleRows; ++i) {
                model.PlotX(c, i) = i;
                model.PlotY(c, i) = model.SampleData(c, i);
            }
            benchmark::ClobberMemory();
        }
        scene->picHidden0.BitBlt(0, 0, kScreenWidth, kScreenHeight, scene->picture2, 0, 0);
        benchmark::ClobberMemory();
    }
}

} // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark("frame_mixed", [](benchmark::State& state) { frame(state, Content::Mixed); });
    benchmark::RegisterBenchmark("frame_noise", [](benchmark::State& state) { frame(state, Content::Noise); });
    benchmark::RegisterBenchmark("frame_mixed_avx2",
                                 [](benchmark::State& state) { frame(state, Content::Mixed, Way::Avx2); });
    benchmark::RegisterBenchmark("frame_noise_avx2",
                                 [](benchmark::State& state) { frame(state, Content::Noise, Way::Avx2); });
    benchmark::RegisterBenchmark("frame_mixed_plain",
                                 [](benchmark::State& state) { frame(state, Content::Mixed, Way::Plain); });
    benchmark::RegisterBenchmark("frame_noise_plain",
                                 [](benchmark::State& state) { frame(state, Content::Noise, Way::Plain); });
    benchmark::RegisterBenchmark("drawLine_mixed", [](benchmark::State& state) { drawLines(state, Content::Mixed); });
    benchmark::RegisterBenchmark("drawLine_noise", [](benchmark::State& state) { drawLines(state, Content::Noise); });
    benchmark::RegisterBenchmark("bare_minimum", bareMinimum);
    return sixtrace::bench::runAndCompare(
        argc, argv,
        {
            {"mixed frame / bare minimum", "frame_mixed", "bare_minimum", 1.1},
            {"noise frame / bare minimum", "frame_noise", "bare_minimum", 1.2},
            {"mixed frame, AVX2 / bare minimum", "frame_mixed_avx2", "bare_minimum", 1.5},
            {"noise frame, AVX2 / bare minimum", "frame_noise_avx2", "bare_minimum", 1.7},
            {"mixed frame, plain / bare minimum", "frame_mixed_plain", "bare_minimum", 3.0},
            {"noise frame, plain / bare minimum", "frame_noise_plain", "bare_minimum", 5.0},
            {"mixed frame / drawLine", "frame_mixed", "drawLine_mixed", 1.0},
            {"noise frame / drawLine", "frame_noise", "drawLine_noise", 1.0},
            {"noise frame / mixed frame", "frame_noise", "frame_mixed", 1.6},
        });
}
