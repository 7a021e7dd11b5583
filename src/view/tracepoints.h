// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/geometry.h"

#include <array>
#include <cstdint>

namespace sixtrace {

/// Screen points of consecutive samples, valid until the next computation.
struct PointRun {
    const std::int32_t* xs = nullptr;
    const std::int32_t* ys = nullptr;
    int count = 0;
    bool complete = true; ///< false when a run-time error cut the run: a row that does not exist, or an overflow
};

/// Whether a rounded sample index names a row of the sample arrays.
[[nodiscard]] bool isSampleRow(double index);

/// Computes where samples lie on the screen and stores it as PlotX and PlotY. Owns the space for one run.
class TracePoints {
public:
    /// The points of the samples first, first + 1, ... up to `last`; none when last < first. A fraction in `first` stays
    /// in X, while arrays are addressed by the rounded index, halves to even.
    [[nodiscard]] PointRun compute(publicM& model, int channel, const TraceScale& scale, double first, double last);

private:
    std::array<std::int32_t, kSampleRows> m_xs{};
    std::array<std::int32_t, kSampleRows> m_ys{};
};

} // namespace sixtrace
