// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/usbexchange.h"
#include "platform/dialogsheet.h"

class QLineEdit;
class QProgressBar;
class QPushButton;

namespace sixtrace {

/// The window of a USB transfer by hand. Made once; loading and unloading are states of it, so that the folder chosen
/// last outlives them. The exchange itself is UsbTransfer's.
class FrmUSB : public DialogSheet, private UsbForm {
public:
    FrmUSB(publicM& model, Dialogs& dialogs, TtLink& link);

    /// Loads the form and shows it over the main window until it is unloaded.
    void showModally(QWidget* owner);
    [[nodiscard]] const QString& LastSaveDir() const { return m_LastSaveDir; }

    void Command1_Click();
    void Command4_Click();
    void CancelButton_Click();

protected:
    void reject() override;

private:
    void Form_Load();

    QString Text1() override;
    QString Text2() override;
    void setText1(const QString& name) override;
    void setText2(const QString& path) override;
    void setText5(std::int32_t received) override;
    void setText6(std::int32_t length) override;
    void setBarMaximum(std::int32_t blocks) override;
    void setBar(std::int32_t block) override;
    void setCommand4Enabled(bool enabled) override;
    void yield() override;
    void waitForTimer1() override;
    void unload() override;

    publicM& m_model;
    Dialogs& m_dialogs;
    UsbTransfer m_transfer;
    QString m_LastSaveDir;
    QLineEdit* m_Text1;
    QLineEdit* m_Text2;
    QLineEdit* m_Text5;
    QLineEdit* m_Text6;
    QProgressBar* m_ProgressBar1;
    QPushButton* m_Command4;
};

} // namespace sixtrace
