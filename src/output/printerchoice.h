// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

#include <QLoggingCategory>

namespace sixtrace {

/// What the printer commands tell a developer: silent unless "sixtrace.print" is asked for.
Q_DECLARE_LOGGING_CATEGORY(printLog)

/// Flags of the printer dialog: neither selection nor page numbers, for the command that prints and for the one that
/// only sets the printer.
inline constexpr int kPrintFlags =
    PrinterDialog::kNoSelection | PrinterDialog::kNoPageNumbers | PrinterDialog::kReturnContext;
inline constexpr int kPrintSetFlags = kPrintFlags | PrinterDialog::kPrintSetup;

/// Lets the user choose the printer and its settings for the rest of the run. False when the dialog was cancelled,
/// which leaves the printer as it was, but for TrackDefault, which is False from here on. Fails without any printer.
[[nodiscard]] Result<bool> choosePrinter(Printer& printer, PrinterDialog& dialog, int flags, quintptr windowHandle);

/// Takes device and settings from a dialog that was accepted. A device whose name differs in case only stays; a name
/// that the machine does not know changes nothing.
[[nodiscard]] Outcome takePrinter(Printer& printer, const PrinterDialog& dialog);

/// The preview's printer dialog, whose choice becomes the program's printer. Gives the number of copies, each of which
/// is to be printed as a document of its own: the printer itself makes one. Fails with error 32755 when it was
/// cancelled.
[[nodiscard]] Result<int> showPrinterForPreview(Printer& printer, int flags, quintptr windowHandle);

/// Sets the number of copies that the printer makes of a document.
void setCopies(Printer& printer, int copies);

/// Tells the log what is set after the dialog.
void tracePrinter(Printer& printer, const PrinterDialog& dialog);

} // namespace sixtrace
