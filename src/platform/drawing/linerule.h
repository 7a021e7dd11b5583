// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

namespace sixtrace {

/// The one rule by which every straight line of the program becomes pixels.
///
/// A line of `length` steps along its longer axis whose other coordinate travels `rise` (both not negative, rise at
/// most length) has moved, at step k of 0..length, by offset(k) = (2 k rise + length) div (2 length): the nearest
/// integer, halves towards the end point. Products are reckoned in 128 bits where the coordinates may be any of 32
/// bits, so clipping by these functions is exact.
struct LineRule {
    std::int64_t length = 0;
    std::int64_t rise = 0;

    /// Offset of the other coordinate at step k.
    [[nodiscard]] std::int64_t offset(std::int64_t k) const {
        return k == 0 || length == 0 ? 0
                                     : static_cast<std::int64_t>((Wide{2} * k * rise + length) / (Wide{2} * length));
    }

    /// The first step whose offset is at least `value`, for a value of 1 and up and a rise above 0. It may lie beyond
    /// the line's last step.
    [[nodiscard]] std::int64_t firstStepOf(std::int64_t value) const {
        const Wide numerator = (Wide{2} * value - 1) * length;
        const Wide denominator = Wide{2} * rise;
        return static_cast<std::int64_t>((numerator + denominator - 1) / denominator);
    }

    __extension__ using Wide = __int128;
};

/// A closed range of steps; empty when last < first.
struct StepRange {
    std::int64_t first = 0;
    std::int64_t last = -1;

    void cut(std::int64_t lowest, std::int64_t highest) {
        first = std::max(first, lowest);
        last = std::min(last, highest);
    }
    [[nodiscard]] bool empty() const { return last < first; }
};

/// The steps k at which start + sign * k lies in 0..size-1.
[[nodiscard]] inline StepRange stepsInside(std::int64_t start, int sign, std::int64_t size) {
    return sign > 0 ? StepRange{-start, size - 1 - start} : StepRange{start - (size - 1), start};
}

/// The steps k of a line at which start + sign * offset(k) lies in 0..size-1.
[[nodiscard]] inline StepRange offsetStepsInside(const LineRule& rule, std::int64_t start, int sign,
                                                 std::int64_t size) {
    StepRange steps{0, rule.length};
    if (rule.rise == 0) {
        return start >= 0 && start < size ? steps : StepRange{};
    }
    const StepRange offsets = stepsInside(start, sign, size);
    if (offsets.last < 0 || offsets.first > rule.rise) {
        return {};
    }
    if (offsets.first > 0) {
        steps.first = rule.firstStepOf(offsets.first);
    }
    if (offsets.last < rule.rise) {
        steps.last = rule.firstStepOf(offsets.last + 1) - 1;
    }
    return steps;
}

} // namespace sixtrace
