// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/drawing/vectors.h"
#include "platform/text/runtimeerror.h"
#include "view/geometry.h"
#include "view/tracecolumn.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace sixtrace {

/// Consecutive samples whose points a frame has just computed and stored as PlotX and PlotY.
struct PointRun {
    int firstRow = 0;
    int count = 0;
    /// The same points by columns, in order; valid until the next computation.
    std::span<const TraceColumn> columns;
    /// What cut the run, if anything did: an overflow, or a row that does not exist.
    std::optional<ErrorNumber> error = std::nullopt;
};

/// Whether a rounded sample index names a row of the sample arrays.
[[nodiscard]] bool isSampleRow(double index);

/// A trace whose samples 0 to count - 1 are all to be visited.
struct WholeTrace {
    int channel = 0;
    TraceScale scale;
    int count = 0;
};

/// Computes where samples lie on the screen and stores it as PlotX and PlotY.
///
/// X depends on the time scale alone and Y on the count and the volt scale alone. What these scales give is kept for
/// each channel between frames, so that a frame of an unchanged view looks its points up; every value in the tables
/// comes from the same arithmetic that computes a single point.
class TracePoints {
public:
    explicit TracePoints(Vectors vectors);
    ~TracePoints();
    TracePoints(const TracePoints&) = delete;
    TracePoints& operator=(const TracePoints&) = delete;

    /// The points of the samples first, first + 1, ... up to `last`; none when last < first. A fraction in `first`
    /// stays in X, while arrays are addressed by the rounded index, halves to even.
    [[nodiscard]] PointRun compute(publicM& model, int channel, const TraceScale& scale, double first, double last);

    /// The points of several whole traces at once, several times faster than one after the other. `runs` gets the run
    /// of each, in their order, valid until the next computation. False where a scale or the samples do not allow it;
    /// then nothing but PlotX and PlotY has changed.
    [[nodiscard]] bool computeTogether(publicM& model, std::span<const WholeTrace> traces, PerChannel<PointRun>& runs);

private:
    struct Tables;

    void computeByTable(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run, int count);
    void computeOneByOne(publicM& model, int channel, const TraceScale& scale, double first, PointRun& run, int count);

    Vectors m_vectors;
    std::unique_ptr<Tables> m_tables;
    std::vector<TraceColumn> m_columns;
    PerChannel<std::vector<TraceColumn>> m_columnsOf; ///< of computeTogether, by channel
};

} // namespace sixtrace
