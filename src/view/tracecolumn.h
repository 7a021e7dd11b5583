// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace {

/// Neighbouring samples of one trace that share a screen column.
struct TraceColumn {
    std::int32_t x = 0;
    std::int32_t firstY = 0; ///< of the first of them
    std::int32_t lastY = 0;  ///< of the last
    std::int32_t least = 0;  ///< extremes of all
    std::int32_t greatest = 0;
};

/// A screen column and where its samples end.
struct ColumnEnd {
    std::int32_t x;
    int end; ///< number of the first sample after the column
};

} // namespace sixtrace
