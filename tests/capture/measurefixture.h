// SPDX-License-Identifier: MIT
#pragma once

#include "capture/measure.h"
#include "support/strings.h"

#include <cmath>

namespace sixtrace::test {

/// A channel of 10 us between samples and 1 V a count, unless a test says otherwise.
class MeasureTest : public ::testing::Test {
protected:
    ChannelRecord& with(const std::vector<std::int16_t>& counts) {
        m_bytes.resize(2 * counts.size());
        for (std::size_t i = 0; i < counts.size(); ++i) {
            const auto bits = static_cast<std::uint16_t>(counts[i]);
            m_bytes[2 * i] = static_cast<std::byte>(bits & 0xFFU);
            m_bytes[2 * i + 1] = static_cast<std::byte>(bits >> 8);
        }
        channel.samples = m_bytes;
        channel.SampleCount = static_cast<std::int32_t>(counts.size());
        return channel;
    }
    ChannelMeasures measure(Sweep sweep = Sweep::Fresh) { return m_measuring.measure(channel, sweep); }
    static bool isNone(double value) { return std::isnan(value); }

    ChannelRecord channel = [] {
        ChannelRecord made;
        made.present = true;
        made.SampleInterval = 10;
        made.VoltPerCount = 1000;
        return made;
    }();

private:
    std::vector<std::byte> m_bytes;
    Measuring m_measuring;
};

/// The counts of a period, `times` times one after the other.
inline std::vector<std::int16_t> repeated(const std::vector<std::int16_t>& period, int times) {
    std::vector<std::int16_t> all;
    for (int i = 0; i < times; ++i) {
        all.insert(all.end(), period.begin(), period.end());
    }
    return all;
}

} // namespace sixtrace::test
