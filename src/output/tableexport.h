// SPDX-License-Identifier: MIT
#pragma once

#include "output/tablecells.h"
#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

namespace sixtrace {

struct CaptureRecord;

/// The unit line for a language file without one.
inline const QString kUnitCaption = QStringLiteral("单位：（mV）");

/// The part of a table that is saved: the ticked columns, and the unit line above them.
struct TableExport {
    const TableCells& cells;
    QString unit;
    NumberedArray<bool, TableCells::kCols> ticked{true, true, true, true, true, true, true};
    /// The ticked columns in their order in a text or CSV file; when it is empty, they go from left to right.
    std::vector<int> order{};
};

/// The text file: the unit line in the system's encoding, then all rows. Each cell is padded with blanks to the next
/// print zone, which are 14 characters wide. Lines end in CR LF.
[[nodiscard]] QByteArray textTable(const TableExport& table);

/// The same cells as comma-separated values: one header row, a point as decimal mark on every desktop, lines that end
/// in LF. The head of the first column is "sequence".
[[nodiscard]] QByteArray csvTable(const TableExport& table);

/// What a table for analysis has besides the cells of csvTable().
struct AnalysisWishes {
    bool time = false;  ///< a column time_s of index x interval; when the intervals differ, one before each channel
    bool volts = false; ///< volts at the probe's tip instead of millivolts at the instrument's input
};

/// The text of csvTable() with times or volts (analysistable.cpp). The record is that of the capture in the table.
[[nodiscard]] std::string analysisTable(const TableExport& table, const CaptureRecord& record, AnalysisWishes wishes);

/// The two kinds of workbook: ".xls" and ".xlsx".
enum class WorkbookKind { Biff, OfficeOpen };

/// The workbook that SaveExcelTable() writes.
[[nodiscard]] Result<QByteArray> workbookTable(const TableExport& table, WorkbookKind kind);

/// Writes the text file; it appears whole or not at all.
Outcome SaveTextTable(const TableExport& table, const QString& path);

/// Writes a workbook: Office Open XML for a name that ends in ".xlsx", otherwise BIFF8. The sheet holds the unit in A1
/// and the heads of all channels to the right of it. Below them stand, as numbers, the ticked columns whose first cell
/// is not empty, each at its place in the table. Error 9 for a table without a row below its head.
Outcome SaveExcelTable(const TableExport& table, const QString& path);

} // namespace sixtrace
