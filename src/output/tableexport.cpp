// SPDX-License-Identifier: MIT
#include "output/tableexport.h"

#include "output/biffworkbook.h"
#include "output/xlsxworkbook.h"
#include "platform/files/wholefile.h"

#include <charconv>
#include <cstring>
#include <vector>

namespace sixtrace {

namespace {

constexpr qsizetype kZone = 14;
static_assert(kZone == CellText::kLongest + 1, "a cell's text and one blank make a print zone");

std::vector<int> tickedColumns(const TableExport& table) {
    if (!table.order.empty()) {
        return table.order;
    }
    std::vector<int> columns;
    for (int col = 0; col < TableCells::kCols; ++col) {
        if (table.ticked[col]) {
            columns.push_back(col);
        }
    }
    return columns;
}

void appendZone(QByteArray& line, std::string_view text) {
    line.append(text.data(), static_cast<qsizetype>(text.size()));
    line.append(kZone - line.size() % kZone, ' ');
}

/// Appends the rows below the head. Every cell takes one zone, so that all lines have the same length.
void appendRows(QByteArray& text, const TableCells& cells, const std::vector<int>& columns) {
    const qsizetype line = static_cast<qsizetype>(columns.size()) * kZone + 2;
    const qsizetype start = text.size();
    text.resize(start + std::max(cells.Rows() - 1, 0) * line);
    char* at = text.data() + start;
    for (int row = 1; row < cells.Rows(); ++row) {
        const CellText* const filled = cells.row(row);
        for (const int col : columns) {
            if (filled != nullptr) {
                std::memcpy(at, filled[col].characters.data(), CellText::kLongest);
                at[CellText::kLongest] = ' ';
            } else {
                std::memset(at, ' ', kZone);
            }
            at += kZone;
        }
        *at++ = '\r';
        *at++ = '\n';
    }
}

void appendCsvCell(QByteArray& text, std::string_view cell, bool last) {
    text.append(cell.data(), static_cast<qsizetype>(cell.size()));
    text.append(last ? '\n' : ',');
}

/// Writes the sheet to either kind of workbook. Both take their cells row by row.
template<typename Workbook>
Outcome layOut(const TableExport& table, Workbook& workbook) {
    const TableCells& cells = table.cells;
    workbook.text(0, 0, table.unit);
    for (int col = 1; col < TableCells::kCols; ++col) {
        workbook.text(0, col, cells.TextMatrix(0, col));
    }
    if (cells.Rows() < 2) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    std::vector<int> columns = tickedColumns(table);
    std::erase_if(columns, [&cells](int col) { return cells.cell(1, col).isEmpty(); });
    for (int row = 1; row < cells.Rows(); ++row) {
        const CellText* const filled = cells.row(row);
        for (const int col : columns) {
            if (filled != nullptr && !filled[col].isEmpty()) {
                const std::string_view text = filled[col].view();
                double number = 0;
                std::from_chars(text.data(), text.data() + text.size(), number);
                workbook.number(row, col, number);
            }
        }
    }
    return success();
}

template<typename Workbook>
Result<QByteArray> laidOut(const TableExport& table) {
    Workbook workbook;
    const Outcome done = layOut(table, workbook);
    return done ? workbook.file() : Result<QByteArray>(done.error());
}

} // namespace

QByteArray textTable(const TableExport& table) {
    const TableCells& cells = table.cells;
    const std::vector<int> columns = tickedColumns(table);
    QByteArray text = table.unit.toLocal8Bit() + "\r\n";
    const qsizetype numbersAt = text.size();
    if (cells.Rows() > 0) {
        QByteArray line;
        for (const int col : columns) {
            appendZone(line, cells.head(col));
        }
        text += line + "\r\n";
    }
    appendRows(text, cells, columns);
    if (cells.decimalMark() != u'.') {
        QByteArray numbers = text.sliced(numbersAt);
        numbers.replace(".", QString(cells.decimalMark()).toLocal8Bit());
        text.replace(numbersAt, text.size() - numbersAt, numbers);
    }
    return text;
}

QByteArray csvTable(const TableExport& table) {
    const TableCells& cells = table.cells;
    const std::vector<int> columns = tickedColumns(table);
    QByteArray text;
    for (const int col : columns) {
        appendCsvCell(text, col == 0 ? std::string_view("sequence") : std::string_view(cells.head(col)),
                      col == columns.back());
    }
    for (int row = 1; row < cells.Rows(); ++row) {
        for (const int col : columns) {
            appendCsvCell(text, cells.cell(row, col).view(), col == columns.back());
        }
    }
    return text;
}

Result<QByteArray> workbookTable(const TableExport& table, WorkbookKind kind) {
    return kind == WorkbookKind::OfficeOpen ? laidOut<XlsxWorkbook>(table) : laidOut<BiffWorkbook>(table);
}

Outcome SaveTextTable(const TableExport& table, const QString& path) {
    return writeWhole(path, textTable(table));
}

Outcome SaveExcelTable(const TableExport& table, const QString& path) {
    if (path.isEmpty()) {
        return success();
    }
    const bool officeOpen = path.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive);
    const Result<QByteArray> file = workbookTable(table, officeOpen ? WorkbookKind::OfficeOpen : WorkbookKind::Biff);
    return file ? writeWhole(path, file.value()) : Outcome(file.error());
}

} // namespace sixtrace
