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

/// The number of data bytes that a header announces: (byte 2 * 256 + byte 1) * 256000 / 1000 + byte 0. The sum has 16
/// bits and the product 32; error 6 when either overflows. So the number is at most 2147583, which limits the memory
/// that a transfer takes.
[[nodiscard]] Result<std::int32_t> usbLength(const UsbHeader& header);
/// Whether a header announces a bitmap.
[[nodiscard]] bool usbIsBitmap(const UsbHeader& header);

// Sentences for the user.
[[nodiscard]] QString usbOpenFailedText(Language language);
[[nodiscard]] QString usbDataFailedText(Language language);
[[nodiscard]] QString usbErrorText(const RuntimeError& error);

/// What a header has announced.
struct UsbAnnounced {
    std::int32_t length = 0; ///< in bytes
    std::int32_t blocks = 0; ///< whole blocks of 64 bytes; the rest of the length comes after them
    bool bitmap = false;
};

/// What the caller of an exchange decides and learns during it.
struct UsbJob {
    /// Gives the path of the file. Called once the header has come; an error ends the exchange as a run-time error.
    std::function<Result<QString>(const UsbAnnounced& announced)> storeAt;
    std::function<bool()> cancelled = [] { return false; };
    std::function<void(std::int32_t block)> blockCame = [](std::int32_t) {}; ///< blocks are counted from 0
    std::function<void()> yield = [] {};                                     ///< lets waiting events run
};

/// Fetches one file over a link that is open: sends "START", reads the header, the blocks of 64 bytes and the rest, and
/// writes the file. The caller closes the link. A last read that comes short does not fail the exchange: the file then
/// ends in zero bytes, and the report tells how many bytes have come.
[[nodiscard]] TransferReport exchangeUsb(const TransferPass& pass, TtLink& link, const UsbJob& job);

} // namespace sixtrace
