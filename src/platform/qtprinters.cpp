// SPDX-License-Identifier: MIT
#include "platform/qtprinters.h"

#include "platform/wholefile.h"
#include "platform/workshop.h"

#include <QDir>
#include <QFile>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QWidget>

#include <cmath>
#include <optional>

namespace sixtrace {

namespace {

constexpr double kTwipsPerPoint = 20;

QPageLayout::Orientation sideOf(int orientation) {
    return orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait;
}

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

/// Paper sizes that drivers have no number for go by none; the printer's own stays then.
void setPaper(QPrinter& printer, int paperSize) {
    const QPageSize::PageSizeId id = QPageSize::id(paperSize);
    if (id != QPageSize::Custom) {
        printer.setPageSize(QPageSize(id));
    }
}

void apply(QPrinter& printer, const PrinterProperties& properties) {
    // The page reaches to the paper's edges; what lies outside the printable part is the program's to leave empty.
    printer.setFullPage(true);
    if (properties.PrintQuality > 0) {
        printer.setResolution(properties.PrintQuality);
    }
    setPaper(printer, properties.PaperSize);
    printer.setPageOrientation(sideOf(properties.Orientation));
    printer.setCopyCount(properties.Copies);
    printer.setColorMode(properties.ColorMode == 1 ? QPrinter::GrayScale : QPrinter::Color);
    printer.setDuplex(duplexOf(properties.Duplex));
    // Bins are counted from 0 here and from 1 there.
    printer.setPaperSource(static_cast<QPrinter::PaperSource>(properties.PaperBin - 1));
    printer.setDocName(QStringLiteral("Sixtrace"));
    printer.setCreator(QStringLiteral("Sixtrace"));
    if (!properties.OutputFile.isEmpty()) {
        printer.setOutputFileName(properties.OutputFile);
    }
}

/// The printer of that name with its settings; null where the machine has none such.
std::unique_ptr<QPrinter> printerFor(const PrinterProperties& properties) {
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

/// A document for a printer, or for a file, which gets it whole or not at all.
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

    /// Whether it has a place to go to.
    [[nodiscard]] bool isReady() const { return !m_folder || m_folder->isValid(); }

    QPagedPaintDevice& device() override { return *m_printer; }
    Outcome finish() override {
        if (m_printer->printerState() == QPrinter::Error) {
            return RuntimeError::of(ErrorNumber::Printer);
        }
        if (m_target.isEmpty()) {
            return success();
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
    QString m_target; ///< empty where it goes to the printer
};

} // namespace

QStringList QtPrinters::names() const {
    return QPrinterInfo::availablePrinterNames();
}

QString QtPrinters::defaultName() const {
    return QPrinterInfo::defaultPrinterName();
}

PrinterProperties QtPrinters::initial(const QString& name) const {
    PrinterProperties properties;
    properties.DeviceName = name;
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
    properties.Orientation = printer.pageLayout().orientation() == QPageLayout::Landscape ? 2 : 1;
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
    const QMarginsF edge = layout.minimumMargins();
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
    auto printer = printerFor(properties);
    if (printer == nullptr) {
        // The printer has gone since it was chosen: the dialog is the way to another.
        printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    QPrintDialog box(printer.get(), QWidget::find(windowHandle));
    box.setOption(QAbstractPrintDialog::PrintSelection, (dialog.Flags & PrinterDialog::kNoSelection) == 0);
    box.setOption(QAbstractPrintDialog::PrintPageRange, (dialog.Flags & PrinterDialog::kNoPageNumbers) == 0);
    box.setOption(QAbstractPrintDialog::PrintToFile, (dialog.Flags & PrinterDialog::kDisablePrintToFile) == 0);
    if (box.exec() != QDialog::Accepted) {
        return false;
    }
    const bool toFile = !printer->outputFileName().isEmpty();
    dialog.Flags = toFile ? dialog.Flags | PrinterDialog::kPrintToFile : dialog.Flags & ~PrinterDialog::kPrintToFile;
    dialog.OutputFile = printer->outputFileName();
    dialog.PrinterName = toFile ? dialog.PrinterName : printer->printerName();
    dialog.Copies = printer->copyCount();
    dialog.Orientation = printer->pageLayout().orientation() == QPageLayout::Landscape ? 2 : 1;
    dialog.ColorMode = printer->colorMode() == QPrinter::Color ? 2 : 1;
    dialog.Duplex = numberOf(printer->duplex());
    dialog.PaperBin = static_cast<int>(printer->paperSource()) + 1;
    const int paper = printer->pageLayout().pageSize().windowsId();
    dialog.PaperSize = paper;
    dialog.PrintQuality = printer->resolution();
    return true;
}

} // namespace sixtrace
