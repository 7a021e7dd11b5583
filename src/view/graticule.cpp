// SPDX-License-Identifier: MIT
#include "view/graticule.h"

#include <algorithm>
#include <utility>

namespace sixtrace {

namespace {

constexpr int kDivisionY = 50; // screen units, 8 divisions down
constexpr int kRight = kScreenWidth;
constexpr int kBottom = kScreenHeight;
constexpr int kMiddleX = kScreenWidth / 2;
constexpr int kMiddleY = kScreenHeight / 2;

/// A tick at both edges and one across the centre line, at the height `y`.
void ticksAt(Picture& picture, int y, int length) {
    picture.Line(0, y, length, y);
    picture.Line(kRight - length, y, kRight, y);
    picture.Line(kMiddleX - length, y, kMiddleX + length, y);
}

/// The same at the column `x`.
void ticksOver(Picture& picture, int x, int length) {
    picture.Line(x, 0, x, length);
    picture.Line(x, kBottom - length, x, kBottom);
    picture.Line(x, kMiddleY - length, x, kMiddleY + length);
}

void drawDottedDivisions(Picture& picture, int divisions, int divisionX) {
    picture.drawStyle = DrawStyle::Dot;
    for (int i = 1; i <= 7; ++i) {
        picture.Line(0, kDivisionY * i, kRight, kDivisionY * i);
    }
    for (int i = 1; i < divisions; ++i) {
        picture.Line(divisionX * i, 0, divisionX * i, kBottom);
    }
}

void drawCross(Picture& picture, int divisions, int divisionX) {
    constexpr int kDivisionTick = 10;
    picture.LineBox(0, 0, kRight, kBottom);
    picture.Line(kMiddleX, 0, kMiddleX, kBottom);
    picture.Line(0, kMiddleY, kRight, kMiddleY);
    for (int i = 1; i <= 7; ++i) {
        ticksAt(picture, kDivisionY * i, kDivisionTick);
    }
    for (int i = 1; i < divisions; ++i) {
        ticksOver(picture, divisionX * i, kDivisionTick);
    }
}

} // namespace

void drawGraticule(Picture& picture, Colour gridColor, Graticule style, int divisions) {
    picture.Cls();
    picture.drawMode = DrawMode::CopyPen;
    picture.ForeColor = gridColor;
    picture.drawStyle = DrawStyle::Solid;
    picture.Line(0, 0, kRight, 0);
    picture.Line(0, 0, 0, kBottom);
    picture.Line(kRight, 0, kRight, kBottom);
    picture.Line(0, kBottom, kRight, kBottom);

    const int divisionX = kScreenWidth / divisions; // 50 or 60, without a remainder
    if (style == Graticule::Dotted) {
        drawDottedDivisions(picture, divisions, divisionX);
    } else {
        drawCross(picture, divisions, divisionX);
    }

    // Five fine ticks to a division. The last pass of each loop draws on the edge or beyond it.
    constexpr int kFineTick = 5;
    picture.drawStyle = DrawStyle::Solid;
    for (int i = 0; i <= 41; ++i) {
        ticksAt(picture, kDivisionY / 5 * i, kFineTick);
    }
    for (int i = 0; i <= 5 * divisions + 1; ++i) {
        ticksOver(picture, divisionX / 5 * i, kFineTick);
    }
}

void GraticuleRows::prepare(Picture& picture, Colour gridColor, Graticule style, int divisions) {
    if (m_divisions == divisions && m_style == style && m_backColor == picture.BackColor && m_gridColor == gridColor) {
        return;
    }
    m_backColor = picture.BackColor;
    m_gridColor = gridColor;
    m_style = style;
    m_divisions = divisions;
    drawGraticule(picture, gridColor, style, divisions);

    m_rows.clear();
    for (int y = 0; y < kSurfaceHeight; ++y) {
        const std::uint32_t* const pixels = std::as_const(picture).row(y);
        const std::size_t known = m_rows.size() / kRowPixels;
        std::size_t index = 0;
        while (index < known && !std::equal(pixels, pixels + kSurfaceWidth, m_rows.data() + index * kRowPixels)) {
            ++index;
        }
        if (index == known) {
            m_rows.insert(m_rows.end(), pixels, pixels + kRowPixels);
        }
        m_rowOf[y] = index;
    }
}

} // namespace sixtrace
