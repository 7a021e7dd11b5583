// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/serialreceive.h"

namespace sixtrace {

/// One transfer of the block protocol, as far as the loop with a header block and the older one without agree: requests
/// and retries, the frame of a block, the order of the numbers, the abort and the end. A subclass says how the data
/// field is read and what a block means.
class BlockLoop {
public:
    BlockLoop(const BlockLoop&) = delete;
    BlockLoop& operator=(const BlockLoop&) = delete;
    virtual ~BlockLoop() = default;

    /// Receives until the instrument ends the transfer, or until it fails, is cancelled or superseded.
    [[nodiscard]] TransferReport run();

protected:
    BlockLoop(SerialReceive& receive, const TransferPass& pass, const ReceiveJob& job)
        : m_receive(receive)
        , m_pass(pass)
        , m_job(job)
        , m_line(receive.port(), pass) {}

    /// What has to succeed before the first request.
    [[nodiscard]] virtual Outcome begin() { return success(); }
    /// Reads the data field and its check value. False when a byte comes too late or the check value is wrong.
    [[nodiscard]] virtual bool readData(int size) = 0;
    /// Takes the block that is due.
    [[nodiscard]] virtual Outcome takeNext(int size) = 0;
    /// Takes a block with the number before the one that is due.
    [[nodiscard]] virtual Outcome takeNumberBefore() = 0;
    /// Answers a block with this number that has been taken.
    virtual void acknowledge(int number);
    /// Asks for a block that has failed once more.
    virtual void askAgain() = 0;
    /// Called when the fifth retry finds that the request alone has been sent so far.
    virtual void fallBack() {}
    /// Answers the instrument's end of the transmission.
    virtual void endTransfer() = 0;

    /// The next byte, 0 to 255; nothing at the receiver's time-out, which a cancel may shorten between two reads.
    [[nodiscard]] std::optional<int> readByte() { return m_line.ReadByteWithTimeout(m_receive.ReadTimeoutMs); }
    void answer(int byte);
    /// Counts a data block of `size` bytes. Error 6 after block 32767, or when the sum of the bytes leaves 32 bits.
    [[nodiscard]] Outcome countBlock(int size);
    /// The first `size` bytes of the data field.
    [[nodiscard]] QByteArray data(qsizetype size) const;

    SerialReceive& m_receive;
    const TransferPass& m_pass;
    const ReceiveJob& m_job;
    SerialLine m_line;
    TransferReport m_report;
    std::int16_t BlockNo = 1;
    std::int32_t TotalBytes = 0;
    int Retries = 0;
    int SendByte = line::kRequestCrc;

private:
    /// How one pass from the start byte to the acknowledge ended.
    enum class Pass {
        Taken,   ///< a block was taken and answered
        Failed,  ///< a block failed, which counts as a retry
        Unknown, ///< a byte came that begins nothing, which does not count
        EndCame, ///< the instrument ends the transmission
    };

    [[nodiscard]] Result<TransferEnd> receiveBlocks();
    [[nodiscard]] Result<Pass> takeBlock();
    [[nodiscard]] bool retriesAreUsedUp();
    void sendAbort();
};

/// `value`, or nothing when it does not fit 32 bits.
[[nodiscard]] std::optional<std::int32_t> checked(std::int64_t value);

} // namespace sixtrace
