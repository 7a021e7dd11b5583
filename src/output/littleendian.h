// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace sixtrace {

/// Writes a whole number or a real to `at`, lowest byte first on every machine.
template<typename Number>
void putLittle(char* at, Number number) {
    std::memcpy(at, &number, sizeof number);
    if constexpr (std::endian::native == std::endian::big) {
        std::reverse(at, at + sizeof number);
    }
}

/// Appends a whole number or a real in the same way, to a QByteArray or a std::string.
template<typename Bytes, typename Number>
void appendLittleEndian(Bytes& bytes, Number number) {
    std::array<char, sizeof number> parts; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    putLittle(parts.data(), number);
    bytes.append(parts.data(), sizeof number);
}

template<typename Bytes>
void append8(Bytes& bytes, std::uint8_t number) {
    appendLittleEndian(bytes, number);
}
template<typename Bytes>
void append16(Bytes& bytes, std::uint16_t number) {
    appendLittleEndian(bytes, number);
}
template<typename Bytes>
void append32(Bytes& bytes, std::uint32_t number) {
    appendLittleEndian(bytes, number);
}

} // namespace sixtrace
