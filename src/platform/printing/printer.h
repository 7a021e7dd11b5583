// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/pagetarget.h"
#include "platform/text/runtimeerror.h"

#include <QPageLayout>
#include <QStringList>

#include <memory>

class QPagedPaintDevice;
class QPainter;

namespace sixtrace {

/// The settings of a printer. The numbers are those of printer drivers: paper 9 is A4, and bin 7 is the automatic
/// choice.
struct PrinterProperties {
    QString DeviceName;
    QString DriverName;
    QString Port;
    int PaperBin = 7;
    int PaperSize = 9;
    int PrintQuality = 600; ///< dots per inch
    int Orientation = 1;    ///< 1 upright, 2 on its side
    int Copies = 1;
    int ColorMode = 2;  ///< 1 black and white, 2 colour
    int Duplex = 1;     ///< 1 one side, 2 turned over the long edge, 3 over the short one
    QString OutputFile; ///< the file that gets the page instead of the device; empty for none

    [[nodiscard]] QPageLayout::Orientation side() const {
        return Orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait;
    }
    /// The number for Orientation.
    [[nodiscard]] static int numberOf(QPageLayout::Orientation side) { return side == QPageLayout::Landscape ? 2 : 1; }

    friend bool operator==(const PrinterProperties&, const PrinterProperties&) = default;
};

/// A sheet and the part of it that can be printed, in twips.
struct Sheet {
    int Width = 0;
    int Height = 0;
    int ScaleWidth = 0;
    int ScaleHeight = 0;
    double left = 0; ///< of the printable part
    double top = 0;
};

/// The values of the printer dialog: set before it is shown, and changed by the user.
struct PrinterDialog {
    static constexpr int kNoSelection = 0x4;
    static constexpr int kNoPageNumbers = 0x8;
    static constexpr int kPrintToFile = 0x20;
    static constexpr int kPrintSetup = 0x40;
    static constexpr int kReturnContext = 0x100;
    static constexpr int kDisablePrintToFile = 0x80000;

    QString Title; ///< of a dialog that only sets the printer; empty for the toolkit's title
    QString PrinterName;
    QString DriverName;
    QString Port;
    int PaperBin = 0;
    int PaperSize = 0;
    int PrintQuality = 0;
    int Orientation = 0;
    int Flags = 0;
    int Copies = 1;
    int ColorMode = 2;
    int Duplex = 1;
    QString OutputFile;
    quintptr hDC = 0; ///< always 0, since there are no device contexts
};

/// A document for a device. It is dropped unless it is finished.
class PrintJob {
public:
    PrintJob() = default;
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;
    virtual ~PrintJob() = default;

    [[nodiscard]] virtual QPagedPaintDevice& device() = 0;
    /// Hands the document to the device. Its painter has to be closed before.
    [[nodiscard]] virtual Outcome finish() = 0;
    /// Drops the document. Its painter has to be closed before.
    virtual void drop() = 0;
};

/// The printers of the machine. A printer that makes a file, and the scripted printers of tests, have the same
/// interface.
class PrintDevices {
public:
    PrintDevices() = default;
    PrintDevices(const PrintDevices&) = delete;
    PrintDevices& operator=(const PrintDevices&) = delete;
    virtual ~PrintDevices() = default;

    /// The names of all printers, and that of the default one, which is empty when there is none.
    [[nodiscard]] virtual QStringList names() const = 0;
    [[nodiscard]] virtual QString defaultName() const = 0;
    /// The settings of a device when it is chosen.
    [[nodiscard]] virtual PrinterProperties initial(const QString& name) const = 0;
    [[nodiscard]] virtual Result<Sheet> sheet(const PrinterProperties& properties) const = 0;
    [[nodiscard]] virtual Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) = 0;
    /// The printer dialog over a window; false when it was cancelled.
    [[nodiscard]] virtual bool ShowPrinter(PrinterDialog& dialog, quintptr windowHandle) = 0;
};

/// The program's printer: a device of the machine with the settings for this run of the program, and the page that is
/// being drawn for it. A document begins with the first drawing operation. There is one object, and the devices outlive
/// it.
class Printer : public PageTarget {
public:
    explicit Printer(PrintDevices& devices);
    ~Printer() override;

    /// Whether a change of the system's default printer moves this one.
    bool TrackDefault = true;

    /// Names of the machine's printers.
    [[nodiscard]] QStringList Printers() const { return m_devices.names(); }
    /// The device and its settings; error 482 without any printer.
    [[nodiscard]] Result<PrinterProperties> properties();
    /// The sheet for the present settings; error 482 without any printer.
    [[nodiscard]] Result<Sheet> sheet();
    /// Makes another device the printer.
    void choose(const QString& deviceName);
    /// Changes settings; the device stays.
    void set(const PrinterProperties& properties) { m_properties = properties; }
    [[nodiscard]] bool ShowPrinter(PrinterDialog& dialog, quintptr windowHandle) {
        return m_devices.ShowPrinter(dialog, windowHandle);
    }

    /// What is drawn next begins a new page.
    void NewPage();
    /// Closes the document and hands it to the device.
    [[nodiscard]] Outcome EndDoc();
    /// Drops the open document.
    void KillDoc();

    /// Dots per inch. A driver may have a negative number for its quality; then it is the default.
    [[nodiscard]] double resolution() const override {
        return m_properties.PrintQuality > 0 ? m_properties.PrintQuality : PrinterProperties{}.PrintQuality;
    }

protected:
    void drawLine(double x1, double y1, double x2, double y2) override;
    void drawText(double left, double baseline, const QString& text, const QFont& font) override;
    void drawPicture(const QImage& picture, const QRectF& place) override;

private:
    /// The painter of the open document, which is begun if there is none; null after an error, which EndDoc() returns.
    [[nodiscard]] QPainter* painter();
    [[nodiscard]] Outcome beginDocument();
    [[nodiscard]] Outcome beginPainter(const Sheet& sheet);
    void close();

    PrintDevices& m_devices;
    PrinterProperties m_properties;
    std::unique_ptr<PrintJob> m_job;
    std::unique_ptr<QPainter> m_painter;
    bool m_pageFull = false; ///< NewPage was called and nothing has been drawn since
    Outcome m_state = success();
};

} // namespace sixtrace
