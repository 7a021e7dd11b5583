// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/text/runtimeerror.h"
#include "view/geometry.h"
#include "view/tracepoints.h"

#include <optional>

namespace sixtrace {

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

/// Whether a frame plots a channel: the capture holds it and its row is ticked.
[[nodiscard]] bool isShown(const publicM& model, const PerChannel<bool>& selected, int channel);

/// What a frame leaves of a channel besides its points: SampleStep, MsPerPixel and VoltPerPixel, of the screen or of a
/// page. False where a table row does not exist; what lies before it is set then.
bool deriveSteps(publicM& model, int channel, const std::optional<PageArea>& page = {});

/// Whether all samples of a channel are plotted in a row, as they are but for a slow scan that fills its screen.
[[nodiscard]] bool isPlottedWhole(const publicM& model, int channel);

/// Plots one channel, on the screen or in the frame of a page: the same cases by time base and scan position, the same
/// pen lifts, only the mapping differs. Each step gives false when it ends in a run-time error; what was drawn by then
/// stays.
class ChannelPlot {
public:
    /// On the screen where `page` is empty. What is passed by reference outlives the plot.
    ChannelPlot(publicM& model, int channel, TraceStyle style, TracePoints& points, TraceSink& sink,
                const std::optional<PageArea>& page = {})
        : m_model(model)
        , m_channel(channel)
        , m_style(style)
        , m_points(points)
        , m_sink(sink)
        , m_page(page) {}

    /// Leaves PlotX and PlotY of the samples visited, SampleStep, MsPerPixel and VoltPerPixel in the model.
    [[nodiscard]] bool plot();
    /// What ended a plot that gave false.
    [[nodiscard]] ErrorNumber error() const { return m_error; }

private:
    [[nodiscard]] bool takeScale();
    [[nodiscard]] bool plotByTimeBase();
    [[nodiscard]] bool plotBothSweeps(double slots, double scan);
    [[nodiscard]] bool plotOneSweep(double slots, double scan);
    [[nodiscard]] bool liftTo(double at);
    [[nodiscard]] bool visit(double first, double last);
    /// Notes what cut a run, if anything did.
    [[nodiscard]] bool isComplete(const PointRun& run);

    publicM& m_model;
    int m_channel;
    TraceStyle m_style;
    TracePoints& m_points;
    TraceSink& m_sink;
    std::optional<PageArea> m_page;
    TraceScale m_scale;
    ErrorNumber m_error = ErrorNumber::SubscriptOutOfRange;
};

} // namespace sixtrace
