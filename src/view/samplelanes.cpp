// SPDX-License-Identifier: MIT
#include "view/samplelanes.h"

#include <algorithm>

namespace sixtrace {

namespace {

/// Computes rows one sample at a time.
void computeRows(LaneRows& lanes, const std::int16_t* samples, std::int32_t* plotX, std::int32_t* plotY, int rows) {
    for (int row = 0; row < rows; ++row) {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const std::int16_t count = samples[channel];
            plotX[channel] = lanes.x[channel];
            plotY[channel] = lanes.heights[channel][entryOfCount(count)];
            lanes.least[channel] = std::min(lanes.least[channel], count);
            lanes.greatest[channel] = std::max(lanes.greatest[channel], count);
        }
        samples += kChannels;
        plotX += kChannels;
        plotY += kChannels;
    }
}

class Lanes {
public:
    Lanes(publicM& model, std::span<const SampleLane> lanes)
        : m_samples(model.SampleData.channel(0))
        , m_plotX(model.PlotX.channel(0))
        , m_plotY(model.PlotY.channel(0)) {
        m_wide = lanes.size() == kChannels;
        for (const SampleLane& source : lanes) {
            const int channel = source.channel;
            m_wide = m_wide && source.step.has_value();
            m_rows.heights[channel] = source.heights->data();
            m_rows.yPos[channel] = source.yPos;
            m_rows.step[channel] = source.step.value_or(0);
            m_lanes[m_count++] = {source.channel,
                                  source.heights->data(),
                                  source.columns.data(),
                                  source.columns.data() + source.columns.size(),
                                  source.out,
                                  0};
        }
    }

    /// Goes from one end of a column to the next, of whichever lane. All lanes' X stay the same between two of them.
    bool compute() {
        for (std::size_t i = 0; i < m_count; ++i) {
            begin(m_lanes[i], 0);
        }
        int first = 0;
        while (m_count > 0) {
            int end = m_lanes[0].column->end;
            for (std::size_t i = 1; i < m_count; ++i) {
                end = std::min(end, m_lanes[i].column->end);
            }
            if (m_count == kChannels) {
                computeAll(first, end);
            } else {
                computeSome(first, end);
            }
            endColumns(end);
            first = end;
        }
        return m_inRange;
    }

private:
    /// A trace on its way.
    struct Lane {
        int channel = 0;
        const std::int32_t* heights = nullptr;
        const ColumnEnd* column = nullptr; ///< the present one
        const ColumnEnd* columnsEnd = nullptr;
        TraceColumn* out = nullptr;
        int first = 0; ///< sample of the present column
    };

    void begin(const Lane& lane, int sample) {
        const std::int16_t count = m_samples[sample * kChannels + lane.channel];
        const int channel = lane.channel;
        m_rows.x[channel] = lane.column->x;
        m_rows.least[channel] = count;
        m_rows.greatest[channel] = count;
    }

    /// The last row of a stretch may be the last of all, after which vectors must not read.
    void computeAll(int first, int end) {
        const int last = end - 1;
        const int start = m_wide ? last : first;
        if (m_wide) {
            computeRowsWide(m_rows, m_samples + first * kChannels, m_plotX + first * kChannels,
                            m_plotY + first * kChannels, last - first);
        }
        computeRows(m_rows, m_samples + start * kChannels, m_plotX + start * kChannels, m_plotY + start * kChannels,
                    end - start);
    }

    void computeSome(int first, int end) {
        for (std::size_t i = 0; i < m_count; ++i) {
            const Lane& lane = m_lanes[i];
            const int channel = lane.channel;
            std::int16_t least = m_rows.least[channel];
            std::int16_t greatest = m_rows.greatest[channel];
            for (int at = first * kChannels + lane.channel; at < end * kChannels; at += kChannels) {
                const std::int16_t count = m_samples[at];
                least = std::min(least, count);
                greatest = std::max(greatest, count);
                m_plotX[at] = lane.column->x;
                m_plotY[at] = lane.heights[entryOfCount(count)];
            }
            m_rows.least[channel] = least;
            m_rows.greatest[channel] = greatest;
        }
    }

    /// Hands over the columns that end here.
    void endColumns(int end) {
        for (std::size_t i = 0; i < m_count;) {
            Lane& lane = m_lanes[i];
            if (lane.column->end != end) {
                ++i;
                continue;
            }
            const int channel = lane.channel;
            const std::int16_t least = m_rows.least[channel];
            const std::int16_t greatest = m_rows.greatest[channel];
            m_inRange = m_inRange && least >= kLeastCount && greatest <= kGreatestCount;
            // The least count has the greatest height, or the least where a scale runs downwards.
            const auto [top, bottom] =
                std::minmax({lane.heights[entryOfCount(least)], lane.heights[entryOfCount(greatest)]});
            const auto heightOf = [&](int sample) {
                return lane.heights[entryOfCount(m_samples[sample * kChannels + lane.channel])];
            };
            *lane.out++ = {lane.column->x, heightOf(lane.first), heightOf(end - 1), top, bottom};
            lane.first = end;
            if (++lane.column != lane.columnsEnd) {
                begin(lane, end);
                ++i;
            } else {
                lane = m_lanes[--m_count];
            }
        }
    }

    const std::int16_t* m_samples;
    std::int32_t* m_plotX;
    std::int32_t* m_plotY;
    PerChannel<Lane> m_lanes; ///< the first m_count have columns left
    std::size_t m_count = 0;
    bool m_wide = false; ///< whether vectors may compute the rows of all channels
    LaneRows m_rows;
    bool m_inRange = true;
};

} // namespace

bool computeLanes(publicM& model, std::span<const SampleLane> lanes) {
    return Lanes(model, lanes).compute();
}

} // namespace sixtrace
