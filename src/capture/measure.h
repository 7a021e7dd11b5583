// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturerecord.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace sixtrace {

/// The figures of a channel, in the order of every output. The end of a figure's key is its unit: seconds, volts at the
/// probe's tip, hertz or percent.
enum class Measure : std::uint8_t {
    Samples,
    Interval,
    Duration,
    Min,
    Max,
    PeakToPeak,
    Mean,
    Rms,
    AcRms, ///< population standard deviation
    Top,   ///< state levels by the histogram mode of each half, after IEEE Std 181
    Base,
    Amplitude,
    Overshoot,
    Preshoot,
    Frequency, ///< of the rising crossings of the middle level
    Period,
    Cycles,
    Duty,
    PositiveWidth,
    NegativeWidth,
    RiseTime, ///< from 10 to 90 % of the amplitude
    FallTime,
    InstrumentFrequency, ///< as the file says it
    InstrumentPeriod,
};
inline constexpr std::size_t kMeasures = static_cast<std::size_t>(Measure::InstrumentPeriod) + 1;

/// Key of a measurement in JSON and CSV: "samples", "interval_s", "min_v" ...
[[nodiscard]] std::string_view measureKey(Measure measure);

/// The figures of one channel; one that does not exist is NaN.
struct ChannelMeasures {
    std::array<double, kMeasures> values{};

    [[nodiscard]] double operator[](Measure measure) const { return values[static_cast<std::size_t>(measure)]; }
    [[nodiscard]] double& operator[](Measure measure) { return values[static_cast<std::size_t>(measure)]; }
};

/// Which samples of a slow scan are measured.
enum class Sweep {
    Fresh, ///< those before ScanPoint, if that lies inside the samples; of any other capture all
    All,
};

/// Samples of a channel that are measured: those that the file holds, or the first of them in a fresh sweep.
[[nodiscard]] std::size_t measuredSamples(const ChannelRecord& channel, Sweep sweep);

/// Volts at the probe's tip for each count; NaN where the file's value is not finite.
[[nodiscard]] double voltsPerCount(const ChannelRecord& channel);
/// Seconds between two samples; NaN where the file's value is not finite.
[[nodiscard]] double secondsPerSample(const ChannelRecord& channel);
/// 10 to the power of the probe exponent.
[[nodiscard]] double probeFactorOf(const ChannelRecord& channel);
/// The 64-bit real of the shortest decimal that gives this 32-bit real: 0.1 for 0.1F.
[[nodiscard]] double decimalOf(float value);

/// Measures one channel after another and keeps its memory between them.
class Measuring {
public:
    [[nodiscard]] ChannelMeasures measure(const ChannelRecord& channel, Sweep sweep);

private:
    [[nodiscard]] ChannelMeasures figuresOf(const ChannelRecord& channel, Sweep sweep);
    struct Levels {
        int top;
        int base;
    };
    void takeCounts(const ChannelRecord& channel, std::size_t count, bool turned);
    [[nodiscard]] Levels levelsOf(int least, int greatest);
    void flagLevels(const Levels& levels);
    void measureTimes(const Levels& levels, double interval, ChannelMeasures& result);
    void measureEdges(const Levels& levels, double interval, ChannelMeasures& result);
    [[nodiscard]] std::size_t nextFlag(std::size_t from, std::uint8_t flag) const;
    [[nodiscard]] double between(std::size_t i, double level) const;

    std::vector<std::int16_t> m_counts;
    std::vector<std::uint8_t> m_flags;
    std::vector<std::uint16_t> m_bins;
};

} // namespace sixtrace
