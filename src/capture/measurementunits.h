// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/quantity.h"

#include <array>

namespace sixtrace {

using Hertz = Quantity<struct HertzUnit>;
using Seconds = Quantity<struct SecondUnit>;
using Microseconds = Quantity<struct MicrosecondUnit>;
using Volts = Quantity<struct VoltUnit>;
using Millivolts = Quantity<struct MillivoltUnit>;

[[nodiscard]] constexpr Microseconds microsecondsOf(Seconds time) {
    return Microseconds(time.number() * 1e6);
}
[[nodiscard]] constexpr Millivolts millivoltsOf(Volts voltage) {
    return Millivolts(voltage.number() * 1e3);
}

/// How a measurement is written: as a multiple of `one`, with so many decimals, before its unit.
template<typename Measured>
struct UnitNotation {
    Measured one;
    int decimals;
    const char* unit; ///< with its leading blank
};

/// Frequencies and periods change their units together. A row applies to frequencies above its threshold. The digit
/// counts do not grow evenly from row to row: users know the texts as they are.
struct UnitLadderRow {
    Hertz above;
    UnitNotation<Hertz> frequency;
    UnitNotation<Microseconds> period;
};

namespace ladder {
inline constexpr Hertz kHertz{1};
inline constexpr Hertz kKilohertz{1e3};
inline constexpr Hertz kMegahertz{1e6};
inline constexpr Microseconds kMicrosecond{1};
inline constexpr Microseconds kMillisecond{1e3};
inline constexpr Microseconds kSecond{1e6};

inline constexpr std::array<UnitLadderRow, 7> kRows{{
    {10 * kMegahertz, {kMegahertz, 2, " MHz"}, {kMicrosecond, 4, " uS"}},
    {1 * kMegahertz, {kMegahertz, 3, " MHz"}, {kMicrosecond, 3, " uS"}},
    {100 * kKilohertz, {kKilohertz, 1, " KHz"}, {kMillisecond, 4, " mS"}},
    {10 * kKilohertz, {kKilohertz, 2, " KHz"}, {kMillisecond, 3, " mS"}},
    {1 * kKilohertz, {kKilohertz, 3, " KHz"}, {kMillisecond, 2, " mS"}},
    {100 * kHertz, {kHertz, 1, " Hz"}, {kSecond, 5, " S"}},
    {10 * kHertz, {kHertz, 2, " Hz"}, {kSecond, 3, " S"}},
}};
inline constexpr UnitLadderRow kLowestRow{Hertz{0}, {kHertz, 3, " Hz"}, {kSecond, 2, " S"}};
} // namespace ladder

[[nodiscard]] constexpr const UnitLadderRow& unitLadderRow(Hertz frequency) {
    for (const UnitLadderRow& row : ladder::kRows) {
        if (frequency > row.above) {
            return row;
        }
    }
    return ladder::kLowestRow;
}

/// Voltages above 1000 mV are written in volts.
[[nodiscard]] constexpr UnitNotation<Millivolts> voltageNotation(Millivolts voltage) {
    constexpr Millivolts kVolt{1000};
    return voltage > kVolt ? UnitNotation<Millivolts>{kVolt, 3, " V"}
                           : UnitNotation<Millivolts>{Millivolts{1}, 3, " mV"};
}

} // namespace sixtrace
