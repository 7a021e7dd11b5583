// SPDX-License-Identifier: MIT
#include "acquire/serialreceive.h"

#include "acquire/crc16.h"
#include "platform/numbers.h"

#include <QByteArrayView>
#include <QScopedValueRollback>

#include <algorithm>
#include <limits>
#include <optional>

namespace sixtrace {

namespace {

constexpr int kSilenceMs = 100;
constexpr qint64 kLongestFlushMs = 10000;
constexpr int kMostRetries = 5;
constexpr int kAbortRepeats = 5;

/// Amounts up to this many KiB are shown in bytes.
constexpr double kLargestInBytes = 3.0;

std::optional<std::int32_t> checked(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

} // namespace

QString withoutFolder(const QString& name) {
    const auto isSeparator = [](QChar c) { return c == u'/' || c == u'\\' || c == u':'; };
    const auto last = std::find_if(name.crbegin(), name.crend(), isSeparator);
    return name.right(std::distance(name.crbegin(), last));
}

void SerialReceive::WriteByte(int byte) {
    m_port.discard();
    m_port.Output(QByteArray(1, static_cast<char>(byte)));
}

int SerialReceive::SerialInputBlock(char* buffer, int count, int timeoutMs) {
    switch (m_port.waitForBytes(count, timeoutMs)) {
    case Waited::Enough:
        break;
    case Waited::Lost:
        m_lost = true;
        return -1;
    case Waited::TimedOut:
        return -1;
    }
    const QByteArray bytes = m_port.Input(count);
    if (bytes.size() != count) {
        return -1;
    }
    std::copy(bytes.cbegin(), bytes.cend(), buffer);
    return count;
}

int SerialReceive::ReadByteWithTimeout(int timeoutMs) {
    char byte = 0;
    return SerialInputBlock(&byte, 1, timeoutMs) == 1 ? static_cast<int>(static_cast<unsigned char>(byte)) : -1;
}

void SerialReceive::ReadFlush() {
    const qint64 start = m_port.clock();
    while (ReadByteWithTimeout(kSilenceMs) != -1) {
        m_port.discard(); // the rest of what has come would be read and dropped byte by byte
        if (m_port.clock() - start > kLongestFlushMs) {
            return;
        }
        m_form.yield();
    }
}

Result<std::int32_t> SerialReceive::YModemReceive() {
    const QScopedValueRollback<bool> running(m_running, true);
    m_lost = false;
    m_model.XferCancel = 0;
    Retries = 0;
    BlockNo = 1;
    TotalBytes = 0;
    FileSize = 0;
    SendByte = line::kRequestCrc;
    m_model.ReceivedFile = m_form.Text2();
    ReadFlush();
    WriteByte(line::kRequestCrc);
    Result<std::int32_t> result = receiveBlocks();
    m_file.close();
    return result;
}

Result<std::int32_t> SerialReceive::receiveBlocks() {
    for (;;) {
        m_form.yield();
        if (m_model.XferCancel == 1) {
            return abortTransfer();
        }
        const Result<Next> next = takeBlock();
        if (!next) {
            return next.error();
        }
        if (m_lost) {
            return RuntimeError::of(ErrorNumber::DeviceIo);
        }
        if (next.value() == Next::End) {
            return endTransfer();
        }
        if (next.value() == Next::Block) {
            continue;
        }
        if (next.value() == Next::Retry) {
            ++Retries;
        }
        if (retryAborts()) {
            return abortTransfer();
        }
        ReadFlush();
        SendByte = line::kNegativeAcknowledge;
        WriteByte(SendByte);
    }
}

/// Shows the retries and tells whether they are too many. Before the first answer of the receiver there is nothing to
/// abort: the count then begins anew with a negative acknowledge.
bool SerialReceive::retryAborts() {
    m_form.setText4(Retries);
    m_form.yield();
    if (Retries != kMostRetries) {
        return false;
    }
    if (SendByte != line::kRequestCrc) {
        SendByte = line::kAbort;
        return true;
    }
    SendByte = line::kNegativeAcknowledge;
    Retries = 1;
    return retryAborts();
}

/// One pass from the start byte to the acknowledge.
Result<SerialReceive::Next> SerialReceive::takeBlock() {
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
    if (!readCheckedBlock(size)) {
        return Next::Retry;
    }
    // A data block that comes twice has the number of the one before, and so is read as a header.
    const bool isHeader = number == ((BlockNo - 1) & 0xFF);
    if (!isHeader && number != (BlockNo & 0xFF)) {
        return Next::Retry;
    }
    const Outcome taken = isHeader ? takeHeader() : takeData(size);
    if (!taken) {
        return taken.error();
    }
    showProgress();
    SendByte = line::kAcknowledge;
    WriteByte(SendByte);
    if (BlockNo == 1 && number == 0) {
        SendByte = line::kRequestCrc;
        WriteByte(SendByte);
    }
    return Next::Block;
}

bool SerialReceive::readCheckedBlock(int size) {
    if (SerialInputBlock(RecvBlock.data(), size, ReadTimeoutMs) != size) {
        return false;
    }
    const int high = ReadByteWithTimeout(ReadTimeoutMs);
    if (high < 0) {
        return false;
    }
    const int low = ReadByteWithTimeout(ReadTimeoutMs);
    return low >= 0 && crc16(QByteArrayView(RecvBlock.data(), size)) == ((high << 8) | low);
}

/// The index of the first zero byte from `from` on, or -1 where the buffer ends without one.
int SerialReceive::readFieldEnd(int from) const {
    const auto end = std::find(RecvBlock.cbegin() + from, RecvBlock.cend(), '\0');
    return end == RecvBlock.cend() ? -1 : static_cast<int>(end - RecvBlock.cbegin());
}

Outcome SerialReceive::takeHeader() {
    const int nameEnd = readFieldEnd(0);
    const int sizeEnd = nameEnd < 0 ? -1 : readFieldEnd(nameEnd + 1);
    if (sizeEnd < 0) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    const QString name = QString::fromLocal8Bit(RecvBlock.data(), nameEnd);
    const QString sizeText = QString::fromLocal8Bit(RecvBlock.data() + nameEnd + 1, sizeEnd - nameEnd - 1);
    const auto size = toInt32(Val(sizeText));
    if (!size) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    FileSize = *size;
    m_form.setText1(name);
    const auto barMaximum = checked(std::int64_t{FileSize} + 1);
    if (!barMaximum) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    m_form.setBarMaximum(*barMaximum);
    if (name.endsWith(QLatin1String("bmp"))) {
        const QString bareName = withoutFolder(name);
        m_form.setText2(bareName);
        m_model.ReceivedFile = bareName;
    }
    return m_file.open(m_model.ReceivedFile);
}

Outcome SerialReceive::takeData(int size) {
    const auto total = checked(std::int64_t{TotalBytes} + size);
    if (BlockNo == std::numeric_limits<std::int16_t>::max() || !total) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    ++BlockNo;
    TotalBytes = *total;
    if (TotalBytes < FileSize) {
        m_form.setBar(TotalBytes);
        return m_file.write(QByteArray::fromRawData(RecvBlock.data(), size));
    }
    const auto surplus = checked(std::int64_t{TotalBytes} - FileSize);
    if (!surplus) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    const std::int64_t wanted = std::int64_t{size} - *surplus;
    return wanted > 0 ? m_file.write(QByteArray::fromRawData(RecvBlock.data(), wanted)) : success();
}

void SerialReceive::showProgress() {
    Retries = 0;
    m_form.setText3(BlockNo);
    m_form.setText4(Retries);
    const bool inBytes = FileSize / 1024.0 <= kLargestInBytes;
    const auto amount = [inBytes](std::int32_t bytes) -> QString {
        return inBytes ? QString::number(bytes) + QStringLiteral(" b")
                       : QString::number(bytes / 1024) + QStringLiteral(" k");
    };
    m_form.setAmounts(amount(TotalBytes), amount(FileSize));
}

std::int32_t SerialReceive::abortTransfer() {
    for (int i = 0; i < kAbortRepeats; ++i) {
        WriteByte(SendByte);
    }
    for (int i = 0; i < kAbortRepeats; ++i) {
        WriteByte(line::kAbortTail);
    }
    return -1;
}

std::int32_t SerialReceive::endTransfer() {
    WriteByte(line::kAcknowledge);
    WriteByte(line::kRequestCrc);
    static_cast<void>(ReadByteWithTimeout(ReadTimeoutMs)); // whatever it is, or nothing: the transfer is over
    WriteByte(line::kAcknowledge);
    return TotalBytes;
}

} // namespace sixtrace
