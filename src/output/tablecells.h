// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/numbertext.h"

#include <QString>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

/// The cells of the data table as texts: row 0 is the head, column 0 the sequence number, columns 1 to 6 the channels.
/// Export reads these texts back. It holds no model and no window; TableFill writes it, whoever shows or saves the
/// table reads it.
///
/// Texts are kept in ASCII with a point as decimal mark. The desktop's mark, fixed when the table is made, is put in
/// where a text leaves as TextMatrix().
class TableCells {
public:
    static constexpr int kCols = kChannels + 1;
    static constexpr int kDesignRows = 10000;         ///< until a fill has set Rows
    static constexpr int kMostRows = kSampleRows + 1; ///< the head, and a row for each sample that a channel can hold

    explicit TableCells(QChar decimalMark)
        : m_decimalMark(decimalMark) {}

    [[nodiscard]] int Rows() const { return m_rows; }
    /// Sets the count of rows and empties all but the head. More than kMostRows give kMostRows.
    void setRows(int rows);

    void setHead(int col, std::string text) { m_heads.at(static_cast<std::size_t>(col)) = std::move(text); }
    [[nodiscard]] const std::string& head(int col) const { return m_heads.at(static_cast<std::size_t>(col)); }

    /// Cells of the rows 1 and up. A row beyond Rows takes nothing and is empty.
    void setCell(int row, int col, const CellText& text) {
        if (row >= 1 && col >= 0 && col < kCols && index(row, col) < m_cells.size()) {
            m_cells[index(row, col)] = text;
        }
    }
    [[nodiscard]] const CellText& cell(int row, int col) const;
    /// The seven cells of one row, or null where none of them has been written since the table was made.
    [[nodiscard]] const CellText* row(int row) const;

    /// Any cell, as shown.
    [[nodiscard]] QString TextMatrix(int row, int col) const;
    [[nodiscard]] QChar decimalMark() const { return m_decimalMark; }

private:
    [[nodiscard]] static std::size_t index(int row, int col) {
        return static_cast<std::size_t>(row - 1) * kCols + static_cast<std::size_t>(col);
    }

    QChar m_decimalMark;
    int m_rows = kDesignRows;
    std::array<std::string, kCols> m_heads;
    std::vector<CellText> m_cells; ///< rows 1 and up; none until Rows has been set
};

} // namespace sixtrace
