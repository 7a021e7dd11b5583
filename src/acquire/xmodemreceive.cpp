// SPDX-License-Identifier: MIT
// The older loop. It has no header block, drops a block that comes twice, and falls back to a checksum of one byte. It
// shows nothing and cannot be cancelled. No part of the program calls it.
#include "acquire/blockloop.h"
#include "acquire/crc16.h"

#include <QByteArrayView>

#include <span>

namespace sixtrace {

namespace {

/// The sum of the bytes, not reduced to one byte: a block with a sum above 255 never matches its checksum.
int sumOf(QByteArrayView data) {
    int sum = 0;
    for (const char byte : data) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

class XModem final : public BlockLoop {
public:
    XModem(SerialReceive& receive, const TransferPass& pass, const ReceiveJob& job)
        : BlockLoop(receive, pass, job) {
        m_report.path = job.path;
    }

private:
    Outcome begin() override { return m_pass.file().open(m_report.path); }
    bool readData(int size) override;
    Outcome takeNext(int size) override {
        const Outcome counted = countBlock(size);
        return counted ? m_pass.file().write(data(size)) : counted;
    }
    Outcome takeNumberBefore() override { return success(); }
    void askAgain() override { m_line.WriteByte(SendByte); }
    void fallBack() override { m_withCrc = false; }
    void endTransfer() override { m_line.WriteByte(line::kAcknowledge); }

    bool m_withCrc = true;
};

bool XModem::readData(int size) {
    for (char& place : std::span(m_receive.RecvBlock).first(static_cast<std::size_t>(size))) {
        const std::optional<int> byte = readByte();
        if (!byte) {
            return false;
        }
        place = static_cast<char>(*byte);
    }
    const std::optional<int> first = readByte();
    if (!first || !m_withCrc) {
        return first && sumOf(data(size)) == *first;
    }
    const std::optional<int> second = readByte();
    return second && crc16(data(size)) == ((*first << 8) | *second);
}

} // namespace

TransferReport SerialReceive::XModemReceive(const TransferPass& pass) {
    ReceiveJob job;
    job.path = QStringLiteral("test.bmp");
    return XModem(*this, pass, job).run();
}

} // namespace sixtrace
