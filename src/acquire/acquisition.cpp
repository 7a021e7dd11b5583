// SPDX-License-Identifier: MIT
#include "acquire/acquisition.h"

#include "acquire/frmcomset.h"
#include "capture/mdllan.h"
#include "capture/settings.h"
#include "platform/controls/labels.h"
#include "platform/desktop/dialogs.h"
#include "platform/files/privatefolder.h"
#include "platform/ports/serialports.h"

#include <QAction>
#include <QWidget>

namespace sixtrace {

namespace {

constexpr int kTickMs = 1000;
constexpr std::array<std::int16_t, 4> kIntervalsMs{1000, 2000, 3000, 5000};
/// Tool buttons of port settings, fetching by hand and timed fetching.
constexpr std::array<int, 3> kToolButtons{12, 11, 13};

MSComm::Locator locatorFor(MSComm::Locator given, const publicM& model) {
    return given ? std::move(given) : [&model](int number) { return serialPortLocation(model.AppDir, number); };
}

} // namespace

Acquisition::Acquisition(publicM& model, const Controls& controls, Dialogs& dialogs, AcquisitionNeighbours& neighbours,
                         InstrumentAccess access, QWidget* window)
    : QObject(window)
    , m_model(model)
    , m_controls(controls)
    , m_dialogs(dialogs)
    , m_neighbours(neighbours)
    , m_window(window)
    , m_library([&model] { return ttLibraryFolder(model.AppDir); })
    , m_usb(access.usb == nullptr ? m_library : *access.usb)
    , m_autoGetFile(access.autoGetFile ? std::move(access.autoGetFile) : [] { return autoGetFile(); })
    , m_locatePort(locatorFor(std::move(access.locatePort), model)) {
    m_Timetime1.setObjectName(QStringLiteral("Timetime1"));
    m_Timetime1.setInterval(kTickMs);
    connect(&m_Timetime1, &QTimer::timeout, this, &Acquisition::Timetime1_Timer);
    connect(controls.mnuComSet, &QAction::triggered, this, &Acquisition::mnuComSet_Click);
    connect(controls.mnuAcquire, &QAction::triggered, this, &Acquisition::mnuAcquire_Click);
    connect(controls.mnuautoget, &QAction::triggered, this, &Acquisition::mnuautoget_Click);
    connect(controls.mnustop, &QAction::triggered, this, &Acquisition::mnustop_Click);
    connect(controls.mnurun, &QAction::triggered, this, &Acquisition::mnurun_Click);
    for (std::size_t i = 0; i < controls.intervals.size(); ++i) {
        connect(controls.intervals[i], &QAction::triggered, this, [this, i] { chooseInterval(i); });
    }
}

Acquisition::~Acquisition() = default;

recFrm& Acquisition::receiver() {
    if (m_recFrm == nullptr) {
        m_recFrm = std::make_unique<recFrm>(
            m_model, m_dialogs, m_locatePort, m_gate,
            recFrm::Endings{.caption = [this](const QString& text) { m_neighbours.setMessageOut(text); },
                            .report = [this](const TransferReport& report) { tellEnd(report); }});
    }
    return *m_recFrm;
}

FrmUSB& Acquisition::usbWindow() {
    if (m_FrmUSB == nullptr) {
        m_FrmUSB = std::make_unique<FrmUSB>(m_model, m_dialogs, m_usb, m_gate,
                                            [this](const TransferReport& report) { tellEnd(report); });
    }
    return *m_FrmUSB;
}

/// The transfer window closes at the end of a transfer, so this tool tip is the only place that tells the outcome.
void Acquisition::tellEnd(const TransferReport& report) {
    if (m_controls.lastTransfer != nullptr) {
        const QString label =
            m_model.LanguageId == 0 ? QStringLiteral("上次传输：%1") : QStringLiteral("Last transfer: %1");
        m_controls.lastTransfer->setNote(label.arg(sentenceOf(report, languageOf(m_model))));
    }
}

std::int16_t Acquisition::storedComPort() const {
    return iniShortNumber(QStringLiteral("Common"), QStringLiteral("ComPort"), 0, m_model.IniFile);
}

void Acquisition::mnuComSet_Click() {
    frmComSet settings(m_model, m_dialogs, receiver());
    settings.showOver(m_window);
}

void Acquisition::mnuAcquire_Click() {
    m_model.ComPort = storedComPort();
    if (m_model.ComPort < 1) {
        usbWindow().showModally(m_window);
    } else {
        receiver().showModally(m_window);
    }
    if (m_model.ReceiveResult <= 0) {
        return;
    }
    m_model.ReceiveResult = 0;
    if (m_model.ReceivedFile.endsWith(QLatin1String("bmp"))) {
        m_dialogs.message(QStringLiteral("Receive file is Bmp file ,please use other software open it !"),
                          MessageIcon::Information);
        return;
    }
    m_neighbours.loadCapture(m_model.ReceivedFile);
    m_neighbours.showCapturePath(m_model.ReceivedFile);
}

void Acquisition::enableCommands(bool enabled) {
    for (QAction* item : {m_controls.mnuAcquire, m_controls.mnuautoget, m_controls.mnuComSet}) {
        item->setEnabled(enabled);
    }
    for (const int button : kToolButtons) {
        m_neighbours.enableToolButton(button, enabled);
    }
    m_neighbours.enableVScroll1(enabled);
}

void Acquisition::mnuautoget_Click() {
    m_controls.mnustop->setChecked(false);
    m_controls.mnuautoget->setChecked(true);
    enableCommands(false);
    m_model.AutoRun = true;
    m_Timetime1.start();
}

void Acquisition::mnustop_Click() {
    m_controls.mnuautoget->setChecked(false);
    m_controls.mnustop->setChecked(true);
    enableCommands(true);
    m_model.AutoRun = false; // the timer stops itself at its next tick
    m_gate.giveUp();
}

void Acquisition::mnurun_Click() {
    m_controls.mnurun->setChecked(true);
    m_controls.mnustop->setChecked(false);
}

void Acquisition::chooseInterval(std::size_t chosen) {
    for (std::size_t i = 0; i < m_controls.intervals.size(); ++i) {
        m_controls.intervals[i]->setChecked(i == chosen);
    }
    m_AutoGetInterval = kIntervalsMs[chosen];
}

void Acquisition::Timetime1_Timer() {
    if (m_model.AutoRun) {
        getdata();
    } else {
        m_Timetime1.stop();
    }
}

void Acquisition::getdata() {
    // The pass is kept until the file is loaded, since the next tick may come while a message box is open.
    const auto pass = m_gate.enter();
    if (!pass) {
        return;
    }
    m_model.ComPort = storedComPort();
    if (m_model.ComPort < 1) {
        getfromUSB(*pass);
    } else {
        if (getfromCOM(*pass) == TransferEnd::Superseded) {
            return; // the port and the file belong to the other transfer now
        }
        static_cast<void>(receiver().MSComm1().setPortOpen(false)); // closing cannot fail
    }
    // Also after a failure: then this is the file of the fetch before, or an incomplete one.
    m_neighbours.loadCapture(m_model.ReceivedFile);
}

TransferEnd Acquisition::getfromCOM(const TransferPass& pass) {
    if (!receiver().MSComm1().PortOpen()) {
        const Outcome opened = receiver().OpenCom();
        if (!opened) {
            m_dialogs.message(opened.error().description, MessageIcon::Exclamation);
            return TransferEnd::Error;
        }
    }
    const TransferReport report = receiver().YModemReceive(pass);
    if (report.error) {
        m_dialogs.message(report.error->description, MessageIcon::Exclamation);
    } else if (report.end != TransferEnd::Superseded) {
        m_model.ReceiveResult = receiveResult(report);
    }
    return report.end;
}

void Acquisition::getfromUSB(const TransferPass& pass) {
    static_cast<void>(m_usb.InitializeTt(0)); // on a link that did not open the first write fails
    const TransferReport report = exchangeUsb(pass, m_usb, {.storeAt = [this](const UsbAnnounced&) {
                                                  Result<QString> path = m_autoGetFile();
                                                  if (path) {
                                                      m_model.ReceivedFile = path.value();
                                                  }
                                                  return path;
                                              }});
    tellEnd(report);
    if (report.end == TransferEnd::Finished) {
        pass.file().close();
        m_usb.closeTt(0);
        m_model.ReceiveResult = 1;
        return;
    }
    if (report.error) {
        m_dialogs.message(usbErrorText(*report.error), MessageIcon::Plain);
    } else {
        m_dialogs.message(usbDataFailedText(languageOf(m_model)), MessageIcon::Information);
    }
    pass.file().close();
    m_usb.closeTt(1);
    mnustop_Click();
}

} // namespace sixtrace
