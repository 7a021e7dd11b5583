// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/porttable.h"
#include "capture/publicm.h"
#include "platform/desktop/dialogsheet.h"

namespace sixtrace {

class Dialogs;
class FramePanel;
class ListCombo;
class recFrm;

/// The dialog of the port settings: USB or one of the serial ports found, and line settings. The line settings are
/// tried and stored, but no transfer uses them. The dialog looks for ports with the serial control of the receive
/// window. Each showing makes a new one.
class frmComSet : public DialogSheet {
public:
    frmComSet(publicM& model, Dialogs& dialogs, recFrm& receiver);

    void Combo1_Click();
    void Command1_Click();
    void CmdSet_Click();
    void CmdCancel_Click();

private:
    void Form_Load();
    void showLineDefaults();
    /// Tool tips tell the device and adapter of each port, and where to look when a port is missing.
    void showToolTips();
    /// The settings as text. Each word of the parity list gives the letter of its neighbour, which is meant.
    [[nodiscard]] QString settingsText() const;
    [[nodiscard]] Outcome tryPort();

    publicM& m_model;
    Dialogs& m_dialogs;
    recFrm& m_receiver;
    PortTable m_ports;
    ListCombo* m_Combo1;
    FramePanel* m_Frame1;
    ListCombo* m_Combo2;
    ListCombo* m_Combo3;
    ListCombo* m_Combo4;
    ListCombo* m_Combo5;
};

} // namespace sixtrace
