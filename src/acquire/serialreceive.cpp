// SPDX-License-Identifier: MIT
#include "acquire/serialreceive.h"

#include "acquire/blockloop.h"
#include "acquire/crc16.h"
#include "platform/text/numbers.h"

#include <QByteArrayView>

#include <algorithm>
#include <optional>

namespace sixtrace {

namespace {

/// Amounts of a file up to this many KiB are shown in bytes.
constexpr double kLargestInBytes = 3.0;

/// One transfer with a header block.
class YModem : private BlockLoop {
public:
    YModem(SerialReceive& receive, const TransferPass& pass, const ReceiveJob& job)
        : BlockLoop(receive, pass)
        , m_job(job) {
        m_report.path = job.path;
    }

    TransferReport run() {
        m_line.ReadFlush(m_job.yield);
        m_line.WriteByte(line::kRequestCrc);
        const Result<TransferEnd> end = receiveBlocks();
        m_report.end = m_pass.ended() ? TransferEnd::Superseded : end ? end.value() : TransferEnd::Error;
        if (m_report.end == TransferEnd::Error) {
            m_report.error = end.error();
        }
        m_report.total = TotalBytes;
        m_pass.file().close();
        return m_report;
    }

private:
    Result<TransferEnd> receiveBlocks();
    Result<Next> takeBlock();
    [[nodiscard]] bool readCheckedBlock(int size);
    Outcome takeHeader();
    Outcome takeData(int size);
    Outcome store(qsizetype size);
    bool retryAborts();
    void endTransfer();
    [[nodiscard]] std::optional<qsizetype> readFieldEnd(qsizetype from) const;

    const ReceiveJob& m_job;
    TransferReport m_report;
    std::int32_t FileSize = 0;
};

Result<TransferEnd> YModem::receiveBlocks() {
    for (;;) {
        m_job.yield();
        if (m_job.cancelled()) {
            sendAbort();
            return TransferEnd::Cancelled;
        }
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
        if (next.value() == Next::End) {
            endTransfer();
            return TransferEnd::Finished;
        }
        if (next.value() == Next::Block) {
            continue;
        }
        if (next.value() == Next::Retry) {
            ++Retries;
        }
        if (retryAborts()) {
            sendAbort();
            return TransferEnd::BrokenOff;
        }
        m_line.ReadFlush(m_job.yield);
        answer(line::kNegativeAcknowledge);
    }
}

/// Shows the retries and tells whether they are too many. Before the first answer of the receiver there is nothing to
/// abort: the count then begins anew with a negative acknowledge.
bool YModem::retryAborts() {
    m_job.show(Retried{Retries});
    m_job.yield();
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
Result<YModem::Next> YModem::takeBlock() {
    const Start start = readStart();
    if (start.next != Next::Block) {
        return start.next;
    }
    if (!readCheckedBlock(start.size)) {
        return Next::Retry;
    }
    // A data block that comes twice has the number of the one before, and so is read as a header.
    const bool isHeader = start.number == ((BlockNo - 1) & 0xFF);
    if (!isHeader && start.number != (BlockNo & 0xFF)) {
        return Next::Retry;
    }
    const Outcome taken = isHeader ? takeHeader() : takeData(start.size);
    if (!taken) {
        return taken.error();
    }
    Retries = 0;
    m_job.show(BlockTaken{BlockNo, TotalBytes, FileSize});
    answer(line::kAcknowledge);
    if (BlockNo == 1 && start.number == 0) {
        answer(line::kRequestCrc);
    }
    return Next::Block;
}

bool YModem::readCheckedBlock(int size) {
    if (m_line.SerialInputBlock(m_receive.RecvBlock.data(), size, m_receive.ReadTimeoutMs) != size) {
        return false;
    }
    const int high = readByte();
    if (high < 0) {
        return false;
    }
    const int low = readByte();
    return low >= 0 && crc16(data(size)) == ((high << 8) | low);
}

/// The index of the first zero byte from `from` on; nothing where the buffer ends without one.
std::optional<qsizetype> YModem::readFieldEnd(qsizetype from) const {
    const auto& block = m_receive.RecvBlock;
    const auto end = std::find(block.cbegin() + from, block.cend(), '\0');
    return end == block.cend() ? std::nullopt : std::optional<qsizetype>(end - block.cbegin());
}

Outcome YModem::takeHeader() {
    const auto nameEnd = readFieldEnd(0);
    const auto sizeEnd = nameEnd ? readFieldEnd(*nameEnd + 1) : std::nullopt;
    if (!sizeEnd) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    const char* field = m_receive.RecvBlock.data();
    const QString name = QString::fromLocal8Bit(field, *nameEnd);
    const auto size = toInt32(Val(QString::fromLocal8Bit(field + *nameEnd + 1, *sizeEnd - *nameEnd - 1)));
    if (!size) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    FileSize = *size;
    m_job.show(HeaderRead{name, FileSize});
    if (!checked(std::int64_t{FileSize} + 1)) {
        return RuntimeError::of(ErrorNumber::Overflow); // the bar ends at the size plus one
    }
    m_report.announced = m_report.announced.value_or(FileSize);
    m_report.bitmap = name.endsWith(QLatin1String("bmp"));
    if (m_report.bitmap) {
        m_report.path = m_job.bitmapFolder + withoutFolder(name);
        m_job.show(StoresAs{m_report.path});
    }
    m_report.inOrder = m_report.inOrder && TotalBytes == 0;
    m_report.stored = 0;
    return m_pass.file().open(m_report.path);
}

Outcome YModem::takeData(int size) {
    const Outcome counted = countBlock(size);
    if (!counted) {
        return counted;
    }
    if (TotalBytes < FileSize) {
        m_job.show(BytesCame{TotalBytes});
        return store(size);
    }
    const auto surplus = checked(std::int64_t{TotalBytes} - FileSize);
    if (!surplus) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    const std::int64_t wanted = std::int64_t{size} - *surplus;
    m_report.inOrder = m_report.inOrder && wanted > 0;
    return wanted > 0 ? store(static_cast<qsizetype>(wanted)) : success();
}

Outcome YModem::store(qsizetype size) {
    Outcome written = m_pass.file().write(data(size));
    if (written) {
        m_report.stored += static_cast<std::int32_t>(size);
    }
    return written;
}

void YModem::endTransfer() {
    m_line.WriteByte(line::kAcknowledge);
    m_line.WriteByte(line::kRequestCrc);
    static_cast<void>(readByte()); // whatever it is, or nothing: the transfer is over
    m_line.WriteByte(line::kAcknowledge);
}

} // namespace

TransferReport SerialReceive::YModemReceive(const TransferPass& pass, const ReceiveJob& job) {
    return YModem(*this, pass, job).run();
}

std::int32_t receiveResult(const TransferReport& report) {
    return report.end == TransferEnd::Finished ? report.total : -1;
}

QString amountText(std::int32_t bytes, std::int32_t fileSize) {
    return fileSize / 1024.0 <= kLargestInBytes ? QString::number(bytes) + QStringLiteral(" b")
                                                : QString::number(bytes / 1024) + QStringLiteral(" k");
}

QString withoutFolder(const QString& name) {
    const auto isSeparator = [](QChar c) { return c == u'/' || c == u'\\' || c == u':'; };
    const auto last = std::find_if(name.crbegin(), name.crend(), isSeparator);
    return name.right(std::distance(name.crbegin(), last));
}

} // namespace sixtrace
