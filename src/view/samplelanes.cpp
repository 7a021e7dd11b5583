// SPDX-License-Identifier: MIT
#include "view/samplelanes.h"

#include <algorithm>

namespace sixtrace {

namespace {

/// Lanes of all channels for the vectors, where one time scale and a step for each channel allow it.
std::optional<SixLanes> sixLanes(publicM& model, std::span<const SampleLane> lanes) {
    if (lanes.size() != kChannels) {
        return std::nullopt;
    }
    SixLanes six;
    six.samples = model.SampleData.channel(0);
    six.plotX = model.PlotX.channel(0);
    six.plotY = model.PlotY.channel(0);
    six.columns = lanes[0].columns;
    for (const SampleLane& lane : lanes) {
        if (!lane.step || lane.columns.data() != six.columns.data()) {
            return std::nullopt;
        }
        six.yPos[lane.channel] = lane.yPos;
        six.step[lane.channel] = *lane.step;
        six.out[lane.channel] = lane.out;
    }
    return six;
}

/// Computes lanes one sample at a time.
class Lanes {
public:
    Lanes(publicM& model, std::span<const SampleLane> lanes)
        : m_samples(model.SampleData.channel(0))
        , m_plotX(model.PlotX.channel(0))
        , m_plotY(model.PlotY.channel(0)) {
        for (const SampleLane& source : lanes) {
            m_heights[source.channel] = source.heights->data();
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
        m_x[channel] = lane.column->x;
        m_least[channel] = count;
        m_greatest[channel] = count;
    }

    /// The common case of six channels, from row to row.
    void computeAll(int first, int end) {
        const std::int16_t* samples = m_samples + first * kChannels;
        std::int32_t* plotX = m_plotX + first * kChannels;
        std::int32_t* plotY = m_plotY + first * kChannels;
        for (int row = first; row < end; ++row) {
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const std::int16_t count = samples[channel];
                plotX[channel] = m_x[channel];
                plotY[channel] = m_heights[channel][entryOfCount(count)];
                m_least[channel] = std::min(m_least[channel], count);
                m_greatest[channel] = std::max(m_greatest[channel], count);
            }
            samples += kChannels;
            plotX += kChannels;
            plotY += kChannels;
        }
    }

    void computeSome(int first, int end) {
        for (std::size_t i = 0; i < m_count; ++i) {
            const Lane& lane = m_lanes[i];
            const int channel = lane.channel;
            std::int16_t least = m_least[channel];
            std::int16_t greatest = m_greatest[channel];
            for (int at = first * kChannels + lane.channel; at < end * kChannels; at += kChannels) {
                const std::int16_t count = m_samples[at];
                least = std::min(least, count);
                greatest = std::max(greatest, count);
                m_plotX[at] = lane.column->x;
                m_plotY[at] = lane.heights[entryOfCount(count)];
            }
            m_least[channel] = least;
            m_greatest[channel] = greatest;
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
            const std::int16_t least = m_least[channel];
            const std::int16_t greatest = m_greatest[channel];
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
    PerChannel<const std::int32_t*> m_heights{};
    // Of each lane's present column.
    PerChannel<std::int32_t> m_x{};
    PerChannel<std::int16_t> m_least{};
    PerChannel<std::int16_t> m_greatest{};
    bool m_inRange = true;
};

} // namespace

bool computeLanes(publicM& model, std::span<const SampleLane> lanes) {
    if (const auto six = sixLanes(model, lanes)) {
        return computeSixLanesWide(*six);
    }
    return Lanes(model, lanes).compute();
}

} // namespace sixtrace
