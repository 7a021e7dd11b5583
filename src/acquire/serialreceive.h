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

/// A header was read: the file's name as it came over the line, and the size that it tells.
struct HeaderRead {
    QString name;
    std::int32_t size = 0;
};
/// A bitmap goes to a path of its own.
struct StoresAs {
    QString path;
};
/// Data bytes, padding included, that came before the file's last block.
struct BytesCame {
    std::int32_t total = 0;
};
/// A block was accepted.
struct BlockTaken {
    int next = 1; ///< number of the data block that is due
    std::int32_t total = 0;
    std::int32_t size = 0;
};
/// A block failed, or something else came in its place.
struct Retried {
    int retries = 0;
};
/// One step of a receive, in the order in which a window shows them.
using ReceiveStep = std::variant<HeaderRead, StoresAs, BytesCame, BlockTaken, Retried>;

/// What a receive is to do, and whom it asks and tells meanwhile.
struct ReceiveJob {
    QString path;         ///< where the file goes
    QString bitmapFolder; ///< with a separator at its end; a bitmap goes here by its bare name. Empty: current folder
    std::function<bool()> cancelled = [] { return false; };
    std::function<void(const ReceiveStep& step)> show = [](const ReceiveStep&) {};
    std::function<void()> yield = [] {}; ///< lets waiting events run
};

/// The receiving side of the block protocol, over a byte port: one file per transfer, a header block first. It keeps
/// what outlives a transfer and is not responsible for opening the port.
class SerialReceive {
public:
    explicit SerialReceive(BytePort& port)
        : m_port(port) {}

    /// Time-out of every protocol read in milliseconds; 0 reads without limit.
    std::int16_t ReadTimeoutMs = 0;
    /// Data field of the block being handled. A short header block runs on into what is left from before.
    std::array<char, line::kLongData> RecvBlock{};

    /// Receives the file that the instrument sends.
    [[nodiscard]] TransferReport YModemReceive(const TransferPass& pass, const ReceiveJob& job);
    /// The older shape of the same loop, without header block, into "test.bmp" of the current folder. Nothing calls it.
    [[nodiscard]] TransferReport XModemReceive(const TransferPass& pass);

    [[nodiscard]] BytePort& port() { return m_port; }

private:
    BytePort& m_port;
};

/// The 32-bit result of a receive: the data bytes that came, padding included, or -1 after a failure or a cancel.
[[nodiscard]] std::int32_t receiveResult(const TransferReport& report);

/// An amount as the receive window shows it: in " b" while the file has at most 3 KiB, else in whole " k".
[[nodiscard]] QString amountText(std::int32_t bytes, std::int32_t fileSize);

} // namespace sixtrace
