// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

namespace sixtrace {

/// The printers of the desktop, and its dialog for them. After them comes a printer of the program's own, which makes
/// PDF files and always exists. It is the default when there is no other printer.
class QtPrinters : public PrintDevices {
public:
    [[nodiscard]] static QString pdfDevice();

    [[nodiscard]] QStringList names() const override;
    [[nodiscard]] QString defaultName() const override;
    [[nodiscard]] PrinterProperties initial(const QString& name) const override;
    [[nodiscard]] Result<Sheet> sheet(const PrinterProperties& properties) const override;
    [[nodiscard]] Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) override;
    [[nodiscard]] bool ShowPrinter(PrinterDialog& dialog, quintptr windowHandle) override;
};

} // namespace sixtrace
