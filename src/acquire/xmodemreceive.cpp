// SPDX-License-Identifier: MIT
// The older shape of the receive loop: data blocks only, true handling of repeated blocks, and a fall back to a
// checksum of one byte. It shows nothing, cannot be cancelled and stands apart from every path of the program.
#include "acquire/blockloop.h"
#include "acquire/crc16.h"

#include <QByteArrayView>

namespace sixtrace {

namespace {

const std::function<void()> kNoYield = [] {};

int sumOf(QByteArrayView data) {
    int sum = 0;
    for (const char byte : data) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

class XModem : private BlockLoop {
public:
    XModem(SerialReceive& receive, const TransferPass& pass)
        : BlockLoop(receive, pass) {}

    TransferReport run() {
        TransferReport report;
        report.path = QStringLiteral("test.bmp");
        const Outcome opened = m_pass.file().open(report.path);
        const Result<TransferEnd> end = opened ? receiveBlocks() : Result<TransferEnd>(opened.error());
        report.end = end ? end.value() : TransferEnd::Error;
        if (!end) {
            report.error = end.error();
        }
        report.total = TotalBytes;
        m_pass.file().close();
        return report;
    }

private:
    Result<TransferEnd> receiveBlocks();
    Result<Next> takeBlock();
    [[nodiscard]] bool readBlock(int size);

    bool m_withCrc = true;
};

Result<TransferEnd> XModem::receiveBlocks() {
    m_line.ReadFlush(kNoYield);
    m_line.WriteByte(SendByte);
    for (;;) {
        const Result<Next> next = takeBlock();
        if (!next) {
            return next.error();
        }
        if (m_pass.ended()) {
            return TransferEnd::Superseded;
        }
        if (m_line.lost()) {
            return RuntimeError::of(ErrorNumber::DeviceIo);
        }
        if (next.value() == Next::Block) {
            continue;
        }
        if (next.value() == Next::End) {
            m_line.WriteByte(line::kAcknowledge);
            return TransferEnd::Finished;
        }
        if (next.value() == Next::Retry) {
            ++Retries;
        }
        if (Retries == kMostRetries) {
            if (SendByte != line::kRequestCrc) {
                SendByte = line::kAbort;
                sendAbort();
                return TransferEnd::BrokenOff;
            }
            m_withCrc = false;
            SendByte = line::kNegativeAcknowledge;
            Retries = 1;
        }
        m_line.ReadFlush(kNoYield);
        m_line.WriteByte(SendByte);
    }
}

Result<XModem::Next> XModem::takeBlock() {
    const Start start = readStart();
    if (start.next != Next::Block) {
        return start.next;
    }
    if (!readBlock(start.size)) {
        return Next::Retry;
    }
    const bool repeated = start.number == ((BlockNo - 1) & 0xFF);
    if (!repeated && start.number != (BlockNo & 0xFF)) {
        return Next::Retry;
    }
    if (!repeated) {
        const Outcome counted = countBlock(start.size);
        const Outcome written = counted ? m_pass.file().write(data(start.size)) : counted;
        if (!written) {
            return written.error();
        }
    }
    Retries = 0;
    answer(line::kAcknowledge);
    return Next::Block;
}

bool XModem::readBlock(int size) {
    for (int i = 0; i < size; ++i) {
        const int byte = readByte();
        if (byte < 0) {
            return false;
        }
        m_receive.RecvBlock[static_cast<std::size_t>(i)] = static_cast<char>(byte);
    }
    const int first = readByte();
    if (first < 0 || !m_withCrc) {
        return first >= 0 && sumOf(data(size)) == first;
    }
    const int second = readByte();
    return second >= 0 && crc16(data(size)) == ((first << 8) | second);
}

} // namespace

TransferReport SerialReceive::XModemReceive(const TransferPass& pass) {
    return XModem(*this, pass).run();
}

} // namespace sixtrace
