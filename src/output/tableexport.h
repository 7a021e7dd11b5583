// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"
#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <vector>

namespace sixtrace {

/// The unit line where no language file has another.
inline const QString kUnitCaption = QStringLiteral("单位：（mV）");

/// What is to be saved of a table: the columns whose box is ticked, and the unit line above them.
struct TableExport {
    const TableCells& cells;
    QString unit;
    std::array<bool, TableCells::kCols> ticked{true, true, true, true, true, true, true};
    /// The ticked columns in the order in which a text or a CSV has them; from left to right where it is empty.
    std::vector<int> order{};
};

/// The text file: the unit line in the system's encoding, then every row, each cell padded with blanks to the next
/// print zone of 14 characters. Lines end in CR LF.
[[nodiscard]] QByteArray textTable(const TableExport& table);

/// The same cells for programs: one header row, commas, a point as decimal mark whatever the desktop says, lines that
/// end in LF. The first column is headed "sequence".
[[nodiscard]] QByteArray csvTable(const TableExport& table);

/// The two kinds of workbook: ".xls" and ".xlsx".
enum class WorkbookKind { Biff, OfficeOpen };

/// The workbook that SaveExcelTable() writes.
[[nodiscard]] Result<QByteArray> workbookTable(const TableExport& table, WorkbookKind kind);

/// Writes the text file; it appears whole or not at all.
Outcome SaveTextTable(const TableExport& table, const QString& path);

/// Writes a workbook: an Office Open XML one for a name that ends in ".xlsx", else a BIFF8 one. The sheet holds the
/// unit in A1, the heads behind it whatever is ticked, and below the ticked columns whose first cell holds something,
/// each at its place in the table, as numbers. Error 9 for a table without a row below its head.
Outcome SaveExcelTable(const TableExport& table, const QString& path);

} // namespace sixtrace
