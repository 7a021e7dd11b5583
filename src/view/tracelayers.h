// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"
#include "platform/drawing/picture.h"
#include "view/geometry.h"
#include "view/graticule.h"
#include "view/rowcomposer.h"
#include "view/tracepoints.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace sixtrace {

/// Draws polylines whose X never falls, many at once and each pixel at most once.
///
/// Such a polyline, drawn with an opaque pen, covers exactly one interval of rows in each column: the segments that
/// touch a column follow one another, and each begins where the last one ended. A layer keeps these intervals as
/// toggles in a bit matrix (one bit a pixel, set where an interval begins and just below where it ends), so that
/// sweeping down the rows with an exclusive-or turns them into masks of covered pixels. The sweep composes each row
/// from the empty screen and these masks and writes each pixel once.
class TraceLayers {
public:
    explicit TraceLayers(Vectors vectors);

    /// Starts a new topmost layer with a pen at (x, y); the pixel there belongs to the layer.
    void begin(Colour colour, std::int32_t x, std::int32_t y);
    /// A line from the pen to the first point of a column that does not lie to its left, and on through all its points.
    /// The pen stays at the last one.
    void lineThrough(const TraceColumn& column) {
        if (column.x != m_x) {
            lineTo(column.x, column.firstY);
        }
        m_least = std::min(m_least, column.least);
        m_greatest = std::max(m_greatest, column.greatest);
        m_y = column.lastY;
    }
    /// Ends the layer. Without it the layer's last column is missing.
    void end();

    /// Fills `picture`, which is of the screen's size, with the ground and all layers over it, the later ones on top.
    /// All layers are used up.
    void sweep(const GraticuleRows& ground, Picture& picture);

private:
    struct Layer {
        std::uint32_t pixel = 0;
        int firstRow = 0; ///< rows outside firstRow..lastRow have no toggle
        int lastRow = 0;
        NumberedArray<RowBits, kSurfaceHeight + 1> toggles{}; ///< all clear while the layer is not in use
        RowBits covered{};                                    ///< in the row that the sweep has reached
    };

    void cover(std::int64_t column, std::int64_t least, std::int64_t greatest);
    void lineTo(std::int32_t x, std::int32_t y);
    void crossColumns(std::int32_t x, std::int32_t y);

    ComposeRow m_composeRow;
    std::vector<Layer> m_layers;
    std::vector<RowLayer> m_row; ///< the layers that reach the sweep's row
    std::size_t m_used = 0;
    Layer* m_layer = nullptr;

    // The pen, and the rows that its column has so far.
    std::int32_t m_x = 0;
    std::int32_t m_y = 0;
    std::int32_t m_least = 0;
    std::int32_t m_greatest = 0;
};

} // namespace sixtrace
