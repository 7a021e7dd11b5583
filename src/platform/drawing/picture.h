// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QImage>
#include <QPoint>

#include <cstdint>
#include <memory>

namespace sixtrace {

/// What a drawn pixel does to the one below it.
enum class DrawMode { XorPen = 7, CopyPen = 13 };

/// Solid lines, dots (one pixel on, four off) or dashes (three on, three off). A pattern starts anew at each line's
/// first point and is counted in steps of the line's longer axis.
enum class DrawStyle { Solid = 0, Dash = 1, Dot = 2 };

/// A retained picture: a 32-bit pixel surface with the drawing operations of a picture box. It knows no widget; a
/// widget shows it by a blit, a file or a test reads its pixels.
///
/// Coordinates are pixels, origin top left, Y downward. Any 32-bit coordinates may come in; what lies outside is
/// clipped exactly: the visible pixels are those that an endless surface would show. A line sets pixels along its
/// longer axis; at step k of n the other coordinate has moved by (2 k d + n) div 2 n of its distance d, towards the
/// end point. That rule is the program's own, so that pictures are the same on every machine.
class Picture {
public:
    Picture(int width, int height);
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    Colour BackColor = 0x00FFFFFF;
    Colour ForeColor = 0;
    DrawMode drawMode = DrawMode::CopyPen;
    DrawStyle drawStyle = DrawStyle::Solid;

    /// Fills the picture with BackColor and moves the current point to the origin.
    void Cls();
    /// A line with both its end points. The current point moves to the second.
    void Line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);
    /// A line from the current point, end points included.
    void Line(std::int32_t x2, std::int32_t y2) { Line(m_currentX, m_currentY, x2, y2); }
    /// The outline of a rectangle given by two opposite corners. The current point moves to the second.
    void LineBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);
    /// One pixel. The current point moves there.
    void PSet(std::int32_t x, std::int32_t y);

    /// Moves the pen, which is the current point; gives back where it stood.
    QPoint MoveToEx(std::int32_t x, std::int32_t y);
    /// A solid line from the pen without its last pixel, so that an exclusive-or polyline touches each vertex once.
    void LineTo(std::int32_t x, std::int32_t y);

    /// Copies a width by height rectangle from `source` to this picture; what lies outside either is left out.
    void BitBlt(int x, int y, int width, int height, const Picture& source, int sourceX, int sourceY);

    [[nodiscard]] std::int32_t CurrentX() const { return m_currentX; }
    [[nodiscard]] std::int32_t CurrentY() const { return m_currentY; }

    /// The pixels of a row, `width()` of them, as 0xffRRGGBB. Rows are padded to a multiple of 16 pixels, which may be
    /// read and written without being seen.
    [[nodiscard]] const std::uint32_t* row(int y) const { return pixels() + m_stride * static_cast<std::size_t>(y); }
    [[nodiscard]] std::uint32_t* row(int y) { return pixels() + m_stride * static_cast<std::size_t>(y); }
    /// The colour of a pixel that lies inside.
    [[nodiscard]] Colour Point(int x, int y) const { return colourOfPixel(row(y)[x]); }

    /// The pixels as an image that shares this picture's memory; valid as long as the picture is.
    [[nodiscard]] QImage view() const;

private:
    enum class LastPixel { Drawn, LeftOut };
    void stroke(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, DrawStyle style,
                LastPixel lastPixel);
    void setPixel(std::int32_t x, std::int32_t y);
    [[nodiscard]] std::size_t size() const { return m_stride * static_cast<std::size_t>(m_height); }
    [[nodiscard]] std::uint32_t* pixels() const {
        if (m_pixels == nullptr) {
            makePixels();
        }
        return m_pixels.get();
    }
    void makePixels() const;

    int m_width;
    int m_height;
    std::size_t m_stride; ///< pixels from a row to the next
    std::int32_t m_currentX = 0;
    std::int32_t m_currentY = 0;
    /// Made when a pixel is first drawn or read: a picture that waits for its use takes no memory.
    mutable std::unique_ptr<std::uint32_t[]> m_pixels;
    std::uint32_t m_cleared = 0; ///< what the last Cls filled the picture with
};

} // namespace sixtrace
