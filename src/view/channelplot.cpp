// SPDX-License-Identifier: MIT
#include "view/channelplot.h"

#include "platform/text/numbers.h"

#include <algorithm>

namespace sixtrace {

namespace {

/// The part of a slow scan's screen that is left free ahead of the write position.
constexpr double kScanGap = 0.08;
constexpr double kScanFilled = 0.92;

} // namespace

bool isShown(const publicM& model, const PerChannel<bool>& selected, int channel) {
    const int c = channel;
    return selected[c] && model.ChannelPresent[c] == 1;
}

bool deriveSteps(publicM& model, int channel, const std::optional<PageArea>& page) {
    const int c = channel;
    model.SampleStep[c] = model.SampleInterval[c];
    const auto milliseconds = page ? msPerPixel(model, channel, page->width) : msPerPixel(model, channel);
    if (!milliseconds) {
        return false;
    }
    model.MsPerPixel[c] = *milliseconds;
    const auto volts = page ? voltPerPixel(model, channel, page->height) : voltPerPixel(model, channel);
    if (!volts) {
        return false;
    }
    model.VoltPerPixel[c] = *volts;
    return true;
}

bool isPlottedWhole(const publicM& model, int channel) {
    const int c = channel;
    return model.TimeIndex[c] < kScanTimeRow || model.SampleCount[c] < model.ScreenPoints[c];
}

bool ChannelPlot::takeScale() {
    if (!deriveSteps(m_model, m_channel, m_page)) {
        return false;
    }
    const auto scale = m_page ? pageScale(m_model, m_channel, *m_page) : plotScale(m_model, m_channel);
    m_scale = scale.value_or(TraceScale{});
    // The rows of the view exist by now, so it is that of the capture, or there is nothing to divide by.
    if (m_model.TimeBaseTable.has(m_model.TimeIndex[m_channel])) {
        m_error = ErrorNumber::DivisionByZero;
    }
    return scale.has_value();
}

bool ChannelPlot::plot() {
    if (!takeScale()) {
        return false;
    }
    const auto x = toInt32(m_scale.x0);
    const auto y = toInt32(m_scale.y(m_model.SampleData(m_channel, 0)));
    if (!x || !y) {
        m_error = ErrorNumber::Overflow;
        return false;
    }
    m_sink.dot(*x, *y);
    return plotByTimeBase();
}

bool ChannelPlot::plotByTimeBase() {
    const int c = m_channel;
    const double slots = m_model.ScreenPoints[c];
    const double scan = m_model.ScanPoint[c];
    if (isPlottedWhole(m_model, m_channel)) {
        return visit(0, m_model.SampleCount[c] - 1.0);
    }
    return slots * kScanFilled >= scan ? plotBothSweeps(slots, scan) : plotOneSweep(slots, scan);
}

/// The fresh sweep up to the write position, the gap, and what is left of the sweep before.
bool ChannelPlot::plotBothSweeps(double slots, double scan) {
    const double gapEnd = slots * kScanGap + scan;
    if (m_style == TraceStyle::Points) {
        return visit(0, scan) && visit(gapEnd, slots);
    }
    if (!visit(0, scan - 1)) {
        return false;
    }
    // The pen crosses the gap over the row that the counter has reached, with the position that an earlier frame
    // left there: one dot.
    const double counter = std::max(scan, 0.0);
    if (!isSampleRow(counter)) {
        m_error = ErrorNumber::SubscriptOutOfRange;
        return false;
    }
    const int stale = static_cast<int>(counter);
    m_sink.dot(m_model.PlotX(m_channel, stale), m_model.PlotY(m_channel, stale));
    return liftTo(gapEnd) && visit(gapEnd, slots);
}

/// A write position near the end of the screen: the gap has eaten the start of the sweep.
bool ChannelPlot::plotOneSweep(double slots, double scan) {
    const double start = slots * kScanGap - (slots - scan);
    if (m_style == TraceStyle::Points) {
        return visit(start, scan);
    }
    return liftTo(start) && visit(start + 1, scan);
}

/// Computes and stores the point of sample `at`, and sets the pen down there.
bool ChannelPlot::liftTo(double at) {
    const PointRun point = m_points.compute(m_model, m_channel, m_scale, at, at);
    if (!isComplete(point)) {
        return false;
    }
    m_sink.dot(point.columns[0].x, point.columns[0].firstY);
    return true;
}

/// Visits the samples first, first + 1 ... last.
bool ChannelPlot::visit(double first, double last) {
    const PointRun run = m_points.compute(m_model, m_channel, m_scale, first, last);
    m_sink.samples(run);
    return isComplete(run);
}

bool ChannelPlot::isComplete(const PointRun& run) {
    m_error = run.overflow ? ErrorNumber::Overflow : ErrorNumber::SubscriptOutOfRange;
    return run.complete;
}

} // namespace sixtrace
