// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

#include <cstdint>

namespace sixtrace {

/// The check value of a block, CRC-16/XMODEM: polynomial 0x1021, initial value 0, no reflection, no final exclusive or.
[[nodiscard]] std::uint16_t crc16(QByteArrayView data);

} // namespace sixtrace
