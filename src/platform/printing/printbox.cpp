// SPDX-License-Identifier: MIT
#include "platform/printing/printbox.h"

#include "platform/printing/qtprinters.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>
#include <QUuid>

namespace sixtrace {

PrintBox::PrintBox(QPrinter& printer, QWidget* owner, const PrinterProperties& set, Purpose purpose)
    : QPrintDialog(&printer, owner)
    , m_purpose(purpose)
    , m_duplex(set.Duplex)
    , m_colorMode(set.ColorMode) {}

int PrintBox::colorMode() const {
    const auto* grey = findChild<QRadioButton*>(QStringLiteral("grayscale"));
    const bool isGrey = grey != nullptr ? grey->isChecked() : printer()->colorMode() == QPrinter::GrayScale;
    return isGrey ? 1 : 2;
}

void PrintBox::showEvent(QShowEvent* event) {
    QPrintDialog::showEvent(event);
    if (event->spontaneous()) {
        return;
    }
    if (auto* list = findChild<QComboBox*>(QStringLiteral("printers")); list != nullptr && list->count() > 0) {
        list->setItemText(list->count() - 1, QtPrinters::pdfDevice());
    }
    showSet();
    if (m_purpose == Purpose::Setup) {
        makeSetup();
    }
}

void PrintBox::showSet() {
    const char* const sides = m_duplex == 2 ? "duplexLong" : m_duplex == 3 ? "duplexShort" : "noDuplex";
    const char* const colours = m_colorMode == 1 ? "grayscale" : "color";
    for (const char* name : {sides, colours}) {
        auto* choice = findChild<QRadioButton*>(QLatin1String(name));
        if (choice != nullptr && choice->isEnabled()) {
            choice->click();
        }
    }
}

void PrintBox::makeSetup() {
    for (const char* name : {"gbPrintRange", "lOutput", "filename", "fileBrowser"}) {
        if (auto* part = findChild<QWidget*>(QLatin1String(name))) {
            part->hide();
        }
    }
    if (auto* file = findChild<QLineEdit*>(QStringLiteral("filename"))) {
        // The dialog asks before it overwrites the file of this field, although nothing will be written.
        file->setText(QDir::temp().filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + u".pdf"));
    }
    const auto* strip = findChild<QDialogButtonBox*>();
    if (strip == nullptr) {
        return;
    }
    const QDialogButtonBox own(QDialogButtonBox::Ok);
    for (QAbstractButton* button : strip->buttons()) {
        if (strip->buttonRole(button) == QDialogButtonBox::AcceptRole) {
            button->setText(own.button(QDialogButtonBox::Ok)->text());
        } else if (strip->buttonRole(button) == QDialogButtonBox::ResetRole) {
            button->click(); // unfolds copies, sides and colours, which this dialog is for
        }
    }
}

} // namespace sixtrace
