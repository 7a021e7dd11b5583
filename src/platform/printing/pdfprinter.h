// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

#include <QPageLayout>
#include <QPageSize>

namespace sixtrace {

/// A printer that makes PDF documents in memory, for programs without a desktop. Each document replaces the one before.
class PdfPrinter : public PrintDevices {
public:
    /// The paper of the printer, and how it lies.
    PdfPrinter(const QPageSize& paper, QPageLayout::Orientation side);

    /// The last finished document; empty before the first.
    [[nodiscard]] const QByteArray& document() const { return m_document; }

    [[nodiscard]] QStringList names() const override { return {defaultName()}; }
    [[nodiscard]] QString defaultName() const override { return QStringLiteral("PDF"); }
    [[nodiscard]] PrinterProperties initial(const QString& name) const override;
    [[nodiscard]] Result<Sheet> sheet(const PrinterProperties& properties) const override;
    [[nodiscard]] Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) override;
    /// There is no dialog, as on a cancelled one.
    [[nodiscard]] bool ShowPrinter(PrinterDialog&, quintptr) override { return false; }

private:
    QPageSize m_paper;
    QPageLayout::Orientation m_side;
    QByteArray m_document;
};

} // namespace sixtrace
