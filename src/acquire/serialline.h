// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transfergate.h"
#include "platform/ports/byteport.h"

#include <QByteArrayView>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace sixtrace {

/// The bytes of the block protocol. The values of refusal and abort are the instrument's own; the published protocol
/// has others.
namespace line {
inline constexpr int kShortBlock = 1;
inline constexpr int kLongBlock = 2;
inline constexpr int kEndOfTransmission = 4;
inline constexpr int kAcknowledge = 6;
inline constexpr int kAbortTail = 8;
inline constexpr int kNegativeAcknowledge = 15;
inline constexpr int kAbort = 18;
inline constexpr int kRequestCrc = 67;
inline constexpr int kShortData = 128;
inline constexpr int kLongData = 1024;
} // namespace line

/// The serial line as one transfer uses it. Once another transfer has taken the place of this one, it neither reads nor
/// sends.
class SerialLine {
public:
    SerialLine(BytePort& port, const TransferPass& pass)
        : m_port(port)
        , m_pass(pass) {}

    /// The next byte, 0 to 255; nothing when none comes within `timeoutMs` milliseconds. 0 ms waits without limit.
    [[nodiscard]] std::optional<int> ReadByteWithTimeout(int timeoutMs);
    /// Fills `block`. False when the bytes are not all there in time: those that have come then stay in the port.
    [[nodiscard]] bool SerialInputBlock(std::span<char> block, int timeoutMs);
    /// Reads and drops bytes until none has come for 100 ms, at most for ten seconds: a sender may never pause. Calls
    /// `yield`, which lets waiting events run, after each byte.
    void ReadFlush(const std::function<void()>& yield);
    /// Drops all bytes that have come in, then sends `byte`.
    void WriteByte(int byte);

    /// Whether the line has gone during a wait without limit.
    [[nodiscard]] bool lost() const { return m_lost; }

private:
    BytePort& m_port;
    const TransferPass& m_pass;
    bool m_lost = false;
};

} // namespace sixtrace
