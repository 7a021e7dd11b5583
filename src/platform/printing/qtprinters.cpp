// SPDX-License-Identifier: MIT
#include "platform/printing/qtprinters.h"

#include "platform/files/wholefile.h"
#include "platform/files/workshop.h"
#include "platform/printing/printbox.h"

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QPrinter>
#include <QPrinterInfo>
#include <QWidget>

#include <cmath>
#include <optional>

namespace sixtrace {

namespace {

QPrinter::DuplexMode duplexOf(int duplex) {
    if (duplex == 2) {
        return QPrinter::DuplexLongSide;
    }
    return duplex == 3 ? QPrinter::DuplexShortSide : QPrinter::DuplexNone;
}

int numberOf(QPrinter::DuplexMode duplex) {
    if (duplex == QPrinter::DuplexLongSide) {
        return 2;
    }
    return duplex == QPrinter::DuplexShortSide ? 3 : 1;
}

/// Sets the paper by the number that drivers use for it. For any other number the printer keeps its paper.
void setPaper(QPrinter& printer, int paperSize) {
    const QPageSize::PageSizeId id = QPageSize::id(paperSize);
    if (id != QPageSize::Custom) {
        printer.setPageSize(QPageSize(id));
    }
}

void apply(QPrinter& printer, const PrinterProperties& properties) {
    // Coordinates count from the paper's edges; the program keeps the part that cannot be printed empty.
    printer.setFullPage(true);
    if (properties.PrintQuality > 0) {
        printer.setResolution(properties.PrintQuality);
    }
    setPaper(printer, properties.PaperSize);
    printer.setPageOrientation(properties.side());
    printer.setCopyCount(properties.Copies);
    printer.setColorMode(properties.ColorMode == 1 ? QPrinter::GrayScale : QPrinter::Color);
    printer.setDuplex(duplexOf(properties.Duplex));
    // The toolkit counts bins from 0, drivers count them from 1.
    printer.setPaperSource(static_cast<QPrinter::PaperSource>(properties.PaperBin - 1));
    printer.setDocName(QStringLiteral("Sixtrace"));
    printer.setCreator(QStringLiteral("Sixtrace"));
    if (!properties.OutputFile.isEmpty()) {
        printer.setOutputFileName(properties.OutputFile);
    }
}

/// The printer of that name with these settings; null when the machine has no such printer.
std::unique_ptr<QPrinter> printerFor(const PrinterProperties& properties) {
    if (properties.DeviceName == QtPrinters::pdfDevice()) {
        auto pdf = std::make_unique<QPrinter>(QPrinter::HighResolution);
        pdf->setOutputFormat(QPrinter::PdfFormat);
        apply(*pdf, properties);
        return pdf;
    }
    const QPrinterInfo info = QPrinterInfo::printerInfo(properties.DeviceName);
    if (info.isNull()) {
        return nullptr;
    }
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    apply(*printer, properties);
    return printer;
}

/// The folders that pages for a file are made in.
WorkshopKind writingPages() {
    return {QStringLiteral("sixtrace-page"), QRegularExpression(QStringLiteral("page\\.pdf"))};
}

/// Whether the print server has refused the last document of this thread. The toolkit does not report that, but the
/// server's own library, when it is in use, keeps the status of the last request.
bool serverRefused() {
    constexpr int kFirstError = 0x0400; // statuses of the protocol from here on are errors
    static QLibrary library(QStringLiteral("cups"), 2);
    static const auto lastError = reinterpret_cast<int (*)()>(library.resolve("cupsLastError"));
    return lastError != nullptr && lastError() >= kFirstError;
}

/// A document for a printer, or for a file, which appears whole or not at all.
class QtJob final : public PrintJob {
public:
    explicit QtJob(std::unique_ptr<QPrinter> printer)
        : m_printer(std::move(printer))
        , m_target(m_printer->outputFileName()) {
        if (!m_target.isEmpty()) {
            m_folder.emplace(QDir::tempPath(), writingPages());
            m_printer->setOutputFileName(m_folder->filePath(QStringLiteral("page.pdf")));
        }
    }

    /// Whether the folder could be made that a document for a file needs.
    [[nodiscard]] bool isReady() const { return !m_folder || m_folder->isValid(); }

    QPagedPaintDevice& device() override { return *m_printer; }
    Outcome finish() override {
        if (m_printer->printerState() == QPrinter::Error) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        if (m_target.isEmpty()) {
            return serverRefused() ? Outcome(RuntimeError::of(ErrorNumber::Printer)) : success();
        }
        QFile document(m_printer->outputFileName());
        if (!document.open(QIODevice::ReadOnly)) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        return writeWhole(m_target, document.readAll());
    }
    void drop() override { m_printer->abort(); }

private:
    std::optional<Workshop> m_folder;
    std::unique_ptr<QPrinter> m_printer;
    QString m_target; ///< empty for a document for the printer
};

/// The part at each edge of the paper that the printer cannot reach, in points, for the paper as it lies. Drivers give
/// it for the upright sheet in any case. The upper edge of that sheet is at the left when the sheet lies on its side.
QMarginsF unreachable(const QPageLayout& layout) {
    const QMarginsF upright = layout.minimumMargins();
    if (layout.orientation() == QPageLayout::Portrait) {
        return upright;
    }
    return {upright.bottom(), upright.left(), upright.top(), upright.right()};
}

} // namespace

QString QtPrinters::pdfDevice() {
    return QStringLiteral("Sixtrace PDF");
}

QStringList QtPrinters::names() const {
    return QPrinterInfo::availablePrinterNames() + QStringList{pdfDevice()};
}

QString QtPrinters::defaultName() const {
    const QString standard = QPrinterInfo::defaultPrinterName();
    return standard.isEmpty() && QPrinterInfo::availablePrinterNames().isEmpty() ? pdfDevice() : standard;
}

PrinterProperties QtPrinters::initial(const QString& name) const {
    PrinterProperties properties;
    properties.DeviceName = name;
    if (name == pdfDevice()) {
        properties.DriverName = name;
        return properties;
    }
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    if (info.isNull()) {
        return properties;
    }
    const QPrinter printer(info, QPrinter::HighResolution);
    properties.DriverName = info.makeAndModel();
    properties.Port = info.location();
    const int paper = printer.pageLayout().pageSize().windowsId();
    properties.PaperSize = paper;
    properties.PrintQuality = printer.resolution();
    properties.Orientation = PrinterProperties::numberOf(printer.pageLayout().orientation());
    properties.ColorMode = printer.colorMode() == QPrinter::Color ? 2 : 1;
    properties.Duplex = numberOf(printer.duplex());
    return properties;
}

Result<Sheet> QtPrinters::sheet(const PrinterProperties& properties) const {
    const auto printer = printerFor(properties);
    if (printer == nullptr) {
        return RuntimeError::of(ErrorNumber::Printer);
    }
    QPageLayout layout = printer->pageLayout();
    layout.setUnits(QPageLayout::Point);
    const auto twips = [](double points) { return static_cast<int>(std::lround(points * kTwipsPerPoint)); };
    const QSizeF paper = layout.fullRect(QPageLayout::Point).size();
    // A file has no part that a device cannot reach.
    const bool isDocument = properties.DeviceName == pdfDevice();
    const QMarginsF edge = isDocument ? QMarginsF() : unreachable(layout);
    Sheet sheet;
    sheet.Width = twips(paper.width());
    sheet.Height = twips(paper.height());
    sheet.ScaleWidth = twips(paper.width() - edge.left() - edge.right());
    sheet.ScaleHeight = twips(paper.height() - edge.top() - edge.bottom());
    sheet.left = edge.left() * kTwipsPerPoint;
    sheet.top = edge.top() * kTwipsPerPoint;
    return sheet;
}

Result<std::unique_ptr<PrintJob>> QtPrinters::begin(const PrinterProperties& properties) {
    if (properties.DeviceName == pdfDevice() && properties.OutputFile.isEmpty()) {
        return RuntimeError::of(ErrorNumber::BadFileNumber);
    }
    auto printer = printerFor(properties);
    if (printer == nullptr) {
        return RuntimeError::of(ErrorNumber::Printer);
    }
    auto job = std::make_unique<QtJob>(std::move(printer));
    if (!job->isReady()) {
        return RuntimeError::of(ErrorNumber::Printer);
    }
    return std::unique_ptr<PrintJob>(std::move(job));
}

bool QtPrinters::ShowPrinter(PrinterDialog& dialog, quintptr windowHandle) {
    PrinterProperties properties;
    properties.DeviceName = dialog.PrinterName;
    properties.PaperBin = dialog.PaperBin;
    properties.PaperSize = dialog.PaperSize;
    properties.PrintQuality = dialog.PrintQuality;
    properties.Orientation = dialog.Orientation;
    properties.Copies = dialog.Copies;
    properties.ColorMode = dialog.ColorMode;
    properties.Duplex = dialog.Duplex;
    properties.OutputFile = dialog.OutputFile;
    auto printer = printerFor(properties);
    if (printer == nullptr) {
        // The printer has gone since it was chosen. The user can choose another one in the dialog.
        printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    const bool isSetup = (dialog.Flags & PrinterDialog::kPrintSetup) != 0;
    PrintBox box(*printer, QWidget::find(windowHandle), properties,
                 isSetup ? PrintBox::Purpose::Setup : PrintBox::Purpose::Print);
    if (isSetup && !dialog.Title.isEmpty()) {
        box.setWindowTitle(dialog.Title);
    }
    box.setOption(QAbstractPrintDialog::PrintSelection, (dialog.Flags & PrinterDialog::kNoSelection) == 0);
    box.setOption(QAbstractPrintDialog::PrintPageRange, (dialog.Flags & PrinterDialog::kNoPageNumbers) == 0);
    // The dialog needs its entry for a file, as that is the program's own PDF device. It is not the box "print to
    // file", which the flags may forbid.
    box.setOption(QAbstractPrintDialog::PrintToFile, true);
    if (box.exec() != QDialog::Accepted) {
        return false;
    }
    const bool isPdf = printer->outputFormat() == QPrinter::PdfFormat;
    dialog.Flags = isPdf ? dialog.Flags | PrinterDialog::kPrintToFile : dialog.Flags & ~PrinterDialog::kPrintToFile;
    if (!isPdf) {
        dialog.OutputFile.clear();
    } else if (!isSetup) {
        dialog.OutputFile = printer->outputFileName();
    }
    dialog.PrinterName = isPdf ? pdfDevice() : printer->printerName();
    dialog.Copies = printer->copyCount();
    dialog.Orientation = PrinterProperties::numberOf(printer->pageLayout().orientation());
    dialog.ColorMode = box.colorMode();
    dialog.Duplex = numberOf(printer->duplex());
    dialog.PaperBin = static_cast<int>(printer->paperSource()) + 1;
    const int paper = printer->pageLayout().pageSize().windowsId();
    dialog.PaperSize = paper;
    dialog.PrintQuality = printer->resolution();
    return true;
}

} // namespace sixtrace
