// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transfergate.h"
#include "platform/ports/byteport.h"

#include <functional>

namespace sixtrace {

/// The bytes of the block protocol. Negative acknowledge and abort are the instrument's own, not those of the
/// published protocol.
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

/// The serial line as one transfer uses it. Once another transfer has taken its place, it neither reads nor sends.
class SerialLine {
public:
    SerialLine(BytePort& port, const TransferPass& pass)
        : m_port(port)
        , m_pass(pass) {}

    /// The next byte, or -1 at the time-out; 0 ms waits without limit.
    [[nodiscard]] int ReadByteWithTimeout(int timeoutMs);
    /// Reads `count` bytes into `buffer`; gives `count`, or -1 when they are not all there in time. What has come then
    /// stays in the port.
    [[nodiscard]] int SerialInputBlock(char* buffer, int count, int timeoutMs);
    /// Reads until the line has been silent for 100 ms. A sender that never pauses is left alone after ten seconds.
    /// `yield` lets waiting events run.
    void ReadFlush(const std::function<void()>& yield);
    /// Sends a byte, after throwing away all that has come in.
    void WriteByte(int byte);

    /// Whether the line went away during a wait without limit.
    [[nodiscard]] bool lost() const { return m_lost; }

private:
    BytePort& m_port;
    const TransferPass& m_pass;
    bool m_lost = false;
};

} // namespace sixtrace
