// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transfersheet.h"
#include "acquire/usbexchange.h"
#include "capture/publicm.h"

#include <functional>

class QPushButton;

namespace sixtrace {

class Dialogs;

/// The window of a USB transfer by hand; exchangeUsb() does the transfer. The object is made once. To load and unload
/// the form changes its state only, since the folder chosen last and the two flags survive that.
class FrmUSB : public TransferSheet {
public:
    /// `tellEnd` is called with the report of each transfer.
    FrmUSB(publicM& model, Dialogs& dialogs, TtLink& link, TransferGate& gate,
           std::function<void(const TransferReport&)> tellEnd);

    /// Loads the form and shows it modally over `owner` until it is unloaded.
    void showModally(QWidget* owner);
    [[nodiscard]] const QString& LastSaveDir() const { return m_LastSaveDir; }
    /// True during a transfer, and after a run-time error until the next Cancel, which then recovers the link.
    [[nodiscard]] bool UsbBusy() const { return m_UsbBusy; }

    void Command1_Click() override;
    void Command4_Click();
    void CancelButton_Click() override;

private:
    void Form_Load();

    [[nodiscard]] TransferReport transfer(const TransferPass& pass);
    [[nodiscard]] Result<QString> storeAt(const UsbAnnounced& announced);
    Outcome nameBitmap();
    [[nodiscard]] QString ownFolder() const;
    /// Lets events run until the next tick of Timer1, at most 300 ms.
    static void waitForTimer1();

    publicM& m_model;
    Dialogs& m_dialogs;
    TtLink& m_link;
    TransferGate& m_gate;
    std::function<void(const TransferReport&)> m_tellEnd;
    const TransferPass* m_pass = nullptr; ///< of the running transfer, null when there is none
    bool m_UsbBusy = false;
    bool m_UsbCancel = false;
    QString m_LastSaveDir;
    QPushButton* m_Command4;
};

} // namespace sixtrace
