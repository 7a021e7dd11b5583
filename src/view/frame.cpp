// SPDX-License-Identifier: MIT
#include "view/frame.h"

#include "platform/numbers.h"
#include "view/geometry.h"
#include "view/graticule.h"
#include "view/tracelayers.h"
#include "view/tracepoints.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {

/// The part of a slow scan's screen that is left free ahead of the write position.
constexpr double kScanGap = 0.08;
constexpr double kScanFilled = 0.92;

/// Where a channel's dots and lines go.
class TraceSink {
public:
    TraceSink() = default;
    TraceSink(const TraceSink&) = delete;
    TraceSink& operator=(const TraceSink&) = delete;
    virtual ~TraceSink() = default;

    /// Lifts the pen and sets it down: one dot.
    virtual void dot(std::int32_t x, std::int32_t y) = 0;
    /// The samples of a run: lines from the pen through them, or a dot for each.
    virtual void samples(const PointRun& points) = 0;
};

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

/// What a frame leaves of a channel besides its points: SampleStep, MsPerPixel and VoltPerPixel. False where a table row
/// does not exist; what lies before it is set then.
bool deriveSteps(publicM& model, int channel) {
    const auto c = static_cast<std::size_t>(channel);
    model.SampleStep[c] = model.SampleInterval[c];
    const auto milliseconds = msPerPixel(model, channel);
    if (!milliseconds) {
        return false;
    }
    model.MsPerPixel[c] = *milliseconds;
    const auto volts = voltPerPixel(model, channel);
    if (!volts) {
        return false;
    }
    model.VoltPerPixel[c] = *volts;
    return true;
}

/// Whether all samples of a channel are plotted in a row, as they are but for a slow scan that fills its screen.
bool isPlottedWhole(const publicM& model, int channel) {
    const auto c = static_cast<std::size_t>(channel);
    return model.TimeIndex[c] < kScanTimeRow || model.SampleCount[c] < model.ScreenPoints[c];
}

/// Plots one channel. Each step gives false when it ends in a run-time error; what was drawn by then stays.
class ChannelPlot {
public:
    ChannelPlot(publicM& model, int channel, bool line, TracePoints& points, TraceSink& sink)
        : m_model(model)
        , m_channel(channel)
        , m_line(line)
        , m_points(points)
        , m_sink(sink) {}

    [[nodiscard]] bool plot() {
        if (!deriveSteps(m_model, m_channel)) {
            return false;
        }
        const auto scale = plotScale(m_model, m_channel);
        if (!scale) {
            return false;
        }
        m_scale = *scale;

        const auto x = toInt32(m_scale.x0);
        const auto y = toInt32(m_scale.y(m_model.SampleData(m_channel, 0)));
        if (!x || !y) {
            return false;
        }
        m_sink.dot(*x, *y);
        return plotByTimeBase();
    }

private:
    [[nodiscard]] bool plotByTimeBase() {
        const auto c = static_cast<std::size_t>(m_channel);
        const double slots = m_model.ScreenPoints[c];
        const double scan = m_model.ScanPoint[c];
        if (isPlottedWhole(m_model, m_channel)) {
            return visit(0, m_model.SampleCount[c] - 1.0);
        }
        return slots * kScanFilled >= scan ? plotBothSweeps(slots, scan) : plotOneSweep(slots, scan);
    }

    /// The fresh sweep up to the write position, the gap, and what is left of the sweep before.
    [[nodiscard]] bool plotBothSweeps(double slots, double scan) {
        const double gapEnd = slots * kScanGap + scan;
        if (!m_line) {
            return visit(0, scan) && visit(gapEnd, slots);
        }
        if (!visit(0, scan - 1)) {
            return false;
        }
        // The pen crosses the gap over the row that the counter has reached, with the position that an earlier frame
        // left there: one dot.
        const double counter = std::max(scan, 0.0);
        if (!isSampleRow(counter)) {
            return false;
        }
        const int stale = static_cast<int>(counter);
        m_sink.dot(m_model.PlotX(m_channel, stale), m_model.PlotY(m_channel, stale));
        return liftTo(gapEnd) && visit(gapEnd, slots);
    }

    /// A write position near the end of the screen: the gap has eaten the start of the sweep.
    [[nodiscard]] bool plotOneSweep(double slots, double scan) {
        const double start = slots * kScanGap - (slots - scan);
        if (!m_line) {
            return visit(start, scan);
        }
        return liftTo(start) && visit(start + 1, scan);
    }

    /// Computes and stores the point of sample `at`, and sets the pen down there.
    [[nodiscard]] bool liftTo(double at) {
        const PointRun point = m_points.compute(m_model, m_channel, m_scale, at, at);
        if (!point.complete) {
            return false;
        }
        m_sink.dot(point.columns[0].x, point.columns[0].firstY);
        return true;
    }

    /// Visits the samples first, first + 1 ... last.
    [[nodiscard]] bool visit(double first, double last) {
        const PointRun run = m_points.compute(m_model, m_channel, m_scale, first, last);
        m_sink.samples(run);
        return run.complete;
    }

    publicM& m_model;
    int m_channel;
    bool m_line;
    TracePoints& m_points;
    TraceSink& m_sink;
    TraceScale m_scale;
};

bool isShown(const publicM& model, const FrameInputs& inputs, int channel) {
    const auto c = static_cast<std::size_t>(channel);
    return inputs.selected[c] && model.ChannelPresent[c] == 1;
}

/// Whether all traces run from left to right, so that layers can hold them.
bool runsRightward(const publicM& model, const FrameInputs& inputs) {
    for (int channel = 0; channel < kChannels; ++channel) {
        if (isShown(model, inputs, channel) && model.ScreenPoints[static_cast<std::size_t>(channel)] < 0) {
            return false;
        }
    }
    return true;
}

/// Plots the shown channels in their order, each into a sink of its own. False where a run-time error ended that.
bool plotChannels(publicM& model, const FrameInputs& inputs, TracePoints& points, Picture& picture2,
                  const auto& sinkOf) {
    for (int channel = 0; channel < kChannels; ++channel) {
        picture2.ForeColor = model.LineColor[static_cast<std::size_t>(channel)];
        if (!isShown(model, inputs, channel)) {
            continue;
        }
        auto sink = sinkOf(channel);
        if (!ChannelPlot(model, channel, inputs.line, points, sink).plot()) {
            return false;
        }
    }
    return true;
}

/// The same at once, for channels that are all plotted whole. False, with nothing drawn, where that cannot be done.
bool plotTogether(publicM& model, const FrameInputs& inputs, TracePoints& points, Picture& picture2,
                  const auto& sinkOf) {
    std::array<WholeTrace, kChannels> traces;
    std::size_t shown = 0;
    for (int channel = 0; channel < kChannels; ++channel) {
        if (!isShown(model, inputs, channel)) {
            continue;
        }
        const auto scale = plotScale(model, channel);
        if (!scale || !isPlottedWhole(model, channel)) {
            return false;
        }
        traces[shown++] = {channel, *scale, model.SampleCount[static_cast<std::size_t>(channel)]};
    }
    PerChannel<PointRun> runs;
    if (!points.computeTogether(model, std::span(traces).first(shown), runs)) {
        return false;
    }
    for (std::size_t i = 0; i < shown; ++i) {
        const int channel = traces[i].channel;
        picture2.ForeColor = model.LineColor[static_cast<std::size_t>(channel)];
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

void FrameRenderer::PicReDrawT(publicM& model, const FrameInputs& inputs, Picture& picture2, Picture& picHidden0) {
    const int divisions = divisionsAcross(model.FileKind);
    if (!deriveZeroLines(model, inputs.markerTop)) {
        drawGraticule(picture2, model.GridColor, inputs.graticule, divisions);
        return;
    }
    if (!inputs.line || !runsRightward(model, inputs)) {
        drawGraticule(picture2, model.GridColor, inputs.graticule, divisions);
        const auto sinkOf = [&](int channel) { return PictureSink(picture2, model, channel, inputs.line); };
        if (plotChannels(model, inputs, m_scratch->points, picture2, sinkOf)) {
            picHidden0.BitBlt(0, 0, kScreenWidth, kScreenHeight, picture2, 0, 0);
        }
        return;
    }

    TraceLayers& layers = m_scratch->layers;
    const auto sinkOf = [&](int) { return LayerSink(layers, picture2.ForeColor); };
    m_scratch->ground.prepare(picture2.BackColor, model.GridColor, inputs.graticule, divisions);
    const bool complete = plotTogether(model, inputs, m_scratch->points, picture2, sinkOf) ||
                          plotChannels(model, inputs, m_scratch->points, picture2, sinkOf);
    picture2.drawMode = DrawMode::CopyPen;
    picture2.drawStyle = DrawStyle::Solid;
    if (complete) {
        picHidden0.forgetCopy();
    }
    layers.sweep(m_scratch->ground, picture2);
    if (complete) {
        picHidden0.copyLater(picture2, kScreenWidth, kScreenHeight);
    }
}

void PicDrawSlow(const publicM& model, bool graticule, Picture& picture2) {
    drawGraticule(picture2, model.GridColor, graticule, divisionsAcross(model.FileKind));
}

} // namespace sixtrace
