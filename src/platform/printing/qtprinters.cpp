// SPDX-License-Identifier: MIT
#include "platform/printing/qtprinters.h"

#include "platform/files/wholefile.h"
#include "platform/files/workshop.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QUuid>
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

/// Whether the print server has refused the last document of this thread. The toolkit does not tell; the server's own
/// library, where it is in use, remembers how the last request went.
bool serverRefused() {
    constexpr int kFirstError = 0x0400; // of the protocol's statuses
    static QLibrary library(QStringLiteral("cups"), 2);
    static const auto lastError = reinterpret_cast<int (*)()>(library.resolve("cupsLastError"));
    return lastError != nullptr && lastError() >= kFirstError;
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
    QString m_target; ///< empty where it goes to the printer
};

/// What a printer cannot reach at the edges of its paper, in points, as the paper lies. Drivers tell it for the
/// upright sheet whichever way the paper lies; lying, the sheet has its upper edge at the left.
QMarginsF unreachable(const QPageLayout& layout) {
    const QMarginsF upright = layout.minimumMargins();
    if (layout.orientation() == QPageLayout::Portrait) {
        return upright;
    }
    return {upright.bottom(), upright.left(), upright.top(), upright.right()};
}

/// The toolkit's print dialog, which fills its parts when it shows; what it has of its own mind is put right then.
/// Where the desktop brings a dialog of its own, none of these parts is there.
class PrintBox : public QPrintDialog {
public:
    /// Sides and colours as they are set; the dialog forgets them as it is made.
    PrintBox(QPrinter& printer, QWidget* owner, const PrinterProperties& set, bool isSetup)
        : QPrintDialog(&printer, owner)
        , m_isSetup(isSetup)
        , m_duplex(set.Duplex)
        , m_colorMode(set.ColorMode) {}

    /// 1 black and white, 2 colour, as chosen; the printer that the dialog has filled does not always know.
    [[nodiscard]] int colorMode() const {
        const auto* grey = findChild<QRadioButton*>(QStringLiteral("grayscale"));
        const bool isGrey = grey != nullptr ? grey->isChecked() : printer()->colorMode() == QPrinter::GrayScale;
        return isGrey ? 1 : 2;
    }

protected:
    void showEvent(QShowEvent* event) override {
        QPrintDialog::showEvent(event);
        if (event->spontaneous()) {
            return;
        }
        if (auto* list = findChild<QComboBox*>(QStringLiteral("printers")); list != nullptr && list->count() > 0) {
            list->setItemText(list->count() - 1, QtPrinters::pdfDevice());
        }
        showSet();
        if (m_isSetup) {
            makeSetup();
        }
    }

private:
    /// It would show how the device stands of itself, not how the user has set it.
    void showSet() {
        const char* const sides = m_duplex == 2 ? "duplexLong" : m_duplex == 3 ? "duplexShort" : "noDuplex";
        const char* const colours = m_colorMode == 1 ? "grayscale" : "color";
        for (const char* name : {sides, colours}) {
            auto* choice = findChild<QRadioButton*>(QLatin1String(name));
            if (choice != nullptr && choice->isEnabled()) {
                choice->click();
            }
        }
    }
    /// There is nothing to print: no range of pages, no file to name, and no button that says so.
    void makeSetup() {
        for (const char* name : {"gbPrintRange", "lOutput", "filename", "fileBrowser"}) {
            if (auto* part = findChild<QWidget*>(QLatin1String(name))) {
                part->hide();
            }
        }
        if (auto* file = findChild<QLineEdit*>(QStringLiteral("filename"))) {
            // The dialog asks before a file is overwritten, also where none is written.
            file->setText(QDir::temp().filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + u".pdf"));
        }
        const auto* strip = findChild<QDialogButtonBox*>();
        if (strip == nullptr) {
            return;
        }
        const QDialogButtonBox own(QDialogButtonBox::Ok);
        for (QAbstractButton* button : strip->buttons()) {
            if (strip->buttonRole(button) == QDialogButtonBox::AcceptRole) {
                button->setText(own.button(QDialogButtonBox::Ok)->text());
            } else if (strip->buttonRole(button) == QDialogButtonBox::ResetRole) {
                button->click(); // shows copies, sides and colours, which are what this dialog is for
            }
        }
    }

    bool m_isSetup;
    int m_duplex;
    int m_colorMode;
};

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
    // A document has no edges that a device could not reach.
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
        // The printer has gone since it was chosen: the dialog is the way to another.
        printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    }
    const bool isSetup = (dialog.Flags & PrinterDialog::kPrintSetup) != 0;
    PrintBox box(*printer, QWidget::find(windowHandle), properties, isSetup);
    if (isSetup && !dialog.Title.isEmpty()) {
        box.setWindowTitle(dialog.Title);
    }
    box.setOption(QAbstractPrintDialog::PrintSelection, (dialog.Flags & PrinterDialog::kNoSelection) == 0);
    box.setOption(QAbstractPrintDialog::PrintPageRange, (dialog.Flags & PrinterDialog::kNoPageNumbers) == 0);
    // The toolkit's entry for a file is the program's own PDF device, one of the machine's like any other: it is not
    // the mark "print to file" of the old dialogs, which the flags may forbid.
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
    dialog.Orientation = printer->pageLayout().orientation() == QPageLayout::Landscape ? 2 : 1;
    dialog.ColorMode = box.colorMode();
    dialog.Duplex = numberOf(printer->duplex());
    dialog.PaperBin = static_cast<int>(printer->paperSource()) + 1;
    const int paper = printer->pageLayout().pageSize().windowsId();
    dialog.PaperSize = paper;
    dialog.PrintQuality = printer->resolution();
    return true;
}

} // namespace sixtrace
