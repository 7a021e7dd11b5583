// SPDX-License-Identifier: MIT
#include "acquire/crc16.h"

namespace sixtrace {

namespace {

constexpr unsigned kPolynomial = 0x1021;
constexpr unsigned kTopBit = 0x8000;

} // namespace

std::uint16_t crc16(QByteArrayView data) {
    unsigned crc = 0;
    for (const char byte : data) {
        crc ^= static_cast<unsigned>(static_cast<unsigned char>(byte)) << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & kTopBit) != 0 ? (crc << 1) ^ kPolynomial : crc << 1;
        }
    }
    return static_cast<std::uint16_t>(crc);
}

} // namespace sixtrace
