// SPDX-License-Identifier: MIT
#include "view/tracepoints.h"

#include "platform/text/numbers.h"
#include "view/samplelanes.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {

constexpr double kLargest = 2147483647.0;

bool fitsInt32(double value) {
    return value > -kLargest && value < kLargest;
}

/// Nearest integer, halves to even, of a value that is known to fit.
std::int32_t nearest(double value) {
    return static_cast<std::int32_t>(std::nearbyint(value));
}

/// How many of the values first, first + 1, ... do not exceed `last`; counts no further than one above `atMost`. Values
/// with a fraction are counted one by one: as the value grows, the fraction loses its last bits, and a value just above
/// a whole number may become that number.
double countedSteps(double first, double last, double atMost) {
    if (first == std::floor(first)) {
        return std::floor(last - first) + 1;
    }
    double steps = 0;
    for (double counter = first; counter <= last && steps <= atMost; counter += 1) {
        ++steps;
    }
    return steps;
}

/// Which samples fall on which column, for one time scale. A counter runs from `first` in steps of 1.
class ColumnTable {
public:
    const std::vector<ColumnEnd>& of(const TraceScale& scale, double first, int count) {
        if (scale.x0 == m_x0 && scale.dx == m_dx && first == m_first && count == m_count) {
            return m_entries;
        }
        m_x0 = scale.x0;
        m_dx = scale.dx;
        m_first = first;
        m_count = count;
        m_entries.clear();
        double counter = first;
        for (int i = 0; i < count; ++i, counter += 1) {
            const std::int32_t x = nearest(scale.x(counter));
            if (m_entries.empty() || m_entries.back().x != x) {
                m_entries.push_back({x, i});
            }
            m_entries.back().end = i + 1;
        }
        return m_entries;
    }

private:
    double m_x0 = 0;
    double m_dx = 0;
    double m_first = 0;
    int m_count = 0;
    std::vector<ColumnEnd> m_entries;
};

/// The heights of counts for one volt scale.
class HeightTable {
public:
    const HeightsOfCounts& of(const TraceScale& scale) {
        if (!(scale.yPos == m_yPos && scale.perCount == m_perCount && scale.divisor == m_divisor &&
              scale.height == m_height)) {
            m_yPos = scale.yPos;
            m_perCount = scale.perCount;
            m_divisor = scale.divisor;
            m_height = scale.height;
            for (int count = kLeastCount; count <= kGreatestCount; ++count) {
                m_heights[entryOfCount(count)] = nearest(scale.y(count));
            }
            const double step = scale.perCount * scale.height / scale.divisor;
            m_step = wideStepGives(step, scale.yPos, m_heights) ? std::optional(step) : std::nullopt;
        }
        return m_heights;
    }
    /// The pixels per count with which vectors compute the same heights; nothing where they cannot.
    [[nodiscard]] std::optional<double> step() const { return m_step; }

private:
    double m_yPos = 0;
    double m_perCount = 0;
    double m_divisor = 0; // no scale divides by 0
    double m_height = 0;
    HeightsOfCounts m_heights{};
    std::optional<double> m_step;
};

/// Whether the positions of `count` samples from `first` on fit 32 bits: X lies between its ends, Y between those of
/// the sample type.
bool allFit(const TraceScale& scale, double first, int count) {
    return fitsInt32(scale.x(first)) && fitsInt32(scale.x(first + count)) && fitsInt32(scale.y(32767)) &&
           fitsInt32(scale.y(-32768));
}

} // namespace

struct TracePoints::Tables {
    PerChannel<ColumnTable> columns;
    PerChannel<HeightTable> heights;
};

TracePoints::TracePoints(Vectors vectors)
    : m_vectors(vectors)
    , m_tables(std::make_unique<Tables>()) {
    m_columns.reserve(kSampleRows);
}
TracePoints::~TracePoints() = default;

bool isSampleRow(double index) {
    return index >= 0 && index <= kSampleRows - 1;
}

PointRun TracePoints::compute(publicM& model, int channel, const TraceScale& scale, double first, double last) {
    PointRun run;
    m_columns.clear();
    if (!(first <= last)) {
        return run;
    }
    // The rows are the rounded first value and those after it: the fraction stays the same from value to value and is
    // never a half, since it comes from 2/25 of a whole number.
    const double firstRow = std::nearbyint(first);
    if (!isSampleRow(firstRow)) {
        run.error = ErrorNumber::SubscriptOutOfRange;
        return run;
    }
    run.firstRow = static_cast<int>(firstRow);
    const double held = kSampleRows - firstRow;
    const double wanted = countedSteps(first, last, held);
    if (wanted > held) {
        run.error = ErrorNumber::SubscriptOutOfRange;
    }
    const int count = static_cast<int>(std::min(wanted, held));

    constexpr int kWorthATable = 512;
    if (allFit(scale, first, count) && count >= kWorthATable) {
        computeByTable(model, channel, scale, first, run, count);
    } else {
        computeOneByOne(model, channel, scale, first, run, count);
    }
    run.columns = m_columns;
    return run;
}

bool TracePoints::computeTogether(publicM& model, std::span<const WholeTrace> traces, PerChannel<PointRun>& runs) {
    if (traces.empty() || traces.size() > kChannels) {
        return false;
    }
    PerChannel<SampleLane> lanes;
    for (std::size_t i = 0; i < traces.size(); ++i) {
        const WholeTrace& trace = traces[i];
        const int c = trace.channel;
        if (trace.count < 1 || trace.count > kSampleRows || !allFit(trace.scale, 0, trace.count)) {
            return false;
        }
        // Channels of one time scale have one table.
        const auto alike = std::ranges::find_if(traces, [&](const WholeTrace& other) {
            return other.scale.x0 == trace.scale.x0 && other.scale.dx == trace.scale.dx && other.count == trace.count;
        });
        const std::vector<ColumnEnd>& ends = m_tables->columns[alike->channel].of(trace.scale, 0, trace.count);
        m_columnsOf[c].resize(ends.size());
        HeightTable& table = m_tables->heights[c];
        const HeightsOfCounts& heights = table.of(trace.scale);
        const auto step = m_vectors == Vectors::Allowed ? table.step() : std::nullopt;
        lanes[i] = {trace.channel, &heights, trace.scale.yPos, step, ends, m_columnsOf[c].data()};
    }
    if (!computeLanes(model, std::span(lanes).first(traces.size()))) {
        return false;
    }
    for (std::size_t i = 0; i < traces.size(); ++i) {
        runs[i] = {0, traces[i].count, m_columnsOf[traces[i].channel]};
    }
    return true;
}

void TracePoints::computeByTable(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run,
                                 int count) {
    const int c = channel;
    const HeightsOfCounts& heights = m_tables->heights[c].of(scale);
    const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(run.firstRow) * kChannels;
    const std::int16_t* sample = model.SampleData.channel(channel) + start;
    std::int32_t* plotX = model.PlotX.channel(channel) + start;
    std::int32_t* plotY = model.PlotY.channel(channel) + start;
    const auto heightOf = [&](int value) {
        return value >= kLeastCount && value <= kGreatestCount ? heights[entryOfCount(value)] : nearest(scale.y(value));
    };

    int i = 0;
    for (const ColumnEnd& entry : m_tables->columns[c].of(scale, first, count)) {
        TraceColumn column;
        column.x = entry.x;
        column.firstY = heightOf(*sample);
        std::int32_t least = column.firstY;
        std::int32_t greatest = column.firstY;
        std::int32_t y = column.firstY;
        for (; i < entry.end; ++i) {
            y = heightOf(*sample);
            *plotX = entry.x;
            *plotY = y;
            least = std::min(least, y);
            greatest = std::max(greatest, y);
            sample += kChannels;
            plotX += kChannels;
            plotY += kChannels;
        }
        column.lastY = y;
        column.least = least;
        column.greatest = greatest;
        m_columns.push_back(column);
    }
    run.count = count;
}

void TracePoints::computeOneByOne(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run,
                                  int count) {
    double counter = first;
    for (int i = 0; i < count; ++i, counter += 1) {
        const auto x = toInt32(scale.x(counter));
        if (!x) {
            run.error = ErrorNumber::Overflow;
            return;
        }
        model.PlotX(channel, run.firstRow + i) = *x;
        const auto y = toInt32(scale.y(model.SampleData(channel, run.firstRow + i)));
        if (!y) {
            run.error = ErrorNumber::Overflow;
            return;
        }
        model.PlotY(channel, run.firstRow + i) = *y;
        if (m_columns.empty() || m_columns.back().x != *x) {
            m_columns.push_back({*x, *y, *y, *y, *y});
        } else {
            TraceColumn& column = m_columns.back();
            column.lastY = *y;
            column.least = std::min(column.least, *y);
            column.greatest = std::max(column.greatest, *y);
        }
        ++run.count;
    }
}

} // namespace sixtrace
