// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QList>

#include <cstdint>
#include <cstdlib>

namespace sixtrace::test {

/// A picture drawn point by point by the plain rules, with a bounds check for each point. Tests compare the fast
/// drawing with it. Pixels are 0xffRRGGBB.
class PlainPicture {
public:
    enum class Pen { Copy, Xor };

    explicit PlainPicture(const QImage& image)
        : m_width(image.width())
        , m_height(image.height())
        , m_pixels(qsizetype{m_width} * m_height) {
        for (int y = 0; y < m_height; ++y) {
            for (int x = 0; x < m_width; ++x) {
                at(x, y) = image.pixel(x, y);
            }
        }
    }

    Pen pen = Pen::Copy;
    std::uint32_t colour = 0xFF0000FF;

    /// Copies the upper left 600 by 400 of another picture.
    void copyFrom(const PlainPicture& other) {
        for (int y = 0; y < 400; ++y) {
            for (int x = 0; x < 600; ++x) {
                at(x, y) = other.at(x, y);
            }
        }
    }
    void point(std::int64_t x, std::int64_t y) {
        m_x = x;
        m_y = y;
        dot(x, y);
    }
    void moveTo(std::int64_t x, std::int64_t y) {
        m_x = x;
        m_y = y;
    }
    /// Draws a line without its last point. At step k of n along the longer axis the other coordinate has moved by (2 k
    /// d + n) div 2 n of its distance d towards the end point.
    void lineTo(std::int64_t x, std::int64_t y) {
        const std::int64_t dx = x - m_x;
        const std::int64_t dy = y - m_y;
        const std::int64_t n = std::max(std::abs(dx), std::abs(dy));
        for (std::int64_t k = 0; k < n; ++k) {
            dot(m_x + moved(dx, k, n), m_y + moved(dy, k, n));
        }
        m_x = x;
        m_y = y;
    }
    /// How many pixels of the upper left 600 by 400 differ from an image.
    [[nodiscard]] int differences(const QImage& image) const {
        int count = 0;
        for (int y = 0; y < 400; ++y) {
            for (int x = 0; x < 600; ++x) {
                count += at(x, y) != image.pixel(x, y) ? 1 : 0;
            }
        }
        return count;
    }

private:
    static std::int64_t moved(std::int64_t distance, std::int64_t k, std::int64_t n) {
        const std::int64_t part = (2 * k * std::abs(distance) + n) / (2 * n);
        return distance < 0 ? -part : part;
    }
    void dot(std::int64_t x, std::int64_t y) {
        if (x < 0 || x >= m_width || y < 0 || y >= m_height) {
            return;
        }
        std::uint32_t& pixel = at(static_cast<int>(x), static_cast<int>(y));
        pixel = pen == Pen::Copy ? colour : (pixel ^ colour) | 0xFF000000U;
    }
    [[nodiscard]] std::uint32_t& at(int x, int y) { return m_pixels[qsizetype{y} * m_width + x]; }
    [[nodiscard]] std::uint32_t at(int x, int y) const { return m_pixels[qsizetype{y} * m_width + x]; }

    int m_width;
    int m_height;
    QList<std::uint32_t> m_pixels;
    std::int64_t m_x = 0;
    std::int64_t m_y = 0;
};

} // namespace sixtrace::test
