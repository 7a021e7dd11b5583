// SPDX-License-Identifier: MIT
#include "output/xlsxworkbook.h"

#include <QDir>
#include <QFile>

#include <xlsxwriter.h>

namespace sixtrace {

namespace {

/// More bytes than the library writes for a number, and for the rest of a workbook of one sheet with a few texts.
constexpr qsizetype kCellBytes = 64;
constexpr qsizetype kOtherBytes = 65536;

/// The run-time error for a failure of the library.
RuntimeError errorOf(lxw_error error) {
    switch (error) {
    case LXW_ERROR_MEMORY_MALLOC_FAILED:
        return RuntimeError::of(ErrorNumber::CannotCreateObject);
    case LXW_ERROR_CREATING_XLSX_FILE:
    case LXW_ERROR_CREATING_TMPFILE:
    case LXW_ERROR_READING_TMPFILE:
    case LXW_ERROR_ZIP_FILE_OPERATION:
    case LXW_ERROR_ZIP_FILE_ADD:
    case LXW_ERROR_ZIP_CLOSE:
        // It writes to a new folder of ours only, where nothing but a full disk makes it fail.
        return RuntimeError::of(ErrorNumber::DiskFull);
    default:
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
}

/// The folders that workbooks are made in. The library unlinks its own temporary files as soon as it has opened them.
WorkshopKind writingWorkbooks() {
    return {QStringLiteral("sixtrace-workbook"),
            QRegularExpression(QStringLiteral("table\\.xlsx|room|tmp\\.[A-Za-z0-9]{10}"))};
}

} // namespace

XlsxWorkbook::XlsxWorkbook()
    : m_folder(QDir::tempPath(), writingWorkbooks()) {
    if (!m_folder.isValid()) {
        return;
    }
    m_path = QFile::encodeName(m_folder.filePath(QStringLiteral("table.xlsx")));
    QByteArray folder = QFile::encodeName(m_folder.path());
    lxw_workbook_options options{};
    options.tmpdir = folder.data();
    m_workbook = workbook_new_opt(m_path.constData(), &options);
    if (m_workbook != nullptr) {
        m_sheet = workbook_add_worksheet(m_workbook, nullptr);
    }
}

XlsxWorkbook::~XlsxWorkbook() {
    if (m_workbook != nullptr) {
        lxw_workbook_free(m_workbook);
    }
}

void XlsxWorkbook::text(int row, int col, const QString& text) {
    if (m_sheet != nullptr && !text.isEmpty()) {
        worksheet_write_string(m_sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col),
                               text.toUtf8().constData(), nullptr);
    }
}

void XlsxWorkbook::number(int row, int col, double value) {
    if (m_sheet != nullptr) {
        ++m_cells;
        worksheet_write_number(m_sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col), value, nullptr);
    }
}

bool XlsxWorkbook::hasRoom() const {
    QFile trial(m_folder.filePath(QStringLiteral("room")));
    const QByteArray zeros(m_cells * kCellBytes + kOtherBytes, '\0');
    const bool fits = trial.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && trial.write(zeros) == zeros.size();
    return trial.remove() && fits;
}

Result<QByteArray> XlsxWorkbook::file() {
    if (m_sheet == nullptr) {
        return RuntimeError::of(ErrorNumber::CannotCreateObject);
    }
    if (!hasRoom()) {
        return RuntimeError::of(ErrorNumber::DiskFull);
    }
    const lxw_error closed = workbook_close(m_workbook);
    m_workbook = nullptr;
    m_sheet = nullptr;
    if (closed != LXW_NO_ERROR) {
        return errorOf(closed);
    }
    QFile written(QFile::decodeName(m_path));
    if (!written.open(QIODevice::ReadOnly)) {
        return RuntimeError::of(ErrorNumber::DeviceIo);
    }
    return written.readAll();
}

} // namespace sixtrace
