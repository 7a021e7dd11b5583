// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace sixtrace {

/// How a wait for bytes ended.
enum class Waited {
    Enough,   ///< the bytes are there
    TimedOut, ///< the time is over
    Lost,     ///< there was no time limit and the line is gone: nothing would ever end the wait
};

/// A line that bytes go in and out of, with a receive buffer that can be counted, read and emptied, and with the clock
/// that waiting on it needs. Protocols run over this interface: in the program it is a serial port, in tests a script.
class BytePort {
public:
    BytePort() = default;
    BytePort(const BytePort&) = delete;
    BytePort& operator=(const BytePort&) = delete;
    virtual ~BytePort() = default;

    /// Bytes that have come in and wait to be read. The buffer is bounded; a sender that fills it has to wait.
    [[nodiscard]] virtual int InBufferCount() = 0;
    /// Throws the waiting bytes away.
    virtual void discard() = 0;
    /// Takes up to `count` waiting bytes.
    [[nodiscard]] virtual QByteArray Input(int count) = 0;
    /// Sends. On a line that is gone the bytes are lost.
    virtual void Output(const QByteArray& bytes) = 0;

    /// Sleeps until `count` bytes wait or `timeoutMs` milliseconds are over; 0 waits without limit. Events of the
    /// program run meanwhile.
    [[nodiscard]] virtual Waited waitForBytes(int count, int timeoutMs) = 0;
    /// A steady clock, in milliseconds.
    [[nodiscard]] virtual qint64 clock() = 0;
};

} // namespace sixtrace
