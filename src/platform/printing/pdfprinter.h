// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

#include <QPageSize>

namespace sixtrace {

/// One printer, whose paper is a PDF document in memory: for programs without a desktop. Each document replaces the one
/// before.
class PdfPrinter : public PrintDevices {
public:
    /// The paper that the printer has in, and how it lies.
    PdfPrinter(const QPageSize& paper, bool landscape);

    /// The last finished document; empty before the first.
    [[nodiscard]] const QByteArray& document() const { return m_document; }

    [[nodiscard]] QStringList names() const override { return {defaultName()}; }
    [[nodiscard]] QString defaultName() const override { return QStringLiteral("PDF"); }
    [[nodiscard]] PrinterProperties initial(const QString& name) const override;
    [[nodiscard]] Result<Sheet> sheet(const PrinterProperties& properties) const override;
    [[nodiscard]] Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) override;
    /// Nobody is there to ask.
    [[nodiscard]] bool ShowPrinter(PrinterDialog&, quintptr) override { return false; }

private:
    QPageSize m_paper;
    bool m_landscape;
    QByteArray m_document;
};

/// The sheet of a paper lying upright or on its side, all of it printable.
[[nodiscard]] Sheet sheetOf(const QPageSize& paper, bool landscape);

} // namespace sixtrace
