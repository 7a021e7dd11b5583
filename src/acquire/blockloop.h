// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/serialreceive.h"

namespace sixtrace {

/// What both receive loops have in common: the state of one transfer, the beginning of a block, and the abort.
class BlockLoop {
protected:
    enum class Next { Block, Retry, Resend, End };
    struct Start {
        Next next = Next::Retry; ///< Block: number and size hold
        int number = 0;
        int size = 0;
    };

    BlockLoop(SerialReceive& receive, const TransferPass& pass)
        : m_receive(receive)
        , m_pass(pass)
        , m_line(receive.port(), pass) {}

    /// Reads start byte, number and complement.
    [[nodiscard]] Start readStart();
    /// The next byte within the receiver's time-out, or -1. A cancel may shorten the time-out between two reads.
    [[nodiscard]] int readByte() { return m_line.ReadByteWithTimeout(m_receive.ReadTimeoutMs); }
    void answer(int byte);
    /// Sends what was last sent five times, and the tail.
    void sendAbort();
    /// Counts the bytes of a data block. Error 6 behind block 32767, or where the sum leaves 32 bits.
    [[nodiscard]] Outcome countBlock(int size);
    [[nodiscard]] QByteArray data(qsizetype size) const;

    SerialReceive& m_receive;
    const TransferPass& m_pass;
    SerialLine m_line;
    std::int16_t BlockNo = 1;
    std::int32_t TotalBytes = 0;
    int Retries = 0;
    int SendByte = line::kRequestCrc;
};

/// `value`, or nothing where it does not fit 32 bits.
[[nodiscard]] std::optional<std::int32_t> checked(std::int64_t value);

inline constexpr int kMostRetries = 5;

} // namespace sixtrace
