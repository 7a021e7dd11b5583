// SPDX-License-Identifier: MIT
#include "output/printing.h"

#include "output/frmprintpreview.h"
#include "output/frmprintsetup.h"
#include "output/printerchoice.h"
#include "platform/desktop/dialogs.h"
#include "platform/desktop/windowtofront.h"
#include "platform/printing/qtprinters.h"

namespace sixtrace {

Printing::Printing(publicM& model, Surroundings surroundings, QWidget& form)
    : QObject(&form)
    , m_model(model)
    , m_surroundings(std::move(surroundings))
    , m_form(form)
    , m_ownDevices(m_surroundings.printers == nullptr ? std::make_unique<QtPrinters>() : nullptr)
    , m_printer(m_surroundings.printers == nullptr ? *m_ownDevices : *m_surroundings.printers)
    , m_composer(m_model, m_settings, m_printer) {
    setDefaultMargins(m_settings);
}

Printing::~Printing() {
    // The windows belong to nobody else: a child would take part in the main window's change of language.
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
    return m_composer.PrintResult(target, zoomPercent, m_surroundings.inputs());
}

void Printing::tell(const RuntimeError& error) {
    m_surroundings.dialogs.message(QString::number(error.code()) + QStringLiteral("\r\n") + error.description,
                                   MessageIcon::Exclamation);
}

void Printing::mnuPageSet_Click() {
    if (m_setup.isNull()) {
        auto* form = new frmPrintSetup(m_model, m_settings, m_previewScale, m_surroundings.dialogs);
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->setModal(false);
        m_setup = form;
        form->move(m_form.frameGeometry().center() - form->rect().center());
    }
    bringToFront(*m_setup);
}

void Printing::showSetupOver(QWidget& owner) {
    // One that stands open beside the windows gives way: there is one page setup.
    delete m_setup.data();
    frmPrintSetup form(m_model, m_settings, m_previewScale, m_surroundings.dialogs);
    m_setup = &form;
    form.showOver(&owner);
}

void Printing::mnuPrintView_Click() {
    m_settings.PreviewOwner = this;
    if (m_preview.isNull()) {
        auto* form =
            new frmPrintPreview(m_model, m_settings, m_previewScale,
                                {m_surroundings.dialogs, m_printer, [this](QWidget& owner) { showSetupOver(owner); }});
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
    const auto chosen = choosePrinter(m_printer, dialog, kPrintFlags, m_form.winId());
    if (!chosen) {
        tell(chosen.error());
        return;
    }
    if (!chosen.value()) {
        return;
    }
    const Outcome printed = PrintResult(m_printer, 100);
    if (!printed) {
        tell(printed.error());
    }
}

void Printing::mnuPrintSet_Click() {
    PrinterDialog dialog;
    dialog.Title = m_surroundings.setupTitle ? m_surroundings.setupTitle() : QString();
    const auto chosen = choosePrinter(m_printer, dialog, kPrintSetFlags, m_form.winId());
    if (!chosen) {
        tell(chosen.error());
    } else if (chosen.value()) {
        tracePrinter(m_printer, dialog);
    }
}

} // namespace sixtrace
