// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/celltext.h"

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace sixtrace {

/// The cells of the data table as texts. Row 0 is the head; the rows 1 and up are the samples. Column 0 is the sequence
/// number; the columns 1 to 6 are the channels. TableFill writes the cells; the window and the exports read them.
///
/// The texts are ASCII with a point as decimal mark. TextMatrix() replaces it by the desktop's mark, which is fixed
/// when the table is made.
class TableCells {
public:
    static constexpr int kCols = kChannels + 1;
    static constexpr int kDesignRows = 10000;         ///< the count of rows until setRows() is called
    static constexpr int kMostRows = kSampleRows + 1; ///< the head, and a row for each sample that a channel can hold

    /// The row of a sample, and the sample of a row; samples are counted from 0.
    [[nodiscard]] static constexpr int rowOfSample(int sample) { return sample + 1; }
    [[nodiscard]] static constexpr int sampleOfRow(int row) { return row - 1; }
    /// The column of a channel 0 to 5, and the channel of a column 1 to 6.
    [[nodiscard]] static constexpr int columnOfChannel(int channel) { return channel + 1; }
    [[nodiscard]] static constexpr int channelOfColumn(int col) { return col - 1; }

    explicit TableCells(QChar decimalMark)
        : m_decimalMark(decimalMark) {}

    [[nodiscard]] int Rows() const { return m_rows; }
    /// Sets the count of rows, at most kMostRows, and empties all cells but the head.
    void setRows(int rows);

    void setHead(int col, std::string text) { m_heads.at(col) = std::move(text); }
    [[nodiscard]] const std::string& head(int col) const { return m_heads.at(col); }

    /// Sets a cell of the rows 1 and up; a cell outside the table is left out.
    void setCell(int row, int col, const CellText& text) {
        if (row >= 1 && col >= 0 && col < kCols && index(row, col) < m_cells.size()) {
            m_cells[index(row, col)] = text;
        }
    }
    /// A cell of the rows 1 and up; empty outside the table.
    [[nodiscard]] const CellText& cell(int row, int col) const;
    /// The seven cells of a row from 1 up; null outside the table, and for all rows before the first setRows().
    [[nodiscard]] const CellText* row(int row) const;

    /// Any cell, with the desktop's decimal mark.
    [[nodiscard]] QString TextMatrix(int row, int col) const;
    [[nodiscard]] QChar decimalMark() const { return m_decimalMark; }

private:
    [[nodiscard]] static constexpr std::size_t index(int row, int col) {
        return static_cast<std::size_t>(sampleOfRow(row)) * kCols + static_cast<std::size_t>(col);
    }

    QChar m_decimalMark;
    int m_rows = kDesignRows;
    NumberedArray<std::string, kCols> m_heads;
    std::vector<CellText> m_cells; ///< rows 1 and up; empty before the first setRows()
};

} // namespace sixtrace
