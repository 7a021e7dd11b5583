// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/transfergate.h"
#include "acquire/transferreport.h"
#include "platform/ports/ttlink.h"

#include <QString>

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

namespace sixtrace {

inline constexpr int kUsbHeaderSize = 12;
inline constexpr int kUsbBlockSize = 64;
using UsbHeader = std::array<char, kUsbHeaderSize>;

/// The count of data bytes that a header announces: (byte 2 * 256 + byte 1) * 256000 / 1000 + byte 0, with a 16-bit
/// sum and a 32-bit product; error 6 where either overflows. So it is at most 2147583, which bounds what a transfer
/// takes of memory.
[[nodiscard]] Result<std::int32_t> usbLength(const UsbHeader& header);
/// Whether a header announces a bitmap.
[[nodiscard]] bool usbIsBitmap(const UsbHeader& header);

/// What the sentences for the user are, by language (0 Chinese, otherwise English).
[[nodiscard]] QString usbOpenFailedText(int languageId);
[[nodiscard]] QString usbDataFailedText(int languageId);
[[nodiscard]] QString usbErrorText(const RuntimeError& error);

/// What a header has announced.
struct UsbAnnounced {
    std::int32_t length = 0;
    std::int32_t blocks = 0; ///< whole blocks of 64 bytes; the rest comes behind them
    bool bitmap = false;
};

/// What an exchange is to do, and whom it asks and tells meanwhile.
struct UsbJob {
    /// Where the file goes, asked once the header has come; an error ends the exchange as a run-time error.
    std::function<Result<QString>(const UsbAnnounced& announced)> storeAt;
    std::function<bool()> cancelled = [] { return false; };
    std::function<void(std::int32_t block)> blockCame = [](std::int32_t) {}; ///< counted from 0
    std::function<void()> yield = [] {};                                     ///< lets waiting events run
};

/// "START", header, blocks of 64 bytes, the rest, one file, over a link that is open. The link is the caller's to
/// close. The last, short read is not judged by the exchange, only told by the report: the file then ends in zero
/// bytes.
[[nodiscard]] TransferReport exchangeUsb(const TransferPass& pass, TtLink& link, const UsbJob& job);

} // namespace sixtrace
