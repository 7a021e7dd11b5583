// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace sixtrace {

/// A workbook of one sheet in the BIFF8 format of ".xls" files, with texts and numbers but no cell formats. Rows and
/// columns count from 0. Cells have to be added row by row, and from left to right within a row.
class BiffWorkbook {
public:
    void text(int row, int col, const QString& text);
    void number(int row, int col, double value);

    /// The bytes of the file.
    [[nodiscard]] Result<QByteArray> file() const;

private:
    void notePlace(int row, int col);

    QByteArray m_cells;
    QStringList m_texts;
    int m_rows = 0; ///< used, from row 0 on
    int m_cols = 0;
};

} // namespace sixtrace
