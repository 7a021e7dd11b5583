// SPDX-License-Identifier: MIT
// The older shape of the receive loop: data blocks only, true handling of repeated blocks, and a fall back to a
// checksum of one byte. It shows nothing, cannot be cancelled and stands apart from every path of the program.
#include "acquire/crc16.h"
#include "acquire/serialreceive.h"

#include <QScopedValueRollback>

#include <limits>

namespace sixtrace {

namespace {

constexpr int kMostRetries = 5;

int sumOf(QByteArrayView data) {
    int sum = 0;
    for (const char byte : data) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

} // namespace

Result<std::int32_t> SerialReceive::XModemReceive() {
    const QScopedValueRollback<bool> running(m_running, true);
    m_lost = false;
    Retries = 0;
    BlockNo = 1;
    TotalBytes = 0;
    SendByte = line::kRequestCrc;
    const Outcome opened = m_file.open(QStringLiteral("test.bmp"));
    if (!opened) {
        return opened.error();
    }
    ReadFlush();
    WriteByte(SendByte);
    Result<std::int32_t> result = receivePlainBlocks();
    m_file.close();
    return result;
}

Result<std::int32_t> SerialReceive::receivePlainBlocks() {
    bool withCrc = true;
    for (;;) {
        const Result<Next> next = takePlainBlock(withCrc);
        if (!next) {
            return next.error();
        }
        if (m_lost) {
            return RuntimeError::of(ErrorNumber::DeviceIo);
        }
        if (next.value() == Next::Block) {
            continue;
        }
        if (next.value() == Next::End) {
            WriteByte(line::kAcknowledge);
            return TotalBytes;
        }
        if (next.value() == Next::Retry) {
            ++Retries;
        }
        if (Retries == kMostRetries) {
            if (SendByte != line::kRequestCrc) {
                SendByte = line::kAbort;
                return abortTransfer();
            }
            withCrc = false;
            SendByte = line::kNegativeAcknowledge;
            Retries = 1;
        }
        ReadFlush();
        WriteByte(SendByte);
    }
}

Result<SerialReceive::Next> SerialReceive::takePlainBlock(bool withCrc) {
    const int start = ReadByteWithTimeout(ReadTimeoutMs);
    if (start < 0) {
        return Next::Retry;
    }
    SendByte = line::kNegativeAcknowledge;
    if (start == line::kEndOfTransmission) {
        return Next::End;
    }
    if (start != line::kShortBlock && start != line::kLongBlock) {
        return Next::Resend;
    }
    const int number = ReadByteWithTimeout(ReadTimeoutMs);
    if (number < 0) {
        return Next::Retry;
    }
    const int complement = ReadByteWithTimeout(ReadTimeoutMs);
    if (complement < 0 || 255 - complement != number) {
        return Next::Retry;
    }
    const int size = start == line::kShortBlock ? line::kShortData : line::kLongData;
    if (!readPlainBlock(size, withCrc)) {
        return Next::Retry;
    }
    const bool repeated = number == ((BlockNo - 1) & 0xFF);
    if (!repeated && number != (BlockNo & 0xFF)) {
        return Next::Retry;
    }
    if (!repeated) {
        if (BlockNo == std::numeric_limits<std::int16_t>::max()) {
            return RuntimeError::of(ErrorNumber::Overflow);
        }
        ++BlockNo;
        TotalBytes += size; // 32766 blocks of 1024 bytes fit
        const Outcome written = m_file.write(QByteArray::fromRawData(RecvBlock.data(), size));
        if (!written) {
            return written.error();
        }
    }
    Retries = 0;
    SendByte = line::kAcknowledge;
    WriteByte(SendByte);
    return Next::Block;
}

bool SerialReceive::readPlainBlock(int size, bool withCrc) {
    for (int i = 0; i < size; ++i) {
        const int byte = ReadByteWithTimeout(ReadTimeoutMs);
        if (byte < 0) {
            return false;
        }
        RecvBlock[static_cast<std::size_t>(i)] = static_cast<char>(byte);
    }
    const QByteArrayView data(RecvBlock.data(), size);
    const int first = ReadByteWithTimeout(ReadTimeoutMs);
    if (first < 0 || !withCrc) {
        return first >= 0 && sumOf(data) == first;
    }
    const int second = ReadByteWithTimeout(ReadTimeoutMs);
    return second >= 0 && crc16(data) == ((first << 8) | second);
}

} // namespace sixtrace
