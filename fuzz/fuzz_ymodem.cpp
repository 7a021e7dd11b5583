// SPDX-License-Identifier: MIT
// The block receiver with a sender that the input controls. The sender answers each byte of the receiver with the next
// record of the input: raw bytes, or a block with a correct check value.
#include "acquire/crc16.h"
#include "acquire/serialreceive.h"
#include "require.h"
#include "scratchfolder.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cstdint>

namespace {

using namespace sixtrace;

/// Allocates as little memory as possible, because the receiver asks for each byte alone.
class FuzzedPort final : public BytePort {
public:
    explicit FuzzedPort(QByteArrayView script)
        : m_script(script) {
        m_waiting.reserve(kRoom);
    }

    int InBufferCount() override { return static_cast<int>(m_waiting.size() - m_taken); }
    void discard() override {
        m_waiting.resize(0);
        m_taken = 0;
    }
    /// The result is valid until the next call.
    QByteArray Input(int count) override {
        const qsizetype given = std::min<qsizetype>(count, InBufferCount());
        const char* const from = m_waiting.constData() + m_taken;
        m_taken += given;
        return QByteArray::fromRawData(from, given);
    }
    void Output(const QByteArray& bytes) override {
        for (const char byte : bytes) {
            require(byte == 67 || byte == 15 || byte == 6 || byte == 18 || byte == 8);
            answer();
        }
    }
    Waited waitForBytes(int count, int timeoutMs) override {
        if (InBufferCount() >= count) {
            return Waited::Enough;
        }
        m_clock += timeoutMs;
        return timeoutMs == 0 ? Waited::Lost : Waited::TimedOut;
    }
    qint64 clock() override { return m_clock; }

private:
    static constexpr qsizetype kRoom = 2048;

    int next() { return m_at < m_script.size() ? static_cast<unsigned char>(m_script[m_at++]) : 0; }
    QByteArrayView take(qsizetype count) {
        const QByteArrayView bytes = m_script.sliced(m_at, std::min(count, m_script.size() - m_at));
        m_at += bytes.size();
        return bytes;
    }
    void answer() {
        if (m_at >= m_script.size()) {
            return;
        }
        const int kind = next() % 4;
        if (kind == 0) {
            m_waiting.append(take(next()));
        } else if (kind == 3) {
            m_waiting.append(static_cast<char>(line::kEndOfTransmission));
        } else {
            const int size = kind == 1 ? line::kShortData : line::kLongData;
            const int number = next();
            const char filling = static_cast<char>(next());
            const QByteArrayView told = take(next() * (kind == 1 ? 1 : 4));
            for (const int byte : {kind, number, 255 - number}) {
                m_waiting.append(static_cast<char>(byte));
            }
            const qsizetype start = m_waiting.size();
            m_waiting.append(told.first(std::min<qsizetype>(told.size(), size)));
            m_waiting.append(start + size - m_waiting.size(), filling);
            const std::uint16_t crc = crc16(QByteArrayView(m_waiting).sliced(start));
            m_waiting.append(static_cast<char>(crc >> 8));
            m_waiting.append(static_cast<char>(crc & 0xFF));
        }
    }

    QByteArrayView m_script;
    qsizetype m_at = 0;
    QByteArray m_waiting;
    qsizetype m_taken = 0; ///< bytes of m_waiting that were read
    qint64 m_clock = 0;
};

/// Checks what a window would show, and records the files that were begun.
void checkStep(const ReceiveStep& step, const QString& folder, QStringList& files) {
    if (const auto* bitmap = std::get_if<StoresAs>(&step)) {
        require(bitmap->path.startsWith(folder) && !bitmap->path.sliced(folder.size()).contains(u'/'));
        files.append(bitmap->path);
    } else if (const auto* block = std::get_if<BlockTaken>(&step)) {
        require(block->next >= 1);
    } else if (const auto* retried = std::get_if<Retried>(&step)) {
        require(retried->retries >= 0 && retried->retries <= 5);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFolder folder;
    static const QString got = folder.filePath(QStringLiteral("got.bin"));
    static const QString bitmapFolder = folder.path() + u'/';
    FuzzedPort port(QByteArrayView(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    SerialReceive receive(port);
    receive.ReadTimeoutMs = 10000;
    TransferGate gate;
    TransferReport report;
    QStringList files(got);
    {
        const auto pass = gate.enter();
        report = receive.YModemReceive(
            *pass, {.path = got, .bitmapFolder = bitmapFolder, .show = [&files](const ReceiveStep& step) {
                        checkStep(step, bitmapFolder, files);
                    }});
    }
    require(!gate.held());
    require(report.end != TransferEnd::Superseded && report.end != TransferEnd::Cancelled);
    require((report.end == TransferEnd::Error) == report.error.has_value());
    require(receiveResult(report) >= -1 && report.stored >= 0 && report.stored <= report.total);
    if (report.whole()) {
        // The file is at least as long as announced. It may be longer: files are never cut, and a repeated header may
        // have announced a shorter one.
        require(QFileInfo(report.path).size() >= *report.announced);
    }
    for (const QString& file : files) {
        QFile::remove(file);
    }
    return 0;
}
