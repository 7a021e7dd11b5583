// SPDX-License-Identifier: MIT
#include "acquire/acquisition.h"

#include "acquire/frmcomset.h"
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

/// The library is looked for when it is first used, as the program folder is not known before.
class LateLibrary final : public TtLink {
public:
    explicit LateLibrary(const publicM& model)
        : m_model(model) {}
    std::int32_t InitializeTt(std::int32_t mode) override { return library().InitializeTt(mode); }
    void closeTt(std::int32_t mode) override { library().closeTt(mode); }
    std::int32_t WriteThread(const char* bytes, std::int32_t count) override {
        return library().WriteThread(bytes, count);
    }
    std::int32_t ReadThread(char* buffer, std::int32_t count) override { return library().ReadThread(buffer, count); }
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override {
        return library().senddatatoTt(bytes, count);
    }
    std::int32_t getTtData(char* buffer, std::int32_t count) override { return library().getTtData(buffer, count); }

private:
    TtLibrary& library() {
        if (m_library == nullptr) {
            m_library = std::make_unique<TtLibrary>(ttLibraryFolder(m_model.AppDir));
        }
        return *m_library;
    }

    const publicM& m_model;
    std::unique_ptr<TtLibrary> m_library;
};

} // namespace

Acquisition::Acquisition(publicM& model, const Items& items, Dialogs& dialogs, AcquisitionNeighbours& neighbours,
                         AcquisitionLinks links, QWidget* window)
    : QObject(window)
    , m_model(model)
    , m_items(items)
    , m_dialogs(dialogs)
    , m_neighbours(neighbours)
    , m_window(window)
    , m_ownUsb(links.usb == nullptr ? std::make_unique<LateLibrary>(model) : nullptr)
    , m_usb(links.usb == nullptr ? *m_ownUsb : *links.usb)
    , m_autoGetFile(links.autoGetFile ? std::move(links.autoGetFile) : [] { return autoGetFile(); })
    , m_locatePort(locatorFor(std::move(links.locatePort), model)) {
    m_Timetime1.setObjectName(QStringLiteral("Timetime1"));
    m_Timetime1.setInterval(kTickMs);
    connect(&m_Timetime1, &QTimer::timeout, this, &Acquisition::Timetime1_Timer);
    connect(items.mnuComSet, &QAction::triggered, this, &Acquisition::mnuComSet_Click);
    connect(items.mnuAcquire, &QAction::triggered, this, &Acquisition::mnuAcquire_Click);
    connect(items.mnuautoget, &QAction::triggered, this, &Acquisition::mnuautoget_Click);
    connect(items.mnustop, &QAction::triggered, this, &Acquisition::mnustop_Click);
    connect(items.mnurun, &QAction::triggered, this, &Acquisition::mnurun_Click);
    for (std::size_t i = 0; i < items.intervals.size(); ++i) {
        connect(items.intervals[i], &QAction::triggered, this, [this, i] { chooseInterval(i); });
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

/// The part of the window that shows a transfer goes away at its end, so that nothing else tells how it went.
void Acquisition::tellEnd(const TransferReport& report) {
    if (m_items.lastTransfer != nullptr) {
        const QString label =
            m_model.LanguageId == 0 ? QStringLiteral("上次传输：%1") : QStringLiteral("Last transfer: %1");
        m_items.lastTransfer->setNote(label.arg(sentenceOf(report, m_model.LanguageId)));
    }
}

std::int16_t Acquisition::storedComPort() const {
    return iniShortNumber(setting::kComPort, 0, m_model.IniFile);
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
    for (QAction* item : {m_items.mnuAcquire, m_items.mnuautoget, m_items.mnuComSet}) {
        item->setEnabled(enabled);
    }
    for (const int button : kToolButtons) {
        m_neighbours.enableToolButton(button, enabled);
    }
    m_neighbours.enableVScroll1(enabled);
}

void Acquisition::mnuautoget_Click() {
    m_items.mnustop->setChecked(false);
    m_items.mnuautoget->setChecked(true);
    enableCommands(false);
    m_model.AutoRun = true;
    m_Timetime1.start();
}

void Acquisition::mnustop_Click() {
    m_items.mnuautoget->setChecked(false);
    m_items.mnustop->setChecked(true);
    enableCommands(true);
    m_model.AutoRun = false; // the timer stops itself at its next tick
    m_gate.giveUp();
}

void Acquisition::mnurun_Click() {
    m_items.mnurun->setChecked(true);
    m_items.mnustop->setChecked(false);
}

void Acquisition::chooseInterval(std::size_t chosen) {
    for (std::size_t i = 0; i < m_items.intervals.size(); ++i) {
        m_items.intervals[i]->setChecked(i == chosen);
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
    // Held until all is told and loaded: a tick may also fall into a message box.
    const auto pass = m_gate.enter();
    if (!pass) {
        return;
    }
    m_model.ComPort = storedComPort();
    if (m_model.ComPort < 1) {
        getfromUSB(*pass);
    } else {
        if (!getfromCOM(*pass)) {
            return; // the port is the other transfer's, and so is the file
        }
        static_cast<void>(receiver().MSComm1().setPortOpen(false)); // closing cannot fail
    }
    // Whatever the outcome: after a failure this is the file of the fetch before, or one that is not complete.
    m_neighbours.loadCapture(m_model.ReceivedFile);
}

bool Acquisition::getfromCOM(const TransferPass& pass) {
    if (!receiver().MSComm1().PortOpen()) {
        const Outcome opened = receiver().OpenCom();
        if (!opened) {
            m_dialogs.message(opened.error().description, MessageIcon::Exclamation);
            return true;
        }
    }
    const TransferReport report = receiver().YModemReceive(pass);
    if (report.end == TransferEnd::Superseded) {
        return false;
    }
    if (report.error) {
        m_dialogs.message(report.error->description, MessageIcon::Exclamation);
    } else {
        m_model.ReceiveResult = receiveResult(report);
    }
    return true;
}

void Acquisition::getfromUSB(const TransferPass& pass) {
    static_cast<void>(m_usb.InitializeTt(0)); // a link that is not there shows at the first bytes
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
        m_dialogs.message(usbDataFailedText(m_model.LanguageId), MessageIcon::Information);
    }
    pass.file().close();
    m_usb.closeTt(1);
    mnustop_Click();
}

} // namespace sixtrace
