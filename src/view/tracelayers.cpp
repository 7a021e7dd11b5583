// SPDX-License-Identifier: MIT
#include "view/tracelayers.h"

#include "platform/drawing/linerule.h"

#include <algorithm>
#include <cstdlib>

namespace sixtrace {

TraceLayers::TraceLayers(Vectors vectors)
    : m_composeRow(rowComposer(vectors)) {}

void TraceLayers::begin(Colour colour, std::int32_t x, std::int32_t y) {
    if (m_used == m_layers.size()) {
        m_layers.emplace_back();
    }
    m_layer = &m_layers[m_used++];
    m_layer->pixel = pixelOfColour(colour);
    m_layer->firstRow = kSurfaceHeight;
    m_layer->lastRow = 0;
    m_layer->covered = {};
    m_x = x;
    m_y = y;
    m_least = y;
    m_greatest = y;
}

void TraceLayers::end() {
    cover(m_x, m_least, m_greatest);
}

void TraceLayers::cover(std::int64_t column, std::int64_t least, std::int64_t greatest) {
    if (column < 0 || column >= kSurfaceWidth) {
        return;
    }
    const std::int64_t top = std::max<std::int64_t>(least, 0);
    const std::int64_t bottom = std::min<std::int64_t>(greatest, kSurfaceHeight - 1);
    if (top > bottom) {
        return;
    }
    const auto word = static_cast<std::size_t>(column) / 64;
    const std::uint64_t bit = std::uint64_t{1} << (static_cast<std::size_t>(column) % 64);
    m_layer->toggles[top][word] ^= bit;
    m_layer->toggles[bottom + 1][word] ^= bit;
    m_layer->firstRow = std::min(m_layer->firstRow, static_cast<int>(top));
    m_layer->lastRow = std::max(m_layer->lastRow, static_cast<int>(bottom) + 1);
}

void TraceLayers::lineTo(std::int32_t x, std::int32_t y) {
    if (x == m_x + std::int64_t{1} && std::abs(std::int64_t{y} - m_y) < (1 << 30)) {
        // The common step to the next column: its first half belongs to the old one.
        const std::int32_t rise = std::abs(y - m_y);
        const std::int32_t half = (rise + 1) / 2;
        const std::int32_t sign = y < m_y ? -1 : 1;
        if (rise > 1) {
            const std::int32_t lastOld = m_y + sign * (half - 1);
            m_least = std::min(m_least, lastOld);
            m_greatest = std::max(m_greatest, lastOld);
        }
        cover(m_x, m_least, m_greatest);
        const std::int32_t firstNew = rise > 1 ? m_y + sign * half : y;
        m_least = std::min(firstNew, y);
        m_greatest = std::max(firstNew, y);
    } else {
        crossColumns(x, y);
    }
    m_x = x;
    m_y = y;
}

/// A segment over any number of columns and rows, by the same rule as Picture's lines.
void TraceLayers::crossColumns(std::int32_t x, std::int32_t y) {
    const std::int64_t columns = std::int64_t{x} - m_x;
    const std::int64_t rows = std::abs(std::int64_t{y} - m_y);
    const int sign = y < m_y ? -1 : 1;
    const bool steep = rows > columns;
    const LineRule rule = steep ? LineRule{rows, columns} : LineRule{columns, rows};

    // Rows of the k-th column of the segment, as distances from the pen.
    const auto firstRow = [&](std::int64_t k) { return steep ? (k == 0 ? 0 : rule.firstStepOf(k)) : rule.offset(k); };
    const auto lastRow = [&](std::int64_t k) {
        return steep ? (k == columns ? rows : rule.firstStepOf(k + 1) - 1) : rule.offset(k);
    };
    const auto spread = [&](std::int64_t first, std::int64_t last) {
        const std::int64_t a = m_y + sign * first;
        const std::int64_t b = m_y + sign * last;
        return std::pair(std::min(a, b), std::max(a, b));
    };

    const auto [oldLeast, oldGreatest] = spread(firstRow(0), lastRow(0));
    cover(m_x, std::min<std::int64_t>(m_least, oldLeast), std::max<std::int64_t>(m_greatest, oldGreatest));

    const std::int64_t firstColumn = std::max<std::int64_t>(1, -std::int64_t{m_x});
    const std::int64_t lastColumn = std::min<std::int64_t>(columns - 1, std::int64_t{kSurfaceWidth} - 1 - m_x);
    for (std::int64_t k = firstColumn; k <= lastColumn; ++k) {
        const auto [least, greatest] = spread(firstRow(k), lastRow(k));
        cover(m_x + k, least, greatest);
    }

    const auto [newLeast, newGreatest] = spread(firstRow(columns), lastRow(columns));
    m_least = static_cast<std::int32_t>(newLeast);
    m_greatest = static_cast<std::int32_t>(newGreatest);
}

void TraceLayers::sweep(const GraticuleRows& ground, Picture& picture) {
    for (int y = 0; y < kSurfaceHeight; ++y) {
        m_row.clear();
        for (std::size_t index = 0; index < m_used; ++index) {
            Layer& layer = m_layers[index];
            if (y >= layer.firstRow && y <= layer.lastRow) {
                m_row.push_back({&layer.covered, &layer.toggles[y], layer.pixel});
            }
        }
        m_composeRow(m_row, ground.row(y), picture.row(y));
    }
    for (std::size_t index = 0; index < m_used; ++index) {
        // A trace that reaches the screen's last row ends one row below it.
        m_layers[index].toggles[kSurfaceHeight] = {};
    }
    m_used = 0;
}

} // namespace sixtrace
