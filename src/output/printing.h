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
/// program's printer, what is set for printing and the two windows, and composes pages for print and preview alike.
/// Owned by the window.
class Printing : public QObject, public PreviewOwner {
public:
    struct Surroundings {
        Dialogs& dialogs;
        /// The printers; empty stands for the machine's own.
        PrintDevices* printers = nullptr;
        /// Rows, ticks, markers and styles of the moment.
        std::function<PageInputs()> inputs;
        /// Title of the dialog that sets the printer, in the language of the moment.
        std::function<QString()> setupTitle = {};
    };

    Printing(publicM& model, Surroundings surroundings, QWidget& form);
    ~Printing() override;

    void mnuPageSet_Click();
    void mnuPrintView_Click();
    void mnuPrint_Click();
    void mnuPrintSet_Click();

    [[nodiscard]] Outcome PrintResult(PageTarget& target, std::int32_t zoomPercent) override;

    /// What a page would show just now, beside the model.
    [[nodiscard]] PageInputs inputs() const { return m_surroundings.inputs(); }
    [[nodiscard]] MdlPrinter& settings() { return m_settings; }
    [[nodiscard]] PreviewScale& previewScale() { return m_previewScale; }
    [[nodiscard]] Printer& printer() { return m_printer; }
    /// The windows while they are loaded, else null.
    [[nodiscard]] frmPrintPreview* preview() const;
    [[nodiscard]] frmPrintSetup* setup() const;

private:
    void showSetupOver(QWidget& owner);
    void tell(const RuntimeError& error);

    publicM& m_model;
    Surroundings m_surroundings;
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
