// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace sixtrace {

/// How a wait for bytes ended.
enum class Waited {
    Enough,   ///< the bytes have come
    TimedOut, ///< the time limit has passed
    Lost,     ///< the line has gone and there was no time limit: the wait would never have ended
};

/// A line to send bytes to and to receive bytes from, with a receive buffer and a clock. Protocols run over this
/// interface: in the program it is a serial port, in tests a script.
class BytePort {
public:
    BytePort() = default;
    BytePort(const BytePort&) = delete;
    BytePort& operator=(const BytePort&) = delete;
    virtual ~BytePort() = default;

    /// The number of bytes that have come in and were not read. The buffer is bounded: a sender that fills it has to
    /// wait.
    [[nodiscard]] virtual int InBufferCount() = 0;
    /// Drops all bytes that were not read.
    virtual void discard() = 0;
    /// Reads the next bytes, at most `count` of them.
    [[nodiscard]] virtual QByteArray Input(int count) = 0;
    /// Sends bytes. On a line that has gone they are lost.
    virtual void Output(const QByteArray& bytes) = 0;

    /// Waits until `count` bytes can be read, at most `timeoutMs` milliseconds; 0 sets no limit. Events of the program
    /// run during the wait.
    [[nodiscard]] virtual Waited waitForBytes(int count, int timeoutMs) = 0;
    /// A steady clock, in milliseconds.
    [[nodiscard]] virtual qint64 clock() = 0;
};

} // namespace sixtrace
