// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/pagetarget.h"
#include "platform/text/runtimeerror.h"

#include <QStringList>

#include <memory>

class QPagedPaintDevice;
class QPainter;

namespace sixtrace {

/// What is set on a printer. The numbers are those of printer drivers: paper 9 is A4, bin 7 chooses by itself.
struct PrinterProperties {
    QString DeviceName;
    QString DriverName;
    QString Port;
    int PaperBin = 7;
    int PaperSize = 9;
    int PrintQuality = 600; ///< dots per inch
    int Orientation = 1;    ///< 1 upright, 2 on its side
    int Copies = 1;
    int ColorMode = 2; ///< 1 black and white, 2 colour
    int Duplex = 1;    ///< 1 one side, 2 turned over the long edge, 3 over the short one
    /// Where the page goes instead of the device, when the user has asked for a file.
    QString OutputFile;

    friend bool operator==(const PrinterProperties&, const PrinterProperties&) = default;
};

/// A sheet and the part of it that the device reaches, in twips.
struct Sheet {
    int Width = 0;
    int Height = 0;
    int ScaleWidth = 0;
    int ScaleHeight = 0;
    double left = 0; ///< of the printable part
    double top = 0;
};

/// What goes into the printer dialog, and what comes back.
struct PrinterDialog {
    static constexpr int kNoSelection = 0x4;
    static constexpr int kNoPageNumbers = 0x8;
    static constexpr int kPrintToFile = 0x20;
    static constexpr int kPrintSetup = 0x40;
    static constexpr int kReturnContext = 0x100;
    static constexpr int kDisablePrintToFile = 0x80000;

    QString Title; ///< of a dialog that only sets the printer; empty for the toolkit's own
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
    quintptr hDC = 0; ///< nothing here has device contexts
};

/// A document on its way to a device. Dropped unless finished.
class PrintJob {
public:
    PrintJob() = default;
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;
    virtual ~PrintJob() = default;

    [[nodiscard]] virtual QPagedPaintDevice& device() = 0;
    /// Hands the document over; its painter has ended.
    [[nodiscard]] virtual Outcome finish() = 0;
    /// Throws the document away; its painter has ended.
    virtual void drop() = 0;
};

/// The printers of the machine, behind one interface, so that a file and a test's script stand in for them.
class PrintDevices {
public:
    PrintDevices() = default;
    PrintDevices(const PrintDevices&) = delete;
    PrintDevices& operator=(const PrintDevices&) = delete;
    virtual ~PrintDevices() = default;

    /// Names of all printers, the default one empty where there is none.
    [[nodiscard]] virtual QStringList names() const = 0;
    [[nodiscard]] virtual QString defaultName() const = 0;
    /// How the named device stands when it is chosen.
    [[nodiscard]] virtual PrinterProperties initial(const QString& name) const = 0;
    [[nodiscard]] virtual Result<Sheet> sheet(const PrinterProperties& properties) const = 0;
    [[nodiscard]] virtual Result<std::unique_ptr<PrintJob>> begin(const PrinterProperties& properties) = 0;
    /// The printer dialog over a window; false when it was cancelled.
    [[nodiscard]] virtual bool ShowPrinter(PrinterDialog& dialog, quintptr windowHandle) = 0;
};

/// The program's printer: a device of the machine with the settings chosen for this run, and the page that is being
/// drawn for it. A document begins with the first thing drawn. Made once; the devices outlive it.
class Printer : public PageTarget {
public:
    explicit Printer(PrintDevices& devices);
    ~Printer() override;

    /// Whether a change of the system's default printer moves this one.
    bool TrackDefault = true;

    /// Names of the machine's printers.
    [[nodiscard]] QStringList Printers() const { return m_devices.names(); }
    /// Device and settings; error 482 without any printer.
    [[nodiscard]] Result<PrinterProperties> properties();
    /// The sheet by the present settings; error 482 without any printer.
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
    /// Throws the open document away.
    void KillDoc();

    /// A driver may name its quality by a negative number instead of dots per inch.
    [[nodiscard]] double resolution() const override {
        return m_properties.PrintQuality > 0 ? m_properties.PrintQuality : PrinterProperties{}.PrintQuality;
    }

protected:
    void drawLine(double x1, double y1, double x2, double y2) override;
    void drawText(double left, double baseline, const QString& text, const QFont& font) override;
    void drawPicture(const QImage& picture, const QRectF& place) override;

private:
    /// The painter of the open document, which is begun if needed; null after an error, which EndDoc tells.
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
