// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/tablecells.h"

namespace sixtrace {

/// Fills the data table from the model in steps, so that the caller can yield to the event loop between them. The first
/// step writes the head, sets the count of rows and writes the first forty rows; each later step writes one row. A
/// number that cannot be computed ends the fill at that point, without a message. Model and table outlive it.
class TableFill {
public:
    static constexpr int kRowsAtOnce = 40;

    TableFill(TableCells& cells, const publicM& model)
        : m_cells(cells)
        , m_model(model) {}

    /// Does the next step; false when no step is left.
    bool step();
    [[nodiscard]] bool finished() const { return m_phase == Phase::Finished; }
    /// Rows below the head that have been written.
    [[nodiscard]] int rowsWritten() const { return m_rowsWritten; }

private:
    enum class Phase { Start, Rows, Finished };

    [[nodiscard]] bool writeHeads();
    [[nodiscard]] bool writeFirstRows();
    [[nodiscard]] bool writeRow(int sample);
    void writeRowNumber(int row);
    /// False when the product is outside the range of a 32-bit real.
    [[nodiscard]] bool writeValue(int channel, int sample);

    TableCells& m_cells;
    const publicM& m_model;
    Phase m_phase = Phase::Start;
    int m_samples = 0; ///< rows to write below the head
    int m_rowsWritten = 0;
};

} // namespace sixtrace
