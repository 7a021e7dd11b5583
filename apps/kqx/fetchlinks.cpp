// SPDX-License-Identifier: MIT
#include "fetchlinks.h"

#include "acquire/serialreceive.h"
#include "acquire/usbexchange.h"
#include "platform/mscomm.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <csignal>
#include <unistd.h>

namespace sixtrace::kqx {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

void noteInterrupt(int) {
    g_interrupted = 1;
}

RuntimeError sentence(const QString& text) {
    return {ErrorNumber::DeviceIo, text};
}

/// A line on the terminal that is written over and over; nothing where errors go elsewhere.
class ProgressLine {
public:
    ~ProgressLine() { clear(); }
    ProgressLine() = default;
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    void show(const QString& text) {
        if (m_terminal && text != m_shown) {
            QTextStream(stderr) << '\r' << text.leftJustified(m_shown.size()) << Qt::flush;
            m_shown = text;
        }
    }
    void clear() {
        if (!m_shown.isEmpty()) {
            QTextStream(stderr) << '\r' << QString(m_shown.size(), u' ') << '\r' << Qt::flush;
            m_shown.clear();
        }
    }

private:
    bool m_terminal = isatty(STDERR_FILENO) != 0;
    QString m_shown;
};

class SerialLink final : public FetchLink, private ReceiveForm {
public:
    SerialLink(const QString& location, int timeoutMs)
        : m_port([location](int) { return location; }) {
        m_receive.ReadTimeoutMs = static_cast<std::int16_t>(timeoutMs);
    }

    Result<QString> fetch(const QString& path) override {
        m_path = path;
        m_size = -1;
        const Outcome set = m_port.setSettings(QStringLiteral("115200,N,8,1"));
        const Outcome opened = set ? m_port.setPortOpen(true) : set;
        if (!opened) {
            return sentence(QStringLiteral("the serial port does not open: %1").arg(opened.error().description));
        }
        const Result<std::int32_t> result = m_receive.YModemReceive();
        static_cast<void>(m_port.setPortOpen(false)); // closing cannot fail
        m_line.clear();
        if (!result) {
            return sentence(QStringLiteral("the transfer failed: %1").arg(result.error().description));
        }
        if (result.value() < 0) {
            return sentence(m_model->XferCancel == 1 ? QStringLiteral("cancelled")
                                                     : QStringLiteral("the transfer failed: the instrument does not "
                                                                      "answer as it should"));
        }
        if (m_size < 0 || QFileInfo(m_model->ReceivedFile).size() < m_size || result.value() == 0) {
            return sentence(QStringLiteral("the transfer failed: the instrument ended it early"));
        }
        return m_model->ReceivedFile;
    }

private:
    QString Text2() override { return m_path; }
    void setText1(const QString&) override {}
    void setText2(const QString& path) override { m_path = path; }
    void setText3(int) override {}
    void setText4(int retries) override { m_retries = retries; }
    void setAmounts(const QString& received, const QString& size) override {
        m_line.show(QStringLiteral("%1 of %2").arg(received, size) +
                    (m_retries > 0 ? QStringLiteral(", retry %1").arg(m_retries) : QString()));
    }
    void setBarMaximum(std::int32_t maximum) override { m_size = maximum - 1; }
    void setBar(std::int32_t) override {}
    void yield() override {
        if (interrupted()) {
            m_model->XferCancel = 1;
        }
        QCoreApplication::processEvents();
    }

    std::unique_ptr<publicM> m_model = std::make_unique<publicM>();
    MSComm m_port;
    SerialReceive m_receive{m_port, *this, *m_model};
    ProgressLine m_line;
    QString m_path;
    std::int32_t m_size = -1;
    int m_retries = 0;
};

/// The transfer by hand with a terminal in place of the window: its messages become the error.
class UsbLink final : public FetchLink, private UsbForm, private Dialogs {
public:
    explicit UsbLink(const QString& folder)
        : m_library(folder) {
        m_model->LanguageId = 1;
    }

    Result<QString> fetch(const QString& path) override {
        m_path = path;
        m_complaint.clear();
        m_model->ReceiveResult = 0;
        m_transfer.Command4_Click();
        m_line.clear();
        if (m_model->ReceiveResult < 1) {
            return sentence(m_complaint.isEmpty() ? QStringLiteral("cancelled") : m_complaint);
        }
        return m_model->ReceivedFile;
    }

private:
    QString Text1() override { return QStringLiteral("capture.bin"); }
    QString Text2() override { return m_path; }
    void setText1(const QString&) override {}
    void setText2(const QString& path) override { m_path = path; }
    void setText5(std::int32_t received) override {
        m_line.show(QStringLiteral("%1 of %2 bytes").arg(received).arg(m_length));
    }
    void setText6(std::int32_t length) override { m_length = length; }
    void setBarMaximum(std::int32_t) override {}
    void setBar(std::int32_t) override {}
    void setCommand4Enabled(bool) override {}
    void yield() override {
        if (interrupted() && m_transfer.UsbBusy()) {
            m_transfer.CancelButton_Click();
        }
    }
    void waitForTimer1() override { usleep(300000); }
    void unload() override {}

    std::optional<FileChoice> ShowOpen(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> ShowSave(const FileRequest&) override { return std::nullopt; }
    std::optional<Colour> ShowColor(Colour) override { return std::nullopt; }
    void message(const QString& text, MessageIcon, const QString&) override {
        m_complaint = text + QStringLiteral(" (ttdll.log beside the program may tell more)");
    }
    Answer question(const QString&, MessageIcon, const QString&) override { return Answer::No; }
    std::optional<QString> input(const QString&, const QString&, const QString&) override { return std::nullopt; }

    TtLibrary m_library;
    std::unique_ptr<publicM> m_model = std::make_unique<publicM>();
    UsbTransfer m_transfer{m_library, *this, *this, *m_model};
    ProgressLine m_line;
    QString m_path;
    QString m_complaint;
    std::int32_t m_length = 0;
};

} // namespace

std::unique_ptr<FetchLink> serialLink(const QString& location, int timeoutMs) {
    return std::make_unique<SerialLink>(location, timeoutMs);
}

std::unique_ptr<FetchLink> usbLink(const QString& libraryFolder) {
    return std::make_unique<UsbLink>(libraryFolder);
}

void catchInterrupt() {
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool interrupted() {
    return g_interrupted != 0;
}

} // namespace sixtrace::kqx
