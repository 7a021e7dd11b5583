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

/// The port settings: USB or one of the serial ports found, and line settings, which are stored and tried but never
/// used by a transfer. It probes with the serial control of the receive window. Made for one showing.
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
    /// Tells device and adapter of each port, and where to read on about one that does not appear.
    void showToolTips();
    /// The settings text of the lists; the parity letters stand one place off the words, and stay so.
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
