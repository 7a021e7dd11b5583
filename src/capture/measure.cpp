// SPDX-License-Identifier: MIT
#include "capture/measure.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace sixtrace {

namespace {

constexpr std::array<std::string_view, kMeasures> kKeys{"samples",
                                                        "interval_s",
                                                        "duration_s",
                                                        "min_v",
                                                        "max_v",
                                                        "peak_to_peak_v",
                                                        "mean_v",
                                                        "rms_v",
                                                        "ac_rms_v",
                                                        "top_v",
                                                        "base_v",
                                                        "amplitude_v",
                                                        "overshoot_pct",
                                                        "preshoot_pct",
                                                        "frequency_hz",
                                                        "period_s",
                                                        "cycles",
                                                        "duty_pct",
                                                        "positive_width_s",
                                                        "negative_width_s",
                                                        "rise_time_s",
                                                        "fall_time_s",
                                                        "instrument_frequency_hz",
                                                        "instrument_period_s"};

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kMicro = 1e-6;
constexpr double kMillivoltsInAVolt = 1000;
constexpr double kPercent = 100;
constexpr int kTwentieth = 20;

// Bits that tell where a sample lies relative to the levels.
constexpr std::uint8_t kHigh = 1;   ///< at or above the middle and a twentieth of the amplitude
constexpr std::uint8_t kLow = 2;    ///< at or below the middle less a twentieth
constexpr std::uint8_t kNinety = 4; ///< at or above 90 %
constexpr std::uint8_t kTen = 8;    ///< at or below 10 %

constexpr int floorDivided(int value, int divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}
constexpr int ceilDivided(int value, int divisor) {
    return -floorDivided(-value, divisor);
}

/// Sums and extremes of counts, exact.
struct Sums {
    int least = std::numeric_limits<std::int16_t>::max();
    int greatest = std::numeric_limits<std::int16_t>::min();
    std::int64_t sum = 0;
    std::int64_t squares = 0;
};

Sums sumsOf(const std::int16_t* counts, std::size_t count) {
    // The sum of a piece fits 32 bits, so that the compiler can add many samples at a time.
    constexpr std::size_t kPiece = 4096;
    Sums sums;
    for (std::size_t start = 0; start < count; start += kPiece) {
        const std::size_t end = std::min(count, start + kPiece);
        std::int16_t least = std::numeric_limits<std::int16_t>::max();
        std::int16_t greatest = std::numeric_limits<std::int16_t>::min();
        std::int32_t sum = 0;
        std::int64_t squares = 0;
        for (std::size_t i = start; i < end; ++i) {
            least = std::min(least, counts[i]);
            greatest = std::max(greatest, counts[i]);
            sum += counts[i];
        }
        for (std::size_t i = start; i < end; ++i) {
            squares += static_cast<std::uint32_t>(std::int32_t{counts[i]} * counts[i]);
        }
        sums.least = std::min<int>(sums.least, least);
        sums.greatest = std::max<int>(sums.greatest, greatest);
        sums.sum += sum;
        sums.squares += squares;
    }
    return sums;
}

double positiveOrNone(double value) {
    return std::isfinite(value) && value > 0 ? value : kNone;
}

double finiteOrNone(double value) {
    return std::isfinite(value) ? value : kNone;
}

/// The mean of durations, which are added in samples.
struct Mean {
    double sum = 0;
    std::size_t count = 0;

    void add(double value) {
        sum += value;
        ++count;
    }
    [[nodiscard]] double times(double interval) const {
        return count == 0 ? kNone : sum / static_cast<double>(count) * interval;
    }
};

} // namespace

std::string_view measureKey(Measure measure) {
    return kKeys.at(static_cast<std::size_t>(measure));
}

double decimalOf(float value) {
    if (!std::isfinite(value)) {
        return kNone;
    }
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    double decimal = 0;
    std::from_chars(buffer.data(), end, decimal);
    return decimal;
}

double probeFactorOf(const ChannelRecord& channel) {
    return std::pow(10.0, channel.ProbeExp);
}

double voltsPerCount(const ChannelRecord& channel) {
    return finiteOrNone(decimalOf(channel.VoltPerCount) * probeFactorOf(channel) / kMillivoltsInAVolt);
}

double secondsPerSample(const ChannelRecord& channel) {
    return decimalOf(channel.SampleInterval) * kMicro;
}

std::size_t measuredSamples(const ChannelRecord& channel, Sweep sweep) {
    const std::size_t held = channel.heldSamples();
    const bool parted =
        channel.TimeIndex >= kScanTimeRow && channel.ScanPoint > 0 && channel.ScanPoint < channel.SampleCount;
    return sweep == Sweep::Fresh && parted ? std::min(held, static_cast<std::size_t>(channel.ScanPoint)) : held;
}

void Measuring::takeCounts(const ChannelRecord& channel, std::size_t count, bool turned) {
    m_counts.resize(count);
    if constexpr (std::endian::native == std::endian::little) {
        if (count > 0) {
            std::memcpy(m_counts.data(), channel.samples.data(), 2 * count);
        }
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            m_counts[i] = static_cast<std::int16_t>(sampleAt(channel.samples, i));
        }
    }
    if (turned) {
        for (std::int16_t& value : m_counts) {
            value = static_cast<std::int16_t>(~value);
        }
    }
}

Measuring::Levels Measuring::levelsOf(int least, int greatest) {
    const auto bins = static_cast<std::size_t>(greatest - least) + 1;
    // Two histograms, for samples of even and of odd number: in a single one, an increment would wait for that of an
    // equal neighbour.
    m_bins.assign(2 * bins, 0);
    std::uint16_t* const even = m_bins.data();
    std::uint16_t* const odd = even + bins;
    std::size_t i = 0;
    for (; i + 1 < m_counts.size(); i += 2) {
        ++even[m_counts[i] - least];
        ++odd[m_counts[i + 1] - least];
    }
    if (i < m_counts.size()) {
        ++even[m_counts[i] - least];
    }

    struct Half {
        int mode;
        int most = 0;
        int all = 0;
    };
    Half lower{least};
    Half upper{greatest};
    for (int bin = 0; bin < static_cast<int>(bins); ++bin) {
        const int frequency = even[bin] + odd[bin];
        const int twice = 2 * bin - (greatest - least); // of its distance from the middle
        if (twice < 0) {
            lower.all += frequency;
            if (frequency > lower.most) { // the first of equal ones, which is the outer one
                lower.most = frequency;
                lower.mode = least + bin;
            }
        } else if (twice > 0) {
            upper.all += frequency;
            if (frequency >= upper.most) { // the last of equal ones
                upper.most = frequency;
                upper.mode = least + bin;
            }
        }
    }
    return {.top = kTwentieth * upper.most < upper.all ? greatest : upper.mode,
            .base = kTwentieth * lower.most < lower.all ? least : lower.mode};
}

void Measuring::flagLevels(const Levels& levels) {
    const int amplitude = levels.top - levels.base;
    const int middle = 10 * (levels.top + levels.base); // in twentieths of a count
    const auto high = static_cast<std::int16_t>(ceilDivided(middle + amplitude, kTwentieth));
    const auto low = static_cast<std::int16_t>(floorDivided(middle - amplitude, kTwentieth));
    const auto ninety = static_cast<std::int16_t>(ceilDivided(10 * levels.base + 9 * amplitude, 10));
    const auto ten = static_cast<std::int16_t>(floorDivided(10 * levels.base + amplitude, 10));
    constexpr std::size_t kWord = 8;
    m_flags.resize((m_counts.size() + kWord - 1) / kWord * kWord);
    std::fill(m_flags.end() - std::min<std::ptrdiff_t>(kWord, std::ssize(m_flags)), m_flags.end(), std::uint8_t{0});
    const std::int16_t* const counts = m_counts.data();
    std::uint8_t* const flags = m_flags.data();
    const std::size_t count = m_counts.size();
    for (std::size_t i = 0; i < count; ++i) {
        const std::int16_t value = counts[i];
        flags[i] = static_cast<std::uint8_t>((value >= high ? kHigh : 0) | (value <= low ? kLow : 0) |
                                             (value >= ninety ? kNinety : 0) | (value <= ten ? kTen : 0));
    }
}

/// The first sample from `from` on that has the flag; the count of samples where none has it.
std::size_t Measuring::nextFlag(std::size_t from, std::uint8_t flag) const {
    constexpr std::uint64_t kEach = 0x0101010101010101;
    const std::size_t count = m_counts.size();
    if constexpr (std::endian::native == std::endian::little) {
        std::uint64_t mask = kEach * flag << (from % 8 * 8);
        for (std::size_t word = from / 8 * 8; word < count; word += 8) {
            std::uint64_t flags = 0;
            std::memcpy(&flags, m_flags.data() + word, 8);
            if ((flags & mask) != 0) {
                return word + static_cast<std::size_t>(std::countr_zero(flags & mask)) / 8;
            }
            mask = kEach * flag;
        }
        return count;
    }
    while (from < count && (m_flags[from] & flag) == 0) {
        ++from;
    }
    return from;
}

/// Where between samples i - 1 and i, which differ, the level is crossed.
double Measuring::between(std::size_t i, double level) const {
    const double before = m_counts[i - 1];
    return static_cast<double>(i - 1) + (level - before) / (m_counts[i] - before);
}

void Measuring::measureTimes(const Levels& levels, double interval, ChannelMeasures& result) {
    const double middle = (levels.top + levels.base) / 2.0;
    const std::size_t count = m_counts.size();
    Mean positive;
    Mean negative;
    double first = kNone;
    double last = kNone;
    double fell = kNone;
    std::size_t rises = 0;
    std::size_t i = nextFlag(0, kHigh | kLow);
    bool isHigh = i < count && (m_flags[i] & kHigh) != 0;
    while (i < count) {
        i = nextFlag(i, isHigh ? kLow : kHigh);
        if (i >= count) {
            break;
        }
        // Of several crossings of the middle the last one before the other state counts.
        std::size_t way = i;
        while (isHigh ? m_counts[way - 1] <= middle : m_counts[way - 1] >= middle) {
            --way;
        }
        const double crossed = between(way, middle);
        if (isHigh) {
            if (rises > 0) {
                positive.add(crossed - last);
            }
            fell = crossed;
        } else {
            if (!std::isnan(fell)) {
                negative.add(crossed - fell);
            }
            first = rises == 0 ? crossed : first;
            last = crossed;
            ++rises;
        }
        isHigh = !isHigh;
    }
    result[Measure::PositiveWidth] = positive.times(interval);
    result[Measure::NegativeWidth] = negative.times(interval);
    if (rises >= 2) {
        const auto cycles = static_cast<double>(rises - 1);
        const double period = (last - first) / cycles * interval;
        result[Measure::Cycles] = cycles;
        result[Measure::Period] = period;
        result[Measure::Frequency] = finiteOrNone(1 / period);
        result[Measure::Duty] = result[Measure::PositiveWidth] / period * kPercent;
    }
}

void Measuring::measureEdges(const Levels& levels, double interval, ChannelMeasures& result) {
    const double tenth = (levels.top - levels.base) / 10.0;
    const double ten = levels.base + tenth;
    const double ninety = levels.top - tenth;
    const std::size_t count = m_counts.size();
    Mean rise;
    Mean fall;
    std::size_t i = nextFlag(0, kNinety | kTen);
    bool isTop = i < count && (m_flags[i] & kNinety) != 0;
    while (i < count) {
        i = nextFlag(i, isTop ? kTen : kNinety);
        if (i >= count) {
            break;
        }
        // The edge begins where the old state is left for the last time and ends where the new one is reached.
        std::size_t left = i;
        while (isTop ? m_counts[left - 1] < ninety : m_counts[left - 1] > ten) {
            --left;
        }
        if (isTop) {
            fall.add(between(i, ten) - between(left, ninety));
        } else {
            rise.add(between(i, ninety) - between(left, ten));
        }
        isTop = !isTop;
    }
    result[Measure::RiseTime] = rise.times(interval);
    result[Measure::FallTime] = fall.times(interval);
}

ChannelMeasures Measuring::measure(const ChannelRecord& channel, Sweep sweep) {
    ChannelMeasures result = figuresOf(channel, sweep);
    // A damaged file can name a probe factor with which a figure leaves the range of a double. There is no such figure.
    std::replace_if(
        result.values.begin(), result.values.end(), [](double value) { return std::isinf(value); }, kNone);
    return result;
}

ChannelMeasures Measuring::figuresOf(const ChannelRecord& channel, Sweep sweep) {
    ChannelMeasures result;
    result.values.fill(kNone);
    const std::size_t count = measuredSamples(channel, sweep);
    const auto samples = static_cast<double>(count);
    const double interval = secondsPerSample(channel);
    result[Measure::Samples] = samples;
    result[Measure::Interval] = interval;
    result[Measure::Duration] = samples * interval;
    result[Measure::InstrumentFrequency] = positiveOrNone(decimalOf(channel.Frequency));
    result[Measure::InstrumentPeriod] = positiveOrNone(decimalOf(channel.Period) * kMicro);
    const double volts = voltsPerCount(channel);
    if (count == 0 || std::isnan(volts)) {
        return result;
    }
    // A negative scale turns the trace over. The counts are turned then, each c into -1 - c, which always fits, and one
    // count is added to every level.
    const bool turned = volts < 0;
    const double scale = std::fabs(volts);
    const int shift = turned ? 1 : 0;
    takeCounts(channel, count, turned);
    if (scale == 0) {
        std::fill(m_counts.begin(), m_counts.end(), std::int16_t{0});
    }
    const Sums sums = sumsOf(m_counts.data(), count);
    const std::int64_t sum = sums.sum + shift * static_cast<std::int64_t>(count);
    const std::int64_t squares = sums.squares + shift * (2 * sums.sum + static_cast<std::int64_t>(count));
    const auto variance = static_cast<double>(static_cast<std::int64_t>(count) * squares - sum * sum);
    result[Measure::Min] = (sums.least + shift) * scale;
    result[Measure::Max] = (sums.greatest + shift) * scale;
    result[Measure::PeakToPeak] = (sums.greatest - sums.least) * scale;
    result[Measure::Mean] = static_cast<double>(sum) * scale / samples;
    result[Measure::Rms] = std::sqrt(static_cast<double>(squares) / samples) * scale;
    result[Measure::AcRms] = std::sqrt(variance) * scale / samples;

    const Levels levels = levelsOf(sums.least, sums.greatest);
    result[Measure::Top] = (levels.top + shift) * scale;
    result[Measure::Base] = (levels.base + shift) * scale;
    result[Measure::Amplitude] = (levels.top - levels.base) * scale;
    if (levels.top == levels.base) {
        return result;
    }
    result[Measure::Overshoot] = kPercent * (sums.greatest - levels.top) / (levels.top - levels.base);
    result[Measure::Preshoot] = kPercent * (levels.base - sums.least) / (levels.top - levels.base);
    if (std::isfinite(interval) && interval > 0) {
        flagLevels(levels);
        measureTimes(levels, interval, result);
        measureEdges(levels, interval, result);
    }
    return result;
}

} // namespace sixtrace
