// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace sixtrace {

/// A workbook of one sheet in the BIFF8 format of ".xls" files: texts and numbers, no formats. Cells come row by row,
/// counted from 0, and within a row from left to right.
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
