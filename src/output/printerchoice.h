// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

#include <QLoggingCategory>

namespace sixtrace {

class Dialogs;

/// What the printer commands write for developers. It is off unless the logging rules turn "sixtrace.print" on.
Q_DECLARE_LOGGING_CATEGORY(printLog)

/// Flags of the printer dialog, for the command that prints and for the one that only sets the printer. Neither offers
/// to print a selection or a range of pages.
inline constexpr int kPrintFlags =
    PrinterDialog::kNoSelection | PrinterDialog::kNoPageNumbers | PrinterDialog::kReturnContext;
inline constexpr int kPrintSetFlags = kPrintFlags | PrinterDialog::kPrintSetup;

/// Lets the user choose the printer and its settings for the rest of the run. A cancelled dialog is error 32755. It
/// leaves the printer as it was, except that TrackDefault is False from then on. Error 482 without any printer.
[[nodiscard]] Outcome choosePrinter(Printer& printer, PrinterDialog& dialog, int flags, quintptr windowHandle);

/// Takes the device and the settings from an accepted dialog. The device stays when its name differs in case only, and
/// when the machine has no printer of the new name.
[[nodiscard]] Outcome takePrinter(Printer& printer, const PrinterDialog& dialog);

/// The preview's printer dialog, whose choice becomes the program's printer. The result is the number of copies. Each
/// copy has to be printed as a document, since the printer is set to one. A cancelled dialog is error 32755.
[[nodiscard]] Result<int> showPrinterForPreview(Printer& printer, int flags, quintptr windowHandle);

/// Sets the number of copies that the printer makes of a document.
void setCopies(Printer& printer, int copies);

/// Writes the settings after the dialog to the log.
void tracePrinter(Printer& printer, const PrinterDialog& dialog);

/// Shows the message box of a printing command that has failed. A cancelled dialog needs none.
void showPrintError(Dialogs& dialogs, const RuntimeError& error);

} // namespace sixtrace
