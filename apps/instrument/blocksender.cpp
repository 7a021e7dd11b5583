// SPDX-License-Identifier: MIT
#include "instrument/blocksender.h"

#include "acquire/crc16.h"
#include "acquire/serialline.h"

namespace sixtrace {

namespace {

constexpr char kDataFilling = 0x1A;
constexpr int kLostByte = 9;
const QByteArray kNoise = QByteArrayLiteral("\xA5\x5A\x7E");

QByteArray oneByte(int byte) {
    return {1, static_cast<char>(byte)};
}

void flip(QByteArray& bytes, qsizetype index) {
    bytes[index] = static_cast<char>(bytes[index] ^ 0x55);
}

} // namespace

BlockSender::BlockSender(QByteArray name, QByteArray content, FetchPlan plan)
    : m_name(std::move(name))
    , m_content(std::move(content))
    , m_plan(std::move(plan)) {}

QByteArray BlockSender::block(int number, QByteArray data, int size, char filling) {
    data.append(QByteArray(size - data.size(), filling));
    const std::uint16_t crc = crc16(data);
    QByteArray bytes = oneByte(size == line::kShortData ? line::kShortBlock : line::kLongBlock);
    bytes += oneByte(number & 0xFF) + oneByte(255 - (number & 0xFF)) + data;
    return bytes + oneByte(crc >> 8) + oneByte(crc & 0xFF);
}

QByteArray BlockSender::header(const QByteArray& name, const QByteArray& size) {
    const QByteArray field = name + '\0' + size + '\0';
    return block(0, field, field.size() > line::kShortData ? line::kLongData : line::kShortData, '\0');
}

QByteArray BlockSender::answer(unsigned char byte) {
    const bool twice = byte == m_previous;
    m_previous = byte;
    if (twice && begun() && (byte == line::kAbort || byte == line::kAbortTail)) {
        m_state = State::Aborted;
        return {};
    }
    if (m_silent || over()) {
        return {};
    }
    const bool resend = byte == line::kNegativeAcknowledge;
    const bool taken = byte == line::kAcknowledge;
    const bool request = byte == line::kRequestCrc;
    switch (m_state) {
    case State::Waiting:
        return resend || request ? sendHeader() : QByteArray();
    case State::HeaderSent:
        if (taken) {
            m_state = State::HeaderTaken;
        }
        return resend || request ? sendHeader() : QByteArray();
    case State::HeaderTaken:
        return resend || request ? sendData() : QByteArray();
    case State::DataSent:
        return taken ? sendNext() : resend ? sendData() : request ? sendHeader() : QByteArray();
    case State::EndSent:
        if (taken) {
            m_state = State::EndTaken;
        }
        return resend ? oneByte(line::kEndOfTransmission) : QByteArray();
    case State::EndTaken:
    case State::LastSent:
        if (resend || (request && m_state == State::EndTaken)) {
            m_state = State::LastSent;
            return block(0, {}, line::kShortData, '\0');
        }
        if (taken && m_state == State::LastSent) {
            m_state = State::Done;
        }
        return {};
    case State::Done:
    case State::Aborted:
    case State::Unplugged:
        return {};
    }
    return {};
}

QByteArray BlockSender::sendHeader() {
    m_state = State::HeaderSent;
    m_offset = 0;
    m_number = 1;
    return faulty(0, header(m_name, QByteArray::number(m_plan.told(static_cast<int>(m_content.size())))));
}

QByteArray BlockSender::sendData() {
    m_state = State::DataSent;
    const qsizetype left = m_content.size() - m_offset;
    if (left <= 0 || takeFault(FaultKind::EarlyEnd, m_number)) {
        m_state = State::EndSent;
        return oneByte(line::kEndOfTransmission);
    }
    m_blockSize = left <= line::kShortData ? line::kShortData : line::kLongData;
    return faulty(m_number, block(m_number, m_content.mid(m_offset, m_blockSize), m_blockSize, kDataFilling));
}

QByteArray BlockSender::sendNext() {
    if (!takeFault(FaultKind::Repeat, m_number)) {
        m_offset += m_blockSize;
        ++m_number;
    }
    return sendData();
}

/// Whether a fault has to happen at a block now. Each happens as many times as the plan says.
bool BlockSender::takeFault(FaultKind kind, int blockIndex) {
    const Fault* fault = m_plan.at(kind, blockIndex);
    if (fault == nullptr) {
        return false;
    }
    int& spent = m_spent[{kind, blockIndex}];
    if (spent >= fault->times) {
        return false;
    }
    ++spent;
    return true;
}

QByteArray BlockSender::faulty(int blockIndex, QByteArray bytes) {
    if (takeFault(FaultKind::Unplug, blockIndex)) {
        m_state = State::Unplugged;
        return {};
    }
    if (takeFault(FaultKind::Silence, blockIndex)) {
        m_silent = true;
        return {};
    }
    if (takeFault(FaultKind::Stop, blockIndex)) {
        m_silent = true;
        return bytes.left(bytes.size() / 2);
    }
    if (takeFault(FaultKind::LostBlock, blockIndex)) {
        return {};
    }
    m_late = takeFault(FaultKind::Late, blockIndex);
    if (takeFault(FaultKind::Crc, blockIndex)) {
        flip(bytes, bytes.size() - 1);
    }
    if (takeFault(FaultKind::Complement, blockIndex)) {
        flip(bytes, 2);
    }
    if (takeFault(FaultKind::Sequence, blockIndex)) {
        bytes[1] = static_cast<char>(blockIndex + 5);
        bytes[2] = static_cast<char>(255 - ((blockIndex + 5) & 0xFF));
    }
    if (takeFault(FaultKind::LostByte, blockIndex)) {
        bytes.remove(kLostByte, 1);
    }
    return takeFault(FaultKind::Noise, blockIndex) ? kNoise + bytes : bytes;
}

} // namespace sixtrace
