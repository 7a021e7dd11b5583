// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/geometry.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace sixtrace {

/// Neighbouring samples of one trace that share a screen column.
struct TraceColumn {
    std::int32_t x = 0;
    std::int32_t firstY = 0; ///< of the first of them
    std::int32_t lastY = 0;  ///< of the last
    std::int32_t least = 0;  ///< extremes of all
    std::int32_t greatest = 0;
};

/// Consecutive samples whose points a frame has just computed and stored as PlotX and PlotY.
struct PointRun {
    int firstRow = 0;
    int count = 0;
    bool complete = true; ///< false when a run-time error cut the run: a row that does not exist, or an overflow
    /// The same points by columns, in order; valid until the next computation.
    std::span<const TraceColumn> columns;
};

/// Whether a rounded sample index names a row of the sample arrays.
[[nodiscard]] bool isSampleRow(double index);

/// Computes where samples lie on the screen and stores it as PlotX and PlotY.
///
/// X depends on the time scale alone and Y on the count and the volt scale alone. What these scales give is kept for
/// each channel between frames, so that a frame of an unchanged view looks its points up; every value in the tables
/// comes from the same arithmetic that computes a single point.
class TracePoints {
public:
    TracePoints();
    ~TracePoints();
    TracePoints(const TracePoints&) = delete;
    TracePoints& operator=(const TracePoints&) = delete;

    /// The points of the samples first, first + 1, ... up to `last`; none when last < first. A fraction in `first` stays
    /// in X, while arrays are addressed by the rounded index, halves to even.
    [[nodiscard]] PointRun compute(publicM& model, int channel, const TraceScale& scale, double first, double last);

private:
    struct Tables;

    void computeByTable(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run, int count);
    void computeOneByOne(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run, int count);

    std::unique_ptr<Tables> m_tables;
    std::vector<TraceColumn> m_columns;
};

} // namespace sixtrace
