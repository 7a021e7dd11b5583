// SPDX-License-Identifier: MIT
#include "output/printing.h"

#include "output/frmprintpreview.h"
#include "output/frmprintsetup.h"
#include "output/printerchoice.h"
#include "platform/desktop/dialogs.h"
#include "platform/desktop/windowtofront.h"
#include "platform/printing/qtprinters.h"

namespace sixtrace {

Printing::Printing(publicM& model, Dialogs& dialogs, PrintDevices* printers, FromWindow window, QWidget& form)
    : QObject(&form)
    , m_model(model)
    , m_dialogs(dialogs)
    , m_window(std::move(window))
    , m_form(form)
    , m_ownDevices(printers == nullptr ? std::make_unique<QtPrinters>() : nullptr)
    , m_printer(printers == nullptr ? *m_ownDevices : *printers)
    , m_composer(m_model, m_settings, m_printer) {
    setDefaultMargins(m_settings);
}

Printing::~Printing() {
    // The windows have no parent: a child would take part in the main window's change of language.
    delete m_setup.data();
    delete m_preview.data();
}

frmPrintPreview* Printing::preview() const {
    return static_cast<frmPrintPreview*>(m_preview.data());
}
frmPrintSetup* Printing::setup() const {
    return static_cast<frmPrintSetup*>(m_setup.data());
}

Outcome Printing::PrintResult(PageTarget& target, std::int32_t zoomPercent) {
    return m_composer.PrintResult(target, zoomPercent, m_window.inputs());
}

void Printing::mnuPageSet_Click() {
    if (m_setup.isNull()) {
        auto* form = new frmPrintSetup(m_model, m_settings, m_previewScale, m_dialogs);
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->setModal(false);
        m_setup = form;
        form->move(m_form.frameGeometry().center() - form->rect().center());
    }
    bringToFront(*m_setup);
}

void Printing::showSetupOver(QWidget& owner) {
    // There is only one page setup: one that is open without an owner is closed.
    delete m_setup.data();
    frmPrintSetup form(m_model, m_settings, m_previewScale, m_dialogs);
    m_setup = &form;
    form.showOver(&owner);
}

void Printing::mnuPrintView_Click() {
    m_settings.PreviewOwner = this;
    if (m_preview.isNull()) {
        auto* form = new frmPrintPreview(m_model, m_settings, m_previewScale, m_dialogs, m_printer,
                                         [this](QWidget& owner) { showSetupOver(owner); });
        form->setAttribute(Qt::WA_DeleteOnClose);
        m_preview = form;
        form->move(m_form.frameGeometry().center() - form->rect().center());
    } else {
        preview()->showPresent();
    }
    bringToFront(*m_preview);
}

void Printing::mnuPrint_Click() {
    PrinterDialog dialog;
    Outcome done = choosePrinter(m_printer, dialog, kPrintFlags, m_form.winId());
    if (done) {
        done = PrintResult(m_printer, 100);
    }
    if (!done) {
        showPrintError(m_dialogs, done.error());
    }
}

void Printing::mnuPrintSet_Click() {
    PrinterDialog dialog;
    dialog.Title = m_window.setupTitle();
    const Outcome chosen = choosePrinter(m_printer, dialog, kPrintSetFlags, m_form.winId());
    if (chosen) {
        tracePrinter(m_printer, dialog);
    } else {
        showPrintError(m_dialogs, chosen.error());
    }
}

} // namespace sixtrace
