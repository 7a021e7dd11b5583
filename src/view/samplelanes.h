// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/geometry.h"
#include "view/tracecolumn.h"

#include <optional>
#include <span>

namespace sixtrace {

/// A whole trace as one lane of a vector: its samples 0, 1 ... up to the end of its last column.
struct SampleLane {
    int channel = 0;
    TraceScale scale;
    double step = 0;                    ///< as laneStep gives it
    std::span<const ColumnEnd> columns; ///< which samples fall on which column; not empty
    TraceColumn* out = nullptr;         ///< room for as many columns
};

/// Pixels a count, with which computeLanes gives exactly the rounded heights of `scale` for every count from -2048 to
/// 2047 (each is tried); nothing where it would miss one, and without the vectors.
[[nodiscard]] std::optional<double> laneStep(const TraceScale& scale);

/// Computes the points of several whole traces side by side, a sample of all six channels at a time: the sample arrays
/// are sample-major, so this walks once through memory where a channel at a time would walk six times. Leaves PlotX and
/// PlotY of every sample visited. False where a count lies outside -2048 to 2047; the positions stored are then not to
/// be trusted.
[[nodiscard]] bool computeLanes(publicM& model, std::span<const SampleLane> lanes);

} // namespace sixtrace
