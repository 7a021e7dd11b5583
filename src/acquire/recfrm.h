// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/porttable.h"
#include "acquire/serialreceive.h"
#include "acquire/transfersheet.h"
#include "capture/publicm.h"
#include "platform/ports/mscomm.h"

#include <functional>

class QLineEdit;
class QPushButton;

namespace sixtrace {

class Dialogs;

/// The window of a serial transfer, which also owns the serial port. For a transfer by hand it is shown and the user
/// presses Start; timed acquisition loads it without showing it. The object is made once. To load and unload the form
/// changes its state only, since the read time-out and the port table survive that.
class recFrm : public TransferSheet {
public:
    /// What is called at the end of a transfer.
    struct Endings {
        std::function<void(const QString&)> caption; ///< for the message window, after a transfer by hand only
        std::function<void(const TransferReport&)> report;
    };
    recFrm(publicM& model, Dialogs& dialogs, MSComm::Locator locatePort, TransferGate& gate, Endings endings);

    /// Runs Form_Load unless the form is loaded.
    void load();
    [[nodiscard]] bool isLoaded() const { return m_loaded; }
    /// Shows the form modally over `owner` until it is hidden or unloaded.
    void showModally(QWidget* owner);

    /// Opens the port that the settings name, or closes the port if it is open. Error 9 for an index outside the table.
    Outcome OpenCom();
    /// Receives into the path of Text2 and shows the steps. If another transfer takes the place of this one, the port
    /// is closed.
    [[nodiscard]] TransferReport YModemReceive(const TransferPass& pass);
    [[nodiscard]] std::int16_t ReadTimeoutMs() const { return m_receive.ReadTimeoutMs; }
    [[nodiscard]] MSComm& MSComm1() { return m_MSComm1; }
    [[nodiscard]] const PortTable& ports() const { return m_ports; }

    void Command1_Click() override;
    void Command2_Click();
    void CancelButton_Click() override;

private:
    void Form_Load();
    void unload();

    void showStep(const ReceiveStep& step);
    [[nodiscard]] QString ownFolder() const;

    publicM& m_model;
    Dialogs& m_dialogs;
    TransferGate& m_gate;
    Endings m_endings;
    MSComm m_MSComm1;
    SerialReceive m_receive;
    PortTable m_ports;
    bool m_loaded = false;
    QLineEdit* m_Text3;
    QLineEdit* m_Text4;
    QPushButton* m_Command2;
};

} // namespace sixtrace
