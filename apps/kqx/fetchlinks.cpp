// SPDX-License-Identifier: MIT
#include "fetchlinks.h"

#include "acquire/serialreceive.h"
#include "acquire/usbexchange.h"
#include "platform/ports/mscomm.h"
#include "platform/ports/ttlink.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QThread>

#include <csignal>
#include <unistd.h>

namespace sixtrace::kqx {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

void noteInterrupt(int) {
    g_interrupted = 1;
}

Fetched noInstrument(const QString& sentence) {
    return {.how = Fetched::How::NoInstrument,
            .file = {},
            .bitmap = false,
            .sentence = sentence + QStringLiteral(" (kqx ports tells what there is)")};
}

/// The result for a report. A file that is not whole is no capture.
Fetched judged(const TransferReport& report) {
    if (report.whole()) {
        return {Fetched::How::Whole, report.path, report.bitmap, {}};
    }
    if (report.end == TransferEnd::BrokenOff && !report.announced) {
        return noInstrument(QStringLiteral("no instrument answers: ") + sentenceOf(report, Language::English));
    }
    return {Fetched::How::BrokenOff, {}, false, sentenceOf(report, Language::English)};
}

/// A line on the terminal that each text replaces. It shows nothing when standard error is no terminal.
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

class SerialLink final : public FetchLink {
public:
    SerialLink(const QString& location, int timeoutMs)
        : m_port([location](int) { return location; }) {
        m_receive.ReadTimeoutMs = static_cast<std::int16_t>(timeoutMs);
    }

    Fetched fetch(const QString& folder) override {
        const Outcome set = m_port.setSettings(QStringLiteral("115200,N,8,1"));
        const Outcome opened = set ? m_port.setPortOpen(true) : set;
        if (!opened) {
            return noInstrument(QStringLiteral("the serial port does not open: %1").arg(opened.error().description));
        }
        const auto pass = m_gate.enter();
        m_retries = 0;
        // After the line is lost nothing can come, so further tries would be useless.
        TransferReport report =
            m_receive.YModemReceive(*pass, {.path = folder + QStringLiteral("/capture.bin"),
                                            .bitmapFolder = folder + u'/',
                                            .cancelled = [this] { return interrupted() || m_port.lost(); },
                                            .show = [this](const ReceiveStep& step) { show(step); },
                                            .yield = [] { QCoreApplication::processEvents(); }});
        if (m_port.lost() && !interrupted() && !report.whole()) {
            report.end = TransferEnd::Error;
            report.error = RuntimeError{ErrorNumber::DeviceIo, QStringLiteral("the serial line has gone")};
        }
        static_cast<void>(m_port.setPortOpen(false)); // closing cannot fail
        m_line.clear();
        return judged(report);
    }

private:
    void show(const ReceiveStep& step) {
        if (const auto* retried = std::get_if<Retried>(&step)) {
            m_retries = retried->retries;
        } else if (const auto* block = std::get_if<BlockTaken>(&step)) {
            m_line.show(QStringLiteral("%1 of %2")
                            .arg(amountText(block->total, block->size), amountText(block->size, block->size)) +
                        (m_retries > 0 ? QStringLiteral(", retry %1").arg(m_retries) : QString()));
            m_retries = 0;
        }
    }

    MSComm m_port;
    SerialReceive m_receive{m_port};
    TransferGate m_gate;
    ProgressLine m_line;
    int m_retries = 0;
};

class UsbLink final : public FetchLink {
public:
    explicit UsbLink(const QString& folder)
        : m_library(folder) {}

    Fetched fetch(const QString& folder) override {
        if (m_library.InitializeTt(0) == 0) {
            return noInstrument(usbOpenFailedText(Language::English));
        }
        const auto pass = m_gate.enter();
        bool cut = false;
        std::int32_t length = 0;
        TransferReport report = exchangeUsb(
            *pass, m_library,
            {.storeAt = [&](const UsbAnnounced& announced) -> Result<QString> {
                 length = announced.length;
                 const QString name =
                     announced.bitmap ? QStringLiteral("/capture.bmp") : QStringLiteral("/capture.bin");
                 return QString(folder + name);
             },
             .cancelled = [&cut] { return cut; },
             .blockCame =
                 [&](std::int32_t block) {
                     m_line.show(QStringLiteral("%1 of %2 bytes").arg((block + 1) * kUsbBlockSize).arg(length));
                 },
             .yield =
                 [&] {
                     if (interrupted() && !cut) {
                         cut = true;
                         m_library.closeTt(0); // the next read fails
                     }
                 }});
        // The file is cut at its announced size. When bytes came twice, it is wrong, and the instrument has some bytes
        // left.
        report.inOrder = !report.whole() || !m_library.hasMore();
        m_line.clear();
        close(report);
        Fetched fetched = judged(report);
        if (fetched.how != Fetched::How::Whole) {
            fetched.sentence += QStringLiteral(" (ttdll.log beside the program may tell more)");
        }
        return fetched;
    }

private:
    void close(const TransferReport& report) {
        if (report.end == TransferEnd::Cancelled) {
            QThread::msleep(kRecoveryMs);
            static_cast<void>(m_library.InitializeTt(1)); // brings the link into a defined state as far as possible
        }
        m_library.closeTt(report.whole() ? 0 : 1);
    }

    static constexpr unsigned long kRecoveryMs = 300;

    TtLibrary m_library;
    TransferGate m_gate;
    ProgressLine m_line;
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
