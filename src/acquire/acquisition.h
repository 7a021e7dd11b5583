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

/// What acquisition asks of the other areas.
class AcquisitionNeighbours {
public:
    AcquisitionNeighbours() = default;
    AcquisitionNeighbours(const AcquisitionNeighbours&) = delete;
    AcquisitionNeighbours& operator=(const AcquisitionNeighbours&) = delete;
    virtual ~AcquisitionNeighbours() = default;

    virtual void loadCapture(const QString& path) = 0;     ///< SimpleWav
    virtual void showCapturePath(const QString& path) = 0; ///< caption of Label4
    virtual void enableVScroll1(bool enabled) = 0;
    virtual void enableToolButton(int index, bool enabled) = 0;
    /// Puts the sentence into FrmMessageOut, which stays out of sight.
    virtual void setMessageOut(const QString& text) = 0;
};

/// The ways to the instrument and what belongs to them. Tests put their own here; what stays empty is the machine's.
struct AcquisitionLinks {
    TtLink* usb = nullptr;
    MSComm::Locator locatePort;
    std::function<Result<QString>()> autoGetFile;
};

/// Decides when a capture is fetched, over which link, and what becomes of the file: by hand through a dialog, or timed
/// without any until Stop. It owns both transfer windows.
class Acquisition : public QObject {
public:
    struct Items {
        QAction* mnuComSet;
        QAction* mnuAcquire;
        QAction* mnuautoget;
        QAction* mnustop;
        QAction* mnurun;
        std::array<QAction*, 4> intervals; ///< mnuone, mnutwo, mnuthree, mnufive
        /// Where a tool tip tells how the last transfer ended.
        PathLabel* lastTransfer = nullptr;
    };

    Acquisition(publicM& model, const Items& items, Dialogs& dialogs, AcquisitionNeighbours& neighbours,
                AcquisitionLinks links, QWidget* window);
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
    /// The tick of Timetime1: one fetch while AutoRun holds, else the end of the ticks.
    void Timetime1_Timer();

    /// The two transfer windows, each made by its first use.
    [[nodiscard]] recFrm& receiver();
    [[nodiscard]] FrmUSB& usbWindow();
    [[nodiscard]] QTimer& timer() { return m_Timetime1; }
    /// The one place that lets transfers run.
    [[nodiscard]] TransferGate& gate() { return m_gate; }
    [[nodiscard]] std::int16_t AutoGetInterval() const { return m_AutoGetInterval; }

private:
    void getdata();
    /// False when another transfer has taken the place of this one.
    [[nodiscard]] bool getfromCOM(const TransferPass& pass);
    void getfromUSB(const TransferPass& pass);
    void tellEnd(const TransferReport& report);
    void chooseInterval(std::size_t chosen);
    void enableCommands(bool enabled);
    [[nodiscard]] std::int16_t storedComPort() const;

    publicM& m_model;
    Items m_items;
    Dialogs& m_dialogs;
    AcquisitionNeighbours& m_neighbours;
    QWidget* m_window;
    std::unique_ptr<TtLink> m_ownUsb;
    TtLink& m_usb;
    std::function<Result<QString>()> m_autoGetFile;
    MSComm::Locator m_locatePort;
    TransferGate m_gate;
    std::unique_ptr<recFrm> m_recFrm;
    std::unique_ptr<FrmUSB> m_FrmUSB;
    QTimer m_Timetime1;
    std::int16_t m_AutoGetInterval = 0; ///< chosen in the menu and read by nobody: ticks come every second
};

} // namespace sixtrace
