// SPDX-License-Identifier: MIT
#include "acquire/blockloop.h"

#include <limits>

namespace sixtrace {

namespace {

constexpr int kMostRetries = 5;
constexpr int kAbortRepeats = 5;
constexpr int kNumberMask = 0xFF; ///< a block's number is one byte on the line

} // namespace

std::optional<std::int32_t> checked(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

TransferReport BlockLoop::run() {
    const Outcome begun = begin();
    const Result<TransferEnd> end = begun ? receiveBlocks() : Result<TransferEnd>(begun.error());
    m_report.end = m_pass.ended() ? TransferEnd::Superseded : end ? end.value() : TransferEnd::Error;
    if (m_report.end == TransferEnd::Error) {
        m_report.error = end.error();
    }
    m_report.total = TotalBytes;
    m_pass.file().close();
    return m_report;
}

Result<TransferEnd> BlockLoop::receiveBlocks() {
    m_line.ReadFlush(m_job.yield);
    m_line.WriteByte(SendByte);
    for (;;) {
        m_job.yield();
        if (m_job.cancelled()) {
            sendAbort();
            return TransferEnd::Cancelled;
        }
        const Result<Pass> pass = takeBlock();
        if (!pass) {
            return pass.error();
        }
        if (m_pass.ended()) {
            return TransferEnd::Superseded;
        }
        if (m_line.lost()) {
            return RuntimeError::of(ErrorNumber::DeviceIo);
        }
        if (pass.value() == Pass::EndCame) {
            endTransfer();
            return TransferEnd::Finished;
        }
        if (pass.value() == Pass::Taken) {
            continue;
        }
        if (pass.value() == Pass::Failed) {
            ++Retries;
        }
        if (retriesAreUsedUp()) {
            sendAbort();
            return TransferEnd::BrokenOff;
        }
        m_line.ReadFlush(m_job.yield);
        askAgain();
    }
}

Result<BlockLoop::Pass> BlockLoop::takeBlock() {
    const std::optional<int> start = readByte();
    if (!start) {
        return Pass::Failed;
    }
    SendByte = line::kNegativeAcknowledge;
    if (*start == line::kEndOfTransmission) {
        return Pass::EndCame;
    }
    if (*start != line::kShortBlock && *start != line::kLongBlock) {
        return Pass::Unknown;
    }
    const std::optional<int> number = readByte();
    const std::optional<int> complement = number ? readByte() : std::nullopt;
    if (!complement || 255 - *complement != *number) {
        return Pass::Failed;
    }
    const int size = *start == line::kShortBlock ? line::kShortData : line::kLongData;
    if (!readData(size)) {
        return Pass::Failed;
    }
    const bool isNumberBefore = *number == ((BlockNo - 1) & kNumberMask);
    if (!isNumberBefore && *number != (BlockNo & kNumberMask)) {
        return Pass::Failed;
    }
    const Outcome taken = isNumberBefore ? takeNumberBefore() : takeNext(size);
    if (!taken) {
        return taken.error();
    }
    Retries = 0;
    acknowledge(*number);
    return Pass::Taken;
}

/// Shows the retries and tells whether there have been too many. While only the request has been sent there is nothing
/// to abort: then a refusal takes its place, and the count begins again.
bool BlockLoop::retriesAreUsedUp() {
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
    fallBack();
    return retriesAreUsedUp();
}

void BlockLoop::acknowledge(int /*number*/) {
    answer(line::kAcknowledge);
}

void BlockLoop::answer(int byte) {
    SendByte = byte;
    m_line.WriteByte(byte);
}

/// Repeats the byte that was sent last. Only a transfer that has used up its retries sends the abort byte itself.
void BlockLoop::sendAbort() {
    for (int i = 0; i < kAbortRepeats; ++i) {
        m_line.WriteByte(SendByte);
    }
    for (int i = 0; i < kAbortRepeats; ++i) {
        m_line.WriteByte(line::kAbortTail);
    }
}

Outcome BlockLoop::countBlock(int size) {
    const auto total = checked(std::int64_t{TotalBytes} + size);
    if (BlockNo == std::numeric_limits<std::int16_t>::max() || !total) {
        return RuntimeError::of(ErrorNumber::Overflow);
    }
    ++BlockNo;
    TotalBytes = *total;
    return success();
}

QByteArray BlockLoop::data(qsizetype size) const {
    return QByteArray::fromRawData(m_receive.RecvBlock.data(), size);
}

} // namespace sixtrace
