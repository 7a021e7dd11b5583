// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/workshop.h"
#include "platform/text/plainnumerals.h"
#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

struct lxw_workbook;
struct lxw_worksheet;

namespace sixtrace {

/// A workbook of one sheet in the Office Open XML format of ".xlsx" files. libxlsxwriter makes it in a private folder.
/// Rows and columns count from 0.
class XlsxWorkbook {
public:
    XlsxWorkbook();
    XlsxWorkbook(const XlsxWorkbook&) = delete;
    XlsxWorkbook& operator=(const XlsxWorkbook&) = delete;
    ~XlsxWorkbook();

    void text(int row, int col, const QString& text);
    void number(int row, int col, double value);

    /// The bytes of the file. Called once, after the last cell.
    [[nodiscard]] Result<QByteArray> file();

private:
    /// Whether the disk has room for what the library writes. The library does not check its own writing, so that
    /// without room it would pack an incomplete sheet.
    [[nodiscard]] bool hasRoom() const;

    PlainNumerals m_plainNumerals;
    Workshop m_folder;
    QByteArray m_path;
    lxw_workbook* m_workbook = nullptr; ///< closing frees it
    lxw_worksheet* m_sheet = nullptr;
    qsizetype m_cells = 0; ///< numbers written
};

} // namespace sixtrace
