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

/// A workbook of one sheet in the Office Open XML format of ".xlsx" files, made by libxlsxwriter in a private folder.
/// Cells are counted from 0.
class XlsxWorkbook {
public:
    XlsxWorkbook();
    XlsxWorkbook(const XlsxWorkbook&) = delete;
    XlsxWorkbook& operator=(const XlsxWorkbook&) = delete;
    ~XlsxWorkbook();

    void text(int row, int col, const QString& text);
    void number(int row, int col, double value);

    /// The bytes of the file. Called once, behind the last cell.
    [[nodiscard]] Result<QByteArray> file();

private:
    /// Whether the private folder has the room for what the library puts there: it does not look whether its own
    /// writing succeeds, and would pack a sheet that breaks off.
    [[nodiscard]] bool hasRoom() const;

    PlainNumerals m_plainNumerals;
    Workshop m_folder;
    QByteArray m_path;
    lxw_workbook* m_workbook = nullptr; ///< closing frees it
    lxw_worksheet* m_sheet = nullptr;
    qsizetype m_cells = 0; ///< numbers written
};

} // namespace sixtrace
