// SPDX-License-Identifier: MIT
#include "view/channelplot.h"

#include "platform/text/numbers.h"

#include <algorithm>

namespace sixtrace {

namespace {

/// A slow scan leaves a gap ahead of its write position, as a part of the screen's width.
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
    const auto milliseconds = page ? msPerPixel(model, channel, *page) : msPerPixel(model, channel);
    if (!milliseconds) {
        return false;
    }
    model.MsPerPixel[c] = *milliseconds;
    const auto volts = page ? voltPerPixel(model, channel, *page) : voltPerPixel(model, channel);
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

Outcome ChannelPlot::takeScale() {
    if (!deriveSteps(m_model, m_channel, m_page)) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    const auto scale = m_page ? pageScale(m_model, m_channel, *m_page) : plotScale(m_model, m_channel);
    if (!scale) {
        // deriveSteps has found the rows of the view. So the row of the capture is missing, or the count is 0.
        const bool rowExists = m_model.TimeBaseTable.has(m_model.TimeIndex[m_channel]);
        return RuntimeError::of(rowExists ? ErrorNumber::DivisionByZero : ErrorNumber::SubscriptOutOfRange);
    }
    m_scale = *scale;
    return success();
}

Outcome ChannelPlot::plot() {
    if (Outcome scale = takeScale(); !scale) {
        return scale;
    }
    const auto x = toInt32(m_scale.x0);
    const auto y = toInt32(m_scale.y(m_model.SampleData(m_channel, 0)));
    if (!x || !y) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    m_sink.dot(*x, *y);
    return plotByTimeBase();
}

Outcome ChannelPlot::plotByTimeBase() {
    const int c = m_channel;
    const double slots = m_model.ScreenPoints[c];
    const double scan = m_model.ScanPoint[c];
    if (isPlottedWhole(m_model, m_channel)) {
        return visit(0, m_model.SampleCount[c] - 1.0);
    }
    return slots * kScanFilled >= scan ? plotBothSweeps(slots, scan) : plotOneSweep(slots, scan);
}

/// Plots the new sweep up to the write position and, after the gap, the rest of the previous sweep.
Outcome ChannelPlot::plotBothSweeps(double slots, double scan) {
    const double gapEnd = slots * kScanGap + scan;
    if (m_style == TraceStyle::Points) {
        const Outcome fresh = visit(0, scan);
        return fresh ? visit(gapEnd, slots) : fresh;
    }
    if (Outcome fresh = visit(0, scan - 1); !fresh) {
        return fresh;
    }
    // On its way over the gap the pen leaves one dot, at the position that an earlier frame stored for the sample at
    // the write position.
    const double counter = std::max(scan, 0.0);
    if (!isSampleRow(counter)) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    const int stale = static_cast<int>(counter);
    m_sink.dot(m_model.PlotX(m_channel, stale), m_model.PlotY(m_channel, stale));
    const Outcome lifted = liftTo(gapEnd);
    return lifted ? visit(gapEnd, slots) : lifted;
}

/// Plots a sweep whose write position is near the end of the screen. The gap continues at the start of the screen, so
/// nothing of the previous sweep remains.
Outcome ChannelPlot::plotOneSweep(double slots, double scan) {
    const double start = slots * kScanGap - (slots - scan);
    if (m_style == TraceStyle::Points) {
        return visit(start, scan);
    }
    const Outcome lifted = liftTo(start);
    return lifted ? visit(start + 1, scan) : lifted;
}

/// Computes and stores the point of sample `at`, and sets the pen down there.
Outcome ChannelPlot::liftTo(double at) {
    const PointRun point = m_points.compute(m_model, m_channel, m_scale, at, at);
    if (point.error) {
        return RuntimeError::of(*point.error);
    }
    m_sink.dot(point.columns[0].x, point.columns[0].firstY);
    return success();
}

/// Visits the samples first, first + 1 ... last.
Outcome ChannelPlot::visit(double first, double last) {
    const PointRun run = m_points.compute(m_model, m_channel, m_scale, first, last);
    m_sink.samples(run);
    return run.error ? Outcome(RuntimeError::of(*run.error)) : success();
}

} // namespace sixtrace
