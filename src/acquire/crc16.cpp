// SPDX-License-Identifier: MIT
#include "acquire/crc16.h"

#include <array>

namespace sixtrace {

namespace {

constexpr unsigned kPolynomial = 0x1021;
constexpr unsigned kTopBit = 0x8000;

/// What each value of the upper byte adds to the check value as the eight bits of the next byte pass.
constexpr std::array<std::uint16_t, 256> makeRemainders() {
    std::array<std::uint16_t, 256> remainders{};
    for (unsigned byte = 0; byte < remainders.size(); ++byte) {
        unsigned crc = byte << 8;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & kTopBit) != 0 ? (crc << 1) ^ kPolynomial : crc << 1;
        }
        remainders[byte] = static_cast<std::uint16_t>(crc);
    }
    return remainders;
}

constexpr auto kRemainders = makeRemainders();

} // namespace

std::uint16_t crc16(QByteArrayView data) {
    unsigned crc = 0;
    for (const char byte : data) {
        const unsigned upper = ((crc >> 8) ^ static_cast<unsigned char>(byte)) & 0xFFU;
        crc = (crc << 8) ^ kRemainders[upper];
    }
    return static_cast<std::uint16_t>(crc);
}

} // namespace sixtrace
