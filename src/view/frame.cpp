// SPDX-License-Identifier: MIT
#include "view/frame.h"

#include "view/channelplot.h"
#include "view/graticule.h"
#include "view/tracelayers.h"
#include "view/tracepoints.h"

namespace sixtrace {

namespace {

/// Draws every dot and segment in order, one by one: any order of X, any style.
class PictureSink final : public TraceSink {
public:
    PictureSink(Picture& picture, const publicM& model, int channel, TraceStyle style)
        : m_picture(picture)
        , m_model(model)
        , m_channel(channel)
        , m_style(style) {}

    void dot(std::int32_t x, std::int32_t y) override { m_picture.PSet(x, y); }
    void samples(const PointRun& points) override {
        for (int row = points.firstRow; row < points.firstRow + points.count; ++row) {
            const std::int32_t x = m_model.PlotX(m_channel, row);
            const std::int32_t y = m_model.PlotY(m_channel, row);
            if (m_style == TraceStyle::Lines) {
                m_picture.Line(x, y);
            } else {
                m_picture.PSet(x, y);
            }
        }
    }

private:
    Picture& m_picture;
    const publicM& m_model;
    int m_channel;
    TraceStyle m_style;
};

/// Collects lines whose X never decreases as layers, which are painted together at the end of the frame.
class LayerSink final : public TraceSink {
public:
    LayerSink(TraceLayers& layers, Colour colour)
        : m_layers(layers)
        , m_colour(colour) {}
    ~LayerSink() override { lift(); }
    LayerSink(const LayerSink&) = delete;
    LayerSink& operator=(const LayerSink&) = delete;

    void dot(std::int32_t x, std::int32_t y) override {
        lift();
        m_layers.begin(m_colour, x, y);
        m_down = true;
    }
    void samples(const PointRun& points) override {
        for (const TraceColumn& column : points.columns) {
            m_layers.lineThrough(column);
        }
    }

private:
    void lift() {
        if (m_down) {
            m_layers.end();
        }
        m_down = false;
    }

    TraceLayers& m_layers;
    Colour m_colour;
    bool m_down = false;
};

/// Whether all traces run from left to right, so that layers can hold them.
bool runsRightward(const publicM& model, const FrameInputs& inputs) {
    for (int channel = 0; channel < kChannels; ++channel) {
        if (isShown(model, inputs.selected, channel) && model.ScreenPoints[channel] < 0) {
            return false;
        }
    }
    return true;
}

/// Plots the shown channels in their order, each into a sink of its own. False where a run-time error ended it.
bool plotChannels(publicM& model, const FrameInputs& inputs, TracePoints& points, Picture& picture2,
                  const auto& sinkOf) {
    for (int channel = 0; channel < kChannels; ++channel) {
        picture2.ForeColor = model.LineColor[channel];
        if (!isShown(model, inputs.selected, channel)) {
            continue;
        }
        auto sink = sinkOf(channel);
        if (!ChannelPlot(model, channel, inputs.style, points, sink).plot()) {
            return false;
        }
    }
    return true;
}

/// Does the same for all channels at once, if each of them is plotted as one run. False, with nothing drawn, where that
/// cannot be done.
bool plotTogether(publicM& model, const FrameInputs& inputs, TracePoints& points, Picture& picture2,
                  const auto& sinkOf) {
    PerChannel<WholeTrace> traces;
    std::size_t shown = 0;
    for (int channel = 0; channel < kChannels; ++channel) {
        if (!isShown(model, inputs.selected, channel)) {
            continue;
        }
        const auto scale = plotScale(model, channel);
        if (!scale || !isPlottedWhole(model, channel)) {
            return false;
        }
        traces[shown++] = {channel, *scale, model.SampleCount[channel]};
    }
    PerChannel<PointRun> runs;
    if (!points.computeTogether(model, std::span(traces).first(shown), runs)) {
        return false;
    }
    for (std::size_t i = 0; i < shown; ++i) {
        const int channel = traces[i].channel;
        picture2.ForeColor = model.LineColor[channel];
        // A scale was found, so the table rows exist.
        static_cast<void>(deriveSteps(model, channel));
        auto sink = sinkOf(channel);
        const TraceColumn& first = runs[i].columns.front();
        sink.dot(first.x, first.firstY);
        sink.samples(runs[i]);
    }
    picture2.ForeColor = model.LineColor.back();
    return true;
}

} // namespace

struct FrameRenderer::Scratch {
    explicit Scratch(Vectors vectors)
        : layers(vectors)
        , points(vectors) {}

    GraticuleRows ground;
    TraceLayers layers;
    TracePoints points;
};

FrameRenderer::FrameRenderer(Vectors vectors)
    : m_scratch(std::make_unique<Scratch>(vectors)) {}
FrameRenderer::~FrameRenderer() = default;

FrameInputs frameInputs(const ScreenState& screen) {
    FrameInputs inputs{screen.graticule, screen.traceStyle(), screen.ticks, {}};
    for (int channel = 0; channel < kChannels; ++channel) {
        inputs.markerTop[channel] = screen.markers[channel].top;
    }
    return inputs;
}

void FrameRenderer::PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, Picture& picHidden0) {
    FrameCopy copy(picture2, picHidden0);
    PicReDrawT(model, inputs, picture2, copy);
    copy.bringUpToDate();
}

void FrameRenderer::PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, FrameCopy& copy) {
    const int divisions = divisionsAcross(model.FileKind);
    if (!deriveZeroLines(model, inputs.markerTop)) {
        copy.bringUpToDate();
        drawGraticule(picture2, model.GridColor, inputs.graticule, divisions);
        return;
    }
    if (inputs.style == TraceStyle::Points || !runsRightward(model, inputs)) {
        copy.bringUpToDate();
        drawGraticule(picture2, model.GridColor, inputs.graticule, divisions);
        const auto sinkOf = [&](int channel) { return PictureSink(picture2, model, channel, inputs.style); };
        if (plotChannels(model, inputs, m_scratch->points, picture2, sinkOf)) {
            copy.noteFrame();
        }
        return;
    }

    TraceLayers& layers = m_scratch->layers;
    const auto sinkOf = [&](int) { return LayerSink(layers, picture2.ForeColor); };
    m_scratch->ground.prepare(picture2, model.GridColor, inputs.graticule, divisions);
    const bool complete = plotTogether(model, inputs, m_scratch->points, picture2, sinkOf) ||
                          plotChannels(model, inputs, m_scratch->points, picture2, sinkOf);
    picture2.drawMode = DrawMode::CopyPen;
    picture2.drawStyle = DrawStyle::Solid;
    if (complete) {
        copy.forget();
    } else {
        copy.bringUpToDate();
    }
    layers.sweep(m_scratch->ground, picture2);
    if (complete) {
        copy.noteFrame();
    }
}

void PicDrawSlow(const publicM& model, Graticule graticule, Picture& picture2) {
    drawGraticule(picture2, model.GridColor, graticule, divisionsAcross(model.FileKind));
}

} // namespace sixtrace
