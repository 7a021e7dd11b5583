// SPDX-License-Identifier: MIT
#pragma once

#include "output/mdlprinter.h"
#include "output/printresult.h"
#include "platform/printing/printer.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class QWidget;

namespace sixtrace {

class Dialogs;
class frmPrintPreview;
class frmPrintSetup;

/// The printing commands of the main window: page setup, preview, printing and the printer's settings. It owns the
/// program's printer, the settings for printing and the windows of preview and page setup. It composes the pages of
/// both printer and preview. The main window owns it.
class Printing : public QObject, public PreviewOwner {
public:
    /// What it asks the main window for when a command needs it.
    struct FromWindow {
        std::function<PageInputs()> inputs;  ///< rows, ticks, markers and styles
        std::function<QString()> setupTitle; ///< title of the dialog that sets the printer, in the present language
    };

    /// `printers` is null for the machine's own printers.
    Printing(publicM& model, Dialogs& dialogs, PrintDevices* printers, FromWindow window, QWidget& form);
    ~Printing() override;

    void mnuPageSet_Click();
    void mnuPrintView_Click();
    void mnuPrint_Click();
    void mnuPrintSet_Click();

    [[nodiscard]] Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent) override;

    /// What a page would show now, besides the model.
    [[nodiscard]] PageInputs inputs() const { return m_window.inputs(); }
    [[nodiscard]] MdlPrinter& settings() { return m_settings; }
    [[nodiscard]] PreviewScale& previewScale() { return m_previewScale; }
    [[nodiscard]] Printer& printer() { return m_printer; }
    /// The windows; null while they are not loaded.
    [[nodiscard]] frmPrintPreview* preview() const;
    [[nodiscard]] frmPrintSetup* setup() const;

private:
    void showSetupOver(QWidget& owner);

    publicM& m_model;
    Dialogs& m_dialogs;
    FromWindow m_window;
    QWidget& m_form;
    std::unique_ptr<PrintDevices> m_ownDevices;
    Printer m_printer;
    MdlPrinter m_settings;
    PreviewScale m_previewScale;
    PageComposer m_composer;
    QPointer<QWidget> m_preview;
    QPointer<QWidget> m_setup;
};

} // namespace sixtrace
