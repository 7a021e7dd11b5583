// SPDX-License-Identifier: MIT
// The block receiver against a sender that does whatever the bytes say: each byte that the receiver sends is answered
// by the next record of the input, raw bytes or a block with a right check value.
#include "acquire/serialreceive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace sixtrace;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

class FuzzedPort final : public BytePort {
public:
    explicit FuzzedPort(QByteArray script)
        : m_script(std::move(script)) {}

    int InBufferCount() override { return static_cast<int>(m_waiting.size()); }
    void discard() override { m_waiting.clear(); }
    QByteArray Input(int count) override {
        const QByteArray taken = m_waiting.left(count);
        m_waiting.remove(0, count);
        return taken;
    }
    void Output(const QByteArray& bytes) override {
        for (const char byte : bytes) {
            require(byte == 67 || byte == 15 || byte == 6 || byte == 18 || byte == 8);
            answer();
        }
    }
    Waited waitForBytes(int count, int timeoutMs) override {
        if (m_waiting.size() >= count) {
            return Waited::Enough;
        }
        m_clock += timeoutMs;
        return timeoutMs == 0 ? Waited::Lost : Waited::TimedOut;
    }
    qint64 clock() override { return m_clock; }

private:
    int next() { return m_at < m_script.size() ? static_cast<unsigned char>(m_script[m_at++]) : 0; }
    QByteArray take(qsizetype count) {
        const QByteArray bytes = m_script.mid(m_at, count);
        m_at += bytes.size();
        return bytes;
    }
    void answer() {
        if (m_at >= m_script.size()) {
            return;
        }
        const int kind = next() % 4;
        if (kind == 0) {
            m_waiting += take(next());
        } else if (kind == 3) {
            m_waiting += static_cast<char>(line::kEndOfTransmission);
        } else {
            const int size = kind == 1 ? line::kShortData : line::kLongData;
            const int number = next();
            const char filling = static_cast<char>(next());
            QByteArray data = take(next() * (kind == 1 ? 1 : 4)).left(size);
            data.append(QByteArray(size - data.size(), filling));
            const std::uint16_t crc = crc16(data);
            for (const int byte : {kind, number, 255 - number}) {
                m_waiting += static_cast<char>(byte);
            }
            m_waiting += data;
            m_waiting += static_cast<char>(crc >> 8);
            m_waiting += static_cast<char>(crc & 0xFF);
        }
    }

    QByteArray m_script;
    qsizetype m_at = 0;
    QByteArray m_waiting;
    qint64 m_clock = 0;
};

/// Looks at what a window would show.
void checkStep(const ReceiveStep& step) {
    if (const auto* bitmap = std::get_if<StoresAs>(&step)) {
        require(!bitmap->path.contains(u'/'));
    } else if (const auto* block = std::get_if<BlockTaken>(&step)) {
        require(block->next >= 1);
    } else if (const auto* retried = std::get_if<Retried>(&step)) {
        require(retried->retries >= 0 && retried->retries <= 5);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    FuzzedPort port(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    SerialReceive receive(port);
    receive.ReadTimeoutMs = 10000;
    TransferGate gate;
    TransferReport report;
    {
        const auto pass = gate.enter();
        report = receive.YModemReceive(
            *pass, {.path = folder.filePath(QStringLiteral("got.bin")), .bitmapFolder = {}, .show = checkStep});
    }
    require(!gate.held());
    require(report.end != TransferEnd::Superseded && report.end != TransferEnd::Cancelled);
    require((report.end == TransferEnd::Error) == report.error.has_value());
    require(receiveResult(report) >= -1 && report.stored >= 0 && report.stored <= report.total);
    if (report.whole()) {
        // What lies there is what the first header has announced. Nothing cuts a file, so that a repeated header may
        // have begun a shorter one over it.
        require(QFileInfo(report.path).size() >= *report.announced);
    }
    QFile::remove(report.path);
    return 0;
}
