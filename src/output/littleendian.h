// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>
#include <bit>
#include <cstdint>
#include <type_traits>

namespace sixtrace {

/// Appends whole numbers and reals to bytes, lowest byte first on every machine.
template<typename Number>
void appendLittleEndian(QByteArray& bytes, Number number) {
    using Bits =
        std::conditional_t<sizeof(Number) == 8, std::uint64_t,
                           std::conditional_t<sizeof(Number) == 4, std::uint32_t,
                                              std::conditional_t<sizeof(Number) == 2, std::uint16_t, std::uint8_t>>>;
    const auto bits = std::bit_cast<Bits>(number);
    std::array<char, sizeof(Number)> parts; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the loop
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i] = static_cast<char>((bits >> (8 * i)) & 0xFFU);
    }
    bytes.append(parts.data(), static_cast<qsizetype>(parts.size()));
}

inline void append8(QByteArray& bytes, std::uint8_t number) {
    appendLittleEndian(bytes, number);
}
inline void append16(QByteArray& bytes, std::uint16_t number) {
    appendLittleEndian(bytes, number);
}
inline void append32(QByteArray& bytes, std::uint32_t number) {
    appendLittleEndian(bytes, number);
}

} // namespace sixtrace
