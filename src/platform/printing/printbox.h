// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/printer.h"

#include <QPrintDialog>

namespace sixtrace {

/// The toolkit's print dialog. It sets some of its controls when it is shown; this class then sets them to the
/// program's values. On a desktop with a dialog of its own these controls do not exist.
class PrintBox : public QPrintDialog {
public:
    enum class Purpose { Print, Setup };

    /// Keeps the settings of sides and colours from `set`, which the dialog loses when it is made.
    PrintBox(QPrinter& printer, QWidget* owner, const PrinterProperties& set, Purpose purpose);

    /// The chosen colour mode: 1 black and white, 2 colour. The dialog does not always hand it to its printer.
    [[nodiscard]] int colorMode() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// Shows the settings of the user. The dialog itself shows those that the device has by default.
    void showSet();
    /// Changes the dialog into one that only sets the printer: without a range of pages and a file name, and with a
    /// button that does not say "Print".
    void makeSetup();

    Purpose m_purpose;
    int m_duplex;
    int m_colorMode;
};

} // namespace sixtrace
