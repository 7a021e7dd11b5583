// SPDX-License-Identifier: MIT
#include "output/printerchoice.h"

#include "platform/desktop/dialogs.h"

namespace sixtrace {

Q_LOGGING_CATEGORY(printLog, "sixtrace.print", QtWarningMsg)

namespace {

QString wordOfOrientation(int orientation) {
    return orientation == 1 ? QStringLiteral("Portrait. ") : QStringLiteral("Landscape. ");
}

QString wordOfColorMode(int colorMode) {
    return colorMode == 1 ? QStringLiteral("Black and White. ") : QStringLiteral("Color. ");
}

QString wordOfDuplex(int duplex) {
    switch (duplex) {
    case 1:
        return QStringLiteral("None. ");
    case 2:
        return QStringLiteral("Horizontal/Long Edge. ");
    case 3:
        return QStringLiteral("Vertical/Short Edge. ");
    default:
        return QStringLiteral("Unknown. ");
    }
}

void chooseByName(Printer& printer, const QString& upperName) {
    const QStringList names = printer.Printers();
    for (const QString& name : names) {
        if (name.toUpper() == upperName) {
            printer.choose(name);
            return;
        }
    }
}

Outcome fillDialog(Printer& printer, PrinterDialog& dialog, int flags) {
    const auto present = printer.properties();
    if (!present) {
        return present.error();
    }
    const PrinterProperties& properties = present.value();
    dialog.PrinterName = properties.DeviceName;
    dialog.DriverName = properties.DriverName;
    dialog.Port = properties.Port;
    dialog.PaperBin = properties.PaperBin;
    dialog.PaperSize = properties.PaperSize;
    dialog.PrintQuality = properties.PrintQuality;
    dialog.Orientation = properties.Orientation;
    // The settings of the run so far.
    dialog.Copies = properties.Copies;
    dialog.ColorMode = properties.ColorMode;
    dialog.Duplex = properties.Duplex;
    dialog.OutputFile = properties.OutputFile;
    dialog.Flags = flags;
    return success();
}

} // namespace

Outcome takePrinter(Printer& printer, const PrinterDialog& dialog) {
    const auto present = printer.properties();
    if (!present) {
        return present.error();
    }
    const QString name = dialog.PrinterName.toUpper();
    if (name != present.value().DeviceName.toUpper()) {
        chooseByName(printer, name);
    }
    const auto chosen = printer.properties();
    if (!chosen) {
        return chosen.error();
    }
    PrinterProperties properties = chosen.value();
    properties.Copies = dialog.Copies;
    properties.Orientation = dialog.Orientation;
    properties.ColorMode = dialog.ColorMode;
    properties.Duplex = dialog.Duplex;
    properties.PaperBin = dialog.PaperBin;
    properties.PaperSize = dialog.PaperSize;
    properties.PrintQuality = dialog.PrintQuality;
    properties.OutputFile = dialog.OutputFile;
    printer.set(properties);
    return success();
}

Outcome choosePrinter(Printer& printer, PrinterDialog& dialog, int flags, quintptr windowHandle) {
    Outcome filled = fillDialog(printer, dialog, flags);
    if (!filled) {
        return filled;
    }
    // From now on a change of the system's default printer does not change the program's printer.
    printer.TrackDefault = false;
    if (!printer.ShowPrinter(dialog, windowHandle)) {
        qCDebug(printLog) << "Cancel Selected";
        return RuntimeError::of(ErrorNumber::CancelSelected);
    }
    return takePrinter(printer, dialog);
}

Result<int> showPrinterForPreview(Printer& printer, int flags, quintptr windowHandle) {
    PrinterDialog dialog;
    const Outcome filled = fillDialog(printer, dialog, flags);
    if (!filled) {
        return filled.error();
    }
    if (!printer.ShowPrinter(dialog, windowHandle)) {
        return RuntimeError::of(ErrorNumber::CancelSelected);
    }
    const int copies = dialog.Copies;
    dialog.Copies = 1;
    // From now on a change of the system's default printer does not change the program's printer.
    printer.TrackDefault = false;
    const Outcome taken = takePrinter(printer, dialog);
    return taken ? Result<int>(copies) : taken.error();
}

void setCopies(Printer& printer, int copies) {
    if (auto present = printer.properties()) {
        PrinterProperties properties = present.value();
        properties.Copies = copies;
        printer.set(properties);
    }
}

void tracePrinter(Printer& printer, const PrinterDialog& dialog) {
    if (!printLog().isDebugEnabled()) {
        return;
    }
    const auto present = printer.properties();
    const auto sheet = printer.sheet();
    if (!present || !sheet) {
        return;
    }
    const PrinterProperties& set = present.value();
    const auto line = [](const QString& text) { qCDebug(printLog).noquote() << text; };
    line(QStringLiteral("Copies = ") + QString::number(set.Copies));
    line(QStringLiteral("Orientation = ") + wordOfOrientation(set.Orientation));
    line(QStringLiteral("ColorMode = ") + wordOfColorMode(set.ColorMode));
    line(wordOfDuplex(set.Duplex));
    line(QStringLiteral("PaperBin = ") + QString::number(set.PaperBin));
    line(QStringLiteral("PaperSize = ") + QString::number(set.PaperSize));
    line(QStringLiteral("Height=") + QString::number(sheet.value().Height));
    line(QStringLiteral("Width=") + QString::number(sheet.value().Width));
    line(QStringLiteral("PrintQuality = ") + QString::number(set.PrintQuality));
    line((dialog.Flags & PrinterDialog::kPrintToFile) != 0 ? QStringLiteral("Print to File Selected")
                                                           : QStringLiteral("Print to File Not Selected"));
    line(QStringLiteral("hDC = ") + QString::number(dialog.hDC));
}

void showPrintError(Dialogs& dialogs, const RuntimeError& error) {
    if (error.number != ErrorNumber::CancelSelected) {
        dialogs.message(QString::number(error.code()) + QStringLiteral("\r\n") + error.description,
                        MessageIcon::Exclamation);
    }
}

} // namespace sixtrace
