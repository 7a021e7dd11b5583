// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/text/runtimeerror.h"
#include "view/geometry.h"
#include "view/tracepoints.h"

#include <optional>

namespace sixtrace {

/// Receives the dots and lines of a channel.
class TraceSink {
public:
    TraceSink() = default;
    TraceSink(const TraceSink&) = delete;
    TraceSink& operator=(const TraceSink&) = delete;
    virtual ~TraceSink() = default;

    /// Lifts the pen and sets it down at a point, which draws one dot.
    virtual void dot(std::int32_t x, std::int32_t y) = 0;
    /// The samples of a run: lines from the pen through them, or a dot for each.
    virtual void samples(const PointRun& points) = 0;
};

/// Whether a frame plots a channel: the capture holds it and its row is ticked.
[[nodiscard]] bool isShown(const publicM& model, const PerChannel<bool>& selected, int channel);

/// Sets SampleStep, MsPerPixel and VoltPerPixel of a channel, for the screen or for a page. False where a table row
/// does not exist; the values before it in this order are set all the same.
bool deriveSteps(publicM& model, int channel, const std::optional<PageArea>& page = {});

/// Whether all samples of a channel are plotted as one run. Only a slow scan that fills its screen is plotted in parts.
[[nodiscard]] bool isPlottedWhole(const publicM& model, int channel);

/// Plots one channel, on the screen or in the frame of a page. The cases by time base and write position and the lifts
/// of the pen are the same for both; only the scale differs. A run-time error ends the plot; what was drawn before it
/// stays.
class ChannelPlot {
public:
    /// Plots on the screen where `page` is empty. The referenced objects have to live as long as this one.
    ChannelPlot(publicM& model, int channel, TraceStyle style, TracePoints& points, TraceSink& sink,
                const std::optional<PageArea>& page = {})
        : m_model(model)
        , m_channel(channel)
        , m_style(style)
        , m_points(points)
        , m_sink(sink)
        , m_page(page) {}

    /// Stores PlotX and PlotY of the samples visited, SampleStep, MsPerPixel and VoltPerPixel in the model.
    [[nodiscard]] Outcome plot();

private:
    [[nodiscard]] Outcome takeScale();
    [[nodiscard]] Outcome plotByTimeBase();
    [[nodiscard]] Outcome plotBothSweeps(double slots, double scan);
    [[nodiscard]] Outcome plotOneSweep(double slots, double scan);
    [[nodiscard]] Outcome liftTo(double at);
    [[nodiscard]] Outcome visit(double first, double last);

    publicM& m_model;
    int m_channel;
    TraceStyle m_style;
    TracePoints& m_points;
    TraceSink& m_sink;
    std::optional<PageArea> m_page;
    TraceScale m_scale;
};

} // namespace sixtrace
