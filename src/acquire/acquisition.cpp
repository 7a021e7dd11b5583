// SPDX-License-Identifier: MIT
#include "acquire/acquisition.h"

#include "acquire/frmcomset.h"
#include "capture/settings.h"
#include "platform/dialogs.h"
#include "platform/privatefolder.h"
#include "platform/serialports.h"

#include <QAction>
#include <QScopedValueRollback>

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
        m_recFrm = std::make_unique<recFrm>(m_model, m_dialogs, m_locatePort,
                                            [this](const QString& text) { m_neighbours.setMessageOut(text); });
    }
    return *m_recFrm;
}

FrmUSB& Acquisition::usbWindow() {
    if (m_FrmUSB == nullptr) {
        m_FrmUSB = std::make_unique<FrmUSB>(m_model, m_dialogs, m_usb);
    }
    return *m_FrmUSB;
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
    if (m_fetching) {
        return;
    }
    const QScopedValueRollback<bool> fetching(m_fetching, true);
    m_model.ComPort = storedComPort();
    if (m_model.ComPort < 1) {
        getfromUSB();
    } else {
        getfromCOM();
        static_cast<void>(receiver().MSComm1().setPortOpen(false)); // closing cannot fail
    }
    // Whatever the outcome: after a failure this is the file of the fetch before, or one that is not complete.
    m_neighbours.loadCapture(m_model.ReceivedFile);
}

void Acquisition::getfromCOM() {
    Outcome opened = success();
    if (!receiver().MSComm1().PortOpen()) {
        opened = receiver().OpenCom();
    }
    const Result<std::int32_t> result = opened ? receiver().YModemReceive() : Result<std::int32_t>(opened.error());
    if (result) {
        m_model.ReceiveResult = result.value();
    } else {
        m_dialogs.message(result.error().description, MessageIcon::Exclamation);
    }
}

void Acquisition::getfromUSB() {
    const Result<QString> path = m_autoGetFile();
    if (!path) {
        m_dialogs.message(usbErrorText(path.error()), MessageIcon::Plain);
        mnustop_Click();
    } else if (sixtrace::getfromUSB(m_usb, m_dialogs, m_model, path.value()) == AutoUsbEnding::Failed) {
        mnustop_Click();
    }
}

} // namespace sixtrace
