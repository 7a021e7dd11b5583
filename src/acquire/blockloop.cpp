// SPDX-License-Identifier: MIT
#include "acquire/blockloop.h"

#include <limits>

namespace sixtrace {

namespace {

constexpr int kAbortRepeats = 5;

} // namespace

std::optional<std::int32_t> checked(std::int64_t value) {
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

BlockLoop::Start BlockLoop::readStart() {
    const int start = readByte();
    if (start < 0) {
        return {Next::Retry};
    }
    SendByte = line::kNegativeAcknowledge;
    if (start == line::kEndOfTransmission) {
        return {Next::End};
    }
    if (start != line::kShortBlock && start != line::kLongBlock) {
        return {Next::Resend};
    }
    const int number = readByte();
    if (number < 0) {
        return {Next::Retry};
    }
    const int complement = readByte();
    if (complement < 0 || 255 - complement != number) {
        return {Next::Retry};
    }
    return {Next::Block, number, start == line::kShortBlock ? line::kShortData : line::kLongData};
}

void BlockLoop::answer(int byte) {
    SendByte = byte;
    m_line.WriteByte(byte);
}

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
