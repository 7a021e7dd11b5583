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

bool SerialLine::SerialInputBlock(std::span<char> block, int timeoutMs) {
    if (m_pass.ended()) {
        return false;
    }
    const auto count = static_cast<int>(block.size());
    const Waited waited = m_port.waitForBytes(count, timeoutMs);
    if (m_pass.ended()) {
        return false; // bytes that have come during the wait belong to the other transfer
    }
    m_lost = m_lost || waited == Waited::Lost;
    if (waited != Waited::Enough) {
        return false;
    }
    const QByteArray bytes = m_port.Input(count);
    if (bytes.size() != count) {
        return false;
    }
    std::copy(bytes.cbegin(), bytes.cend(), block.begin());
    return true;
}

std::optional<int> SerialLine::ReadByteWithTimeout(int timeoutMs) {
    char byte = 0;
    return SerialInputBlock({&byte, 1}, timeoutMs) ? std::optional<int>(static_cast<unsigned char>(byte))
                                                   : std::nullopt;
}

void SerialLine::ReadFlush(const std::function<void()>& yield) {
    const qint64 start = m_port.clock();
    while (ReadByteWithTimeout(kSilenceMs)) {
        m_port.discard(); // reading the rest byte by byte would only drop it more slowly
        if (m_port.clock() - start > kLongestFlushMs) {
            return;
        }
        yield();
    }
}

} // namespace sixtrace
