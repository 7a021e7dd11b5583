// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/serialline.h"
#include "acquire/transferreport.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <variant>

namespace sixtrace {

/// A header was read.
struct HeaderRead {
    QString name;          ///< as it came over the line
    std::int32_t size = 0; ///< of the file in bytes, as the header tells it
};
/// The file is a bitmap, which is stored at a path of its own.
struct StoresAs {
    QString path;
};
/// A data block came that is not the last one of the file.
struct BytesCame {
    std::int32_t total = 0; ///< data bytes so far, padding included
};
/// A block was accepted.
struct BlockTaken {
    int next = 1;           ///< number of the data block that is due
    std::int32_t total = 0; ///< data bytes so far, padding included
    std::int32_t size = 0;  ///< of the file in bytes, as the header tells it
};
/// A block failed, or a byte came that begins no block.
struct Retried {
    int retries = 0; ///< counted failures since the last block that was accepted, 0 to 5
};
/// One step of a receive, in the order in which a window shows them.
using ReceiveStep = std::variant<HeaderRead, StoresAs, BytesCame, BlockTaken, Retried>;

/// What the caller of a receive decides and learns during it.
struct ReceiveJob {
    QString path;         ///< of the file, unless it is a bitmap
    QString bitmapFolder; ///< with a separator at its end: a bitmap is stored here. Empty for the current folder
    std::function<bool()> cancelled = [] { return false; };
    std::function<void(const ReceiveStep& step)> show = [](const ReceiveStep&) {};
    std::function<void()> yield = [] {}; ///< lets waiting events run
};

/// The receiving side of the block protocol over a byte port, which the caller opens. It keeps what must survive a
/// transfer: the read time-out and the buffer of a block.
class SerialReceive {
public:
    explicit SerialReceive(BytePort& port)
        : m_port(port) {}

    /// Time-out of every read in milliseconds; 0 sets no limit. It may change during a transfer.
    std::int16_t ReadTimeoutMs = 0;
    /// Data field of the block being handled. After the bytes of a short block it still holds those of longer ones
    /// before.
    std::array<char, line::kLongData> RecvBlock{};

    /// Receives the file that the instrument sends, header block first.
    [[nodiscard]] TransferReport YModemReceive(const TransferPass& pass, const ReceiveJob& job);
    /// The older loop, without a header block, which stores to "test.bmp" in the current folder. Nothing calls it.
    [[nodiscard]] TransferReport XModemReceive(const TransferPass& pass);

    [[nodiscard]] BytePort& port() { return m_port; }

private:
    BytePort& m_port;
};

/// The 32-bit result of a receive: the data bytes that came, padding included, or -1 after a failure or a cancel.
[[nodiscard]] std::int32_t receiveResult(const TransferReport& report);

/// A number of bytes as the receive window shows it: in " b" when the file has at most 3 KiB, otherwise in whole " k".
[[nodiscard]] QString amountText(std::int32_t bytes, std::int32_t fileSize);

} // namespace sixtrace
