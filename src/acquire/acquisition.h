// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/frmusb.h"
#include "acquire/recfrm.h"
#include "capture/publicm.h"
#include "platform/ports/mscomm.h"
#include "platform/ports/ttlink.h"

#include <QObject>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>

class QAction;

namespace sixtrace {

class Dialogs;
class PathLabel;
class frmComSet;

/// What acquisition has the main window do.
class AcquisitionNeighbours {
public:
    AcquisitionNeighbours() = default;
    AcquisitionNeighbours(const AcquisitionNeighbours&) = delete;
    AcquisitionNeighbours& operator=(const AcquisitionNeighbours&) = delete;
    virtual ~AcquisitionNeighbours() = default;

    virtual void loadCapture(const QString& path) = 0;     ///< calls SimpleWav
    virtual void showCapturePath(const QString& path) = 0; ///< sets the caption of Label4
    virtual void enableVScroll1(bool enabled) = 0;
    virtual void enableToolButton(int index, bool enabled) = 0;
    /// Writes a sentence into FrmMessageOut, which stays hidden.
    virtual void setMessageOut(const QString& text) = 0;
};

/// How the instrument is reached. Tests set their own; a member that stays empty stands for the machine's.
struct InstrumentAccess {
    TtLink* usb = nullptr;
    MSComm::Locator locatePort;
    std::function<Result<QString>()> autoGetFile; ///< gives the path of the file of timed acquisition over USB
};

/// Decides when a capture is fetched, over which link, and what is done with the file: by hand through a dialog, or
/// timed without dialogs until Stop. It owns both transfer windows.
class Acquisition : public QObject {
public:
    /// The controls of the main window that acquisition reads and sets.
    struct Controls {
        QAction* mnuComSet;
        QAction* mnuAcquire;
        QAction* mnuautoget;
        QAction* mnustop;
        QAction* mnurun;
        std::array<QAction*, 4> intervals; ///< mnuone, mnutwo, mnuthree, mnufive
        /// Its tool tip tells how the last transfer ended. May be null.
        PathLabel* lastTransfer = nullptr;
    };

    Acquisition(publicM& model, const Controls& controls, Dialogs& dialogs, AcquisitionNeighbours& neighbours,
                InstrumentAccess access, QWidget* window);
    ~Acquisition() override;

    void mnuComSet_Click();
    void mnuAcquire_Click();
    void mnuautoget_Click();
    void mnustop_Click();
    void mnurun_Click();
    void mnuone_Click() { chooseInterval(0); }
    void mnutwo_Click() { chooseInterval(1); }
    void mnuthree_Click() { chooseInterval(2); }
    void mnufive_Click() { chooseInterval(3); }
    /// The tick of Timetime1: one fetch while AutoRun is true, otherwise stops the timer.
    void Timetime1_Timer();

    /// The two transfer windows. The first call makes the window.
    [[nodiscard]] recFrm& receiver();
    [[nodiscard]] FrmUSB& usbWindow();
    [[nodiscard]] QTimer& timer() { return m_Timetime1; }
    [[nodiscard]] TransferGate& gate() { return m_gate; }
    [[nodiscard]] std::int16_t AutoGetInterval() const { return m_AutoGetInterval; }

private:
    void getdata();
    [[nodiscard]] TransferEnd getfromCOM(const TransferPass& pass);
    void getfromUSB(const TransferPass& pass);
    void tellEnd(const TransferReport& report);
    void chooseInterval(std::size_t chosen); ///< index into Controls::intervals
    void enableCommands(bool enabled);
    [[nodiscard]] std::int16_t storedComPort() const;

    publicM& m_model;
    Controls m_controls;
    Dialogs& m_dialogs;
    AcquisitionNeighbours& m_neighbours;
    QWidget* m_window;
    TtLibrary m_library;
    TtLink& m_usb;
    std::function<Result<QString>()> m_autoGetFile;
    MSComm::Locator m_locatePort;
    TransferGate m_gate;
    std::unique_ptr<recFrm> m_recFrm;
    std::unique_ptr<FrmUSB> m_FrmUSB;
    QTimer m_Timetime1;
    std::int16_t m_AutoGetInterval = 0; ///< chosen in the menu. Nothing uses it: ticks come every second
};

} // namespace sixtrace
