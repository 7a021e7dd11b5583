// SPDX-License-Identifier: MIT
#include "output/tablecells.h"

#include <algorithm>

namespace sixtrace {

namespace {

constexpr CellText kEmpty = CellText::empty();

QString shown(std::string_view text, QChar decimalMark) {
    QString all = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
    if (decimalMark != u'.') {
        all.replace(u'.', decimalMark);
    }
    return all;
}

} // namespace

void TableCells::setRows(int rows) {
    m_rows = std::clamp(rows, 0, kMostRows);
    m_cells.assign(index(std::max(m_rows, 1), 0), kEmpty);
}

const CellText& TableCells::cell(int row, int col) const {
    const CellText* const cells = this->row(row);
    return cells != nullptr && col >= 0 && col < kCols ? cells[col] : kEmpty;
}

const CellText* TableCells::row(int row) const {
    return row >= 1 && index(row, 0) < m_cells.size() ? m_cells.data() + index(row, 0) : nullptr;
}

QString TableCells::TextMatrix(int row, int col) const {
    return shown(row == 0 ? std::string_view(head(col)) : cell(row, col).view(), m_decimalMark);
}

} // namespace sixtrace
