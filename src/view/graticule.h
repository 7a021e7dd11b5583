// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/drawing/picture.h"
#include "view/geometry.h"

#include <array>
#include <cstdint>
#include <vector>

namespace sixtrace {

/// Clears `picture` and draws border, graticule and ticks in GridColor: dotted division lines, or the
/// solid centre cross with division ticks. `divisions` across, 8 down.
void drawGraticule(Picture& picture, Colour gridColor, Graticule style, int divisions);

/// The empty screen by rows, kept between frames. Most rows of a graticule are alike, so its few different ones stay in
/// the fastest cache while a frame copies them.
class GraticuleRows {
public:
    /// Screen pixels of a row, padded to whole blocks of 16.
    static constexpr std::size_t kRowPixels = (kSurfaceWidth + 15) / 16 * 16;

    /// Prepares the rows that drawGraticule draws in a picture of the screen's size. It draws in `picture` itself,
    /// whose content is lost; it does nothing where background and graticule have not changed since the last call.
    void prepare(Picture& picture, Colour gridColor, Graticule style, int divisions);
    /// The pixels of a screen row, 0 to 400. Those beyond the screen's right edge are padding.
    [[nodiscard]] const std::uint32_t* row(int y) const { return m_rows.data() + m_rowOf[y] * kRowPixels; }

private:
    Colour m_backColor = 0;
    Colour m_gridColor = 0;
    Graticule m_style = Graticule::Dotted;
    int m_divisions = 0; ///< 0: nothing prepared yet
    std::vector<std::uint32_t> m_rows;
    NumberedArray<std::size_t, kSurfaceHeight> m_rowOf{};
};

} // namespace sixtrace
