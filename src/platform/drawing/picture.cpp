// SPDX-License-Identifier: MIT
#include "platform/drawing/picture.h"

#include "platform/drawing/linerule.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace sixtrace {

namespace {

constexpr std::size_t kRowPixels = 16; // a cache line of them

/// Whether step k of a dashed or dotted line is drawn.
bool lit(DrawStyle style, std::int64_t k) {
    return style == DrawStyle::Dash ? k % 6 < 3 : k % 5 == 0;
}

} // namespace

Picture::Picture(int width, int height)
    : m_width(width)
    , m_height(height)
    , m_stride((static_cast<std::size_t>(width) + kRowPixels - 1) / kRowPixels * kRowPixels) {
    Cls();
}

void Picture::Cls() {
    m_cleared = pixelOfColour(BackColor);
    if (m_pixels != nullptr) {
        std::fill_n(m_pixels.get(), size(), m_cleared);
    }
    m_currentX = 0;
    m_currentY = 0;
}

void Picture::makePixels() const {
    m_pixels = std::make_unique_for_overwrite<std::uint32_t[]>(size());
    std::fill_n(m_pixels.get(), size(), m_cleared);
}

void Picture::Line(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
    stroke(x1, y1, x2, y2, drawStyle, LastPixel::Drawn);
    m_currentX = x2;
    m_currentY = y2;
}

void Picture::LineBox(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2) {
    // Each side leaves its last corner to the next one, so that an exclusive-or box is whole.
    stroke(x1, y1, x2, y1, drawStyle, LastPixel::LeftOut);
    stroke(x2, y1, x2, y2, drawStyle, LastPixel::LeftOut);
    stroke(x2, y2, x1, y2, drawStyle, LastPixel::LeftOut);
    stroke(x1, y2, x1, y1, drawStyle, LastPixel::LeftOut);
    if (x1 == x2 && y1 == y2) {
        setPixel(x1, y1);
    }
    m_currentX = x2;
    m_currentY = y2;
}

void Picture::PSet(std::int32_t x, std::int32_t y) {
    setPixel(x, y);
    m_currentX = x;
    m_currentY = y;
}

QPoint Picture::MoveToEx(std::int32_t x, std::int32_t y) {
    const QPoint previous(m_currentX, m_currentY);
    m_currentX = x;
    m_currentY = y;
    return previous;
}

void Picture::LineTo(std::int32_t x, std::int32_t y) {
    stroke(m_currentX, m_currentY, x, y, DrawStyle::Solid, LastPixel::LeftOut);
    m_currentX = x;
    m_currentY = y;
}

void Picture::setPixel(std::int32_t x, std::int32_t y) {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) {
        return;
    }
    const std::uint32_t pen = pixelOfColour(ForeColor);
    std::uint32_t& pixel = row(y)[x];
    pixel = drawMode == DrawMode::XorPen ? pixel ^ (pen & 0x00FFFFFFU) : pen;
}

void Picture::stroke(std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2, DrawStyle style,
                     LastPixel lastPixel) {
    const std::int64_t dx = std::int64_t{x2} - x1;
    const std::int64_t dy = std::int64_t{y2} - y1;
    const bool alongX = std::abs(dx) >= std::abs(dy);
    const LineRule rule = alongX ? LineRule{std::abs(dx), std::abs(dy)} : LineRule{std::abs(dy), std::abs(dx)};
    const int signX = dx < 0 ? -1 : 1;
    const int signY = dy < 0 ? -1 : 1;

    StepRange steps =
        alongX ? offsetStepsInside(rule, y1, signY, m_height) : offsetStepsInside(rule, x1, signX, m_width);
    const StepRange inside = alongX ? stepsInside(x1, signX, m_width) : stepsInside(y1, signY, m_height);
    steps.cut(inside.first, inside.last);
    steps.cut(0, lastPixel == LastPixel::Drawn ? rule.length : rule.length - 1);
    if (steps.empty()) {
        return;
    }

    const std::uint32_t pen = pixelOfColour(ForeColor);
    const bool exclusiveOr = drawMode == DrawMode::XorPen;
    const auto along = static_cast<std::ptrdiff_t>(alongX ? signX : signY * static_cast<std::ptrdiff_t>(m_stride));
    const auto across = static_cast<std::ptrdiff_t>(alongX ? signY * static_cast<std::ptrdiff_t>(m_stride) : signX);

    const std::int64_t startOffset = rule.offset(steps.first);
    const std::int64_t startX = alongX ? x1 + signX * steps.first : x1 + signX * startOffset;
    const std::int64_t startY = alongX ? y1 + signY * startOffset : y1 + signY * steps.first;
    std::uint32_t* pixel = row(static_cast<int>(startY)) + startX;

    if (alongX && rule.rise == 0 && style == DrawStyle::Solid && !exclusiveOr) {
        std::uint32_t* const left = signX > 0 ? pixel : pixel - (steps.last - steps.first);
        std::fill_n(left, steps.last - steps.first + 1, pen);
        return;
    }

    // What is left of (2 k rise + length) behind the division, so that each further step is an addition.
    const std::int64_t twiceLength = 2 * rule.length;
    auto remainder = static_cast<std::int64_t>(LineRule::Wide{2} * steps.first * rule.rise + rule.length -
                                               LineRule::Wide{startOffset} * twiceLength);
    const auto walk = [&](auto draw) {
        for (std::int64_t k = steps.first;; ++k) {
            draw(k);
            if (k == steps.last) {
                return;
            }
            pixel += along;
            remainder += 2 * rule.rise;
            if (remainder >= twiceLength) {
                remainder -= twiceLength;
                pixel += across;
            }
        }
    };
    // One loop for each kind of line, so that none asks at every pixel which kind it is.
    const std::uint32_t change = pen & 0x00FFFFFFU;
    if (style != DrawStyle::Solid) {
        walk([&](std::int64_t k) {
            if (lit(style, k)) {
                *pixel = exclusiveOr ? *pixel ^ change : pen;
            }
        });
    } else if (exclusiveOr) {
        walk([&](std::int64_t) { *pixel ^= change; });
    } else {
        walk([&](std::int64_t) { *pixel = pen; });
    }
}

void Picture::BitBlt(int x, int y, int width, int height, const Picture& source, int sourceX, int sourceY) {
    const int left = std::max({0, -x, -sourceX});
    const int top = std::max({0, -y, -sourceY});
    const int right = std::min({width, m_width - x, source.m_width - sourceX});
    const int bottom = std::min({height, m_height - y, source.m_height - sourceY});
    if (right <= left) {
        return;
    }
    for (int line = top; line < bottom; ++line) {
        std::memmove(row(y + line) + x + left, source.row(sourceY + line) + sourceX + left,
                     static_cast<std::size_t>(right - left) * sizeof(std::uint32_t));
    }
}

QImage Picture::view() const {
    return {reinterpret_cast<const uchar*>(pixels()), m_width, m_height,
            static_cast<qsizetype>(m_stride * sizeof(std::uint32_t)), QImage::Format_RGB32};
}

} // namespace sixtrace
