// SPDX-License-Identifier: MIT
// The block receiver against a sender that does whatever the bytes say: each byte that the receiver sends is answered
// by the next record of the input, raw bytes or a block with a right check value.
#include "acquire/crc16.h"
#include "acquire/serialreceive.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>
#include <memory>

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

class SilentForm final : public ReceiveForm {
public:
    explicit SilentForm(QString path)
        : m_path(std::move(path)) {}
    QString Text2() override { return m_path; }
    void setText1(const QString&) override {}
    void setText2(const QString& path) override { require(!path.contains(u'/')); }
    void setText3(int blockNo) override { require(blockNo >= 1); }
    void setText4(int retries) override { require(retries >= 0 && retries <= 5); }
    void setAmounts(const QString&, const QString&) override {}
    void setBarMaximum(std::int32_t) override {}
    void setBar(std::int32_t) override {}
    void yield() override {}

private:
    QString m_path;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const auto model = std::make_unique<publicM>();
    QDir::setCurrent(folder.path());
    FuzzedPort port(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    SilentForm form(folder.filePath(QStringLiteral("got.bin")));
    SerialReceive receive(port, form, *model);
    receive.ReadTimeoutMs = 10000;
    const auto result = receive.YModemReceive();
    require(!result.ok() || result.value() >= -1);
    require(!receive.running());
    QFile::remove(model->ReceivedFile);
    return 0;
}
