// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace sixtrace {

/// How a number is written: divided, with so many decimals, before its unit.
struct UnitNotation {
    double divisor;
    int decimals;
    const char* unit; ///< with its leading blank
};

/// Frequencies in hertz and periods in microseconds change their units together. A row applies to frequencies above its
/// threshold. The digit counts do not grow evenly from row to row: users know the texts as they are.
struct UnitLadderRow {
    double above;
    UnitNotation frequency;
    UnitNotation period;
};

inline constexpr std::array<UnitLadderRow, 7> kUnitLadder{{
    {10000000, {1000000, 2, " MHz"}, {1, 4, " uS"}},
    {1000000, {1000000, 3, " MHz"}, {1, 3, " uS"}},
    {100000, {1000, 1, " KHz"}, {1000, 4, " mS"}},
    {10000, {1000, 2, " KHz"}, {1000, 3, " mS"}},
    {1000, {1000, 3, " KHz"}, {1000, 2, " mS"}},
    {100, {1, 1, " Hz"}, {1000000, 5, " S"}},
    {10, {1, 2, " Hz"}, {1000000, 3, " S"}},
}};
inline constexpr UnitLadderRow kLowestLadderRow{0, {1, 3, " Hz"}, {1000000, 2, " S"}};

[[nodiscard]] constexpr const UnitLadderRow& unitLadderRow(double frequency) {
    for (const UnitLadderRow& row : kUnitLadder) {
        if (frequency > row.above) {
            return row;
        }
    }
    return kLowestLadderRow;
}

/// Voltages in millivolts; above 1000 they are written in volts.
[[nodiscard]] constexpr UnitNotation voltageNotation(double millivolts) {
    return millivolts > 1000 ? UnitNotation{1000, 3, " V"} : UnitNotation{1, 3, " mV"};
}

} // namespace sixtrace
