// SPDX-License-Identifier: MIT
#include "acquire/serialline.h"

#include <QByteArray>

#include <algorithm>

namespace sixtrace {

namespace {

constexpr int kSilenceMs = 100;
constexpr qint64 kLongestFlushMs = 10000;

} // namespace

void SerialLine::WriteByte(int byte) {
    if (m_pass.ended()) {
        return;
    }
    m_port.discard();
    m_port.Output(QByteArray(1, static_cast<char>(byte)));
}

int SerialLine::SerialInputBlock(char* buffer, int count, int timeoutMs) {
    if (m_pass.ended()) {
        return -1;
    }
    const Waited waited = m_port.waitForBytes(count, timeoutMs);
    if (m_pass.ended()) {
        return -1; // the bytes, if there are any, are another transfer's
    }
    m_lost = m_lost || waited == Waited::Lost;
    if (waited != Waited::Enough) {
        return -1;
    }
    const QByteArray bytes = m_port.Input(count);
    if (bytes.size() != count) {
        return -1;
    }
    std::copy(bytes.cbegin(), bytes.cend(), buffer);
    return count;
}

int SerialLine::ReadByteWithTimeout(int timeoutMs) {
    char byte = 0;
    return SerialInputBlock(&byte, 1, timeoutMs) == 1 ? static_cast<int>(static_cast<unsigned char>(byte)) : -1;
}

void SerialLine::ReadFlush(const std::function<void()>& yield) {
    const qint64 start = m_port.clock();
    while (ReadByteWithTimeout(kSilenceMs) != -1) {
        m_port.discard(); // the rest of what has come would be read and dropped byte by byte
        if (m_port.clock() - start > kLongestFlushMs) {
            return;
        }
        yield();
    }
}

} // namespace sixtrace
