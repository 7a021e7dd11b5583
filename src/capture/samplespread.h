// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/vectors.h"

#include <cstddef>
#include <cstdint>

namespace sixtrace {

/// The least and the greatest of some samples.
struct SampleExtremes {
    int least;
    int greatest;
};

/// The extremes of `count` samples as a file holds them, 16 bits each, little-endian; of none, greatest lies below
/// least.
[[nodiscard]] SampleExtremes extremesOf(const std::byte* bytes, std::size_t count, Vectors vectors = Vectors::Allowed);

/// Spreads the samples of channels, which a file holds one channel after the other, over the model's sample-major
/// array. It gathers what it is given and writes in one walk through memory, where a channel at a time would walk six
/// times.
class SampleSpread {
public:
    explicit SampleSpread(SampleArray<std::int16_t>& target, Vectors vectors = Vectors::Allowed);

    /// Samples 0 to count - 1 of a channel, at most 10231, 16 bits each, little-endian. The bytes must stay where they
    /// are until the next flush. What has been gathered of this channel before is written first.
    void add(int channel, const std::byte* bytes, std::size_t count);
    /// Writes what has been gathered.
    void flush();

private:
    struct Gathered {
        const std::byte* bytes = nullptr;
        std::size_t count = 0;
    };
    [[nodiscard]] std::size_t rowsOfAll() const;

    SampleArray<std::int16_t>& m_target;
    bool m_wide;
    PerChannel<Gathered> m_gathered{};
};

} // namespace sixtrace
