// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "output/mdlprinter.h"
#include "platform/desktop/dialogsheet.h"

#include <array>

class QLabel;
class QLineEdit;
class QRadioButton;

namespace sixtrace {

class Dialogs;

/// The page setup: the four margins, and how the preview changes its scale. The settings are written only when the user
/// accepts. The object is made for one showing of the window.
class frmPrintSetup : public DialogSheet {
public:
    frmPrintSetup(publicM& model, MdlPrinter& settings, PreviewScale& preview, Dialogs& dialogs);

    void cmdDefault_Click();
    void cmdYes_Click();
    void cmdNo_Click();
    void optRePrint_Click(int Index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void makeControls();
    void Form_Load();
    /// A text of the language file; for Chinese the given text.
    [[nodiscard]] QString text(const QString& key, const QString& chinese) const;
    void refuse(QLineEdit& field, const QString& message);

    publicM& m_model;
    MdlPrinter& m_settings;
    PreviewScale& m_preview;
    Dialogs& m_dialogs;
    NumberedArray<QLineEdit*, 4> m_txtMargin{}; ///< elements 1 to 4: top, bottom, left, right
    NumberedArray<QRadioButton*, 2> m_optRePrint{};
    QLineEdit* m_txtZoom = nullptr;
};

} // namespace sixtrace
