// SPDX-License-Identifier: MIT
#include "view/frame.h"

#include "view/channelplot.h"
#include "view/geometry.h"
#include "view/graticule.h"
#include "view/tracelayers.h"
#include "view/tracepoints.h"

namespace sixtrace {

namespace {

/// Draws every dot and segment in order, one by one: any order of X, any style.
class PictureSink final : public TraceSink {
public:
    PictureSink(Picture& picture, const publicM& model, int channel, bool line)
        : m_picture(picture)
        , m_model(model)
        , m_channel(channel)
        , m_line(line) {}

    void dot(std::int32_t x, std::int32_t y) override { m_picture.PSet(x, y); }
    void samples(const PointRun& points) override {
        for (int row = points.firstRow; row < points.firstRow + points.count; ++row) {
            const std::int32_t x = m_model.PlotX(m_channel, row);
            const std::int32_t y = m_model.PlotY(m_channel, row);
            if (m_line) {
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
    bool m_line;
};

/// Collects lines whose X never falls in layers, which one sweep paints at the end of the frame.
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
        if (isShown(model, inputs.selected, channel) && model.ScreenPoints[static_cast<std::size_t>(channel)] < 0) {
            return false;
        }
    }
    return true;
}

} // namespace

struct FrameRenderer::Scratch {
    TraceLayers layers;
    TracePoints points;
};

FrameRenderer::FrameRenderer()
    : m_scratch(std::make_unique<Scratch>()) {}
FrameRenderer::~FrameRenderer() = default;

void FrameRenderer::PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, Picture& picHidden0) {
    drawGraticule(picture2, model.GridColor, inputs.graticule, divisionsAcross(model.FileKind));
    if (!deriveZeroLines(model, inputs.markerTop)) {
        return;
    }

    const bool inLayers = inputs.line && runsRightward(model, inputs);
    TraceLayers& layers = m_scratch->layers;
    layers.clear();
    bool complete = true;
    for (int channel = 0; channel < kChannels && complete; ++channel) {
        picture2.ForeColor = model.LineColor[static_cast<std::size_t>(channel)];
        if (!isShown(model, inputs.selected, channel)) {
            continue;
        }
        if (inLayers) {
            LayerSink sink(layers, picture2.ForeColor);
            complete = ChannelPlot(model, channel, inputs.line, m_scratch->points, sink).plot();
        } else {
            PictureSink sink(picture2, model, channel, inputs.line);
            complete = ChannelPlot(model, channel, inputs.line, m_scratch->points, sink).plot();
        }
    }
    layers.sweep(picture2, complete ? &picHidden0 : nullptr, kScreenWidth, kScreenHeight);
}

void PicDrawSlow(const publicM& model, bool graticule, Picture& picture2) {
    drawGraticule(picture2, model.GridColor, graticule, divisionsAcross(model.FileKind));
}

} // namespace sixtrace
