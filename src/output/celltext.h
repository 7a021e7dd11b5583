// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace sixtrace {

/// The text of one cell: ASCII with a point as decimal mark. It is filled up with blanks, so that one copy writes a
/// print zone. The longest text of a 32-bit real, such as "-1.234567E-05", has just room.
struct CellText {
    static constexpr std::size_t kLongest = 13;

    std::array<char, kLongest> characters;
    std::uint8_t length;

    [[nodiscard]] std::string_view view() const { return {characters.data(), length}; }
    [[nodiscard]] bool isEmpty() const { return length == 0; }
    [[nodiscard]] static constexpr CellText empty() {
        CellText text{{}, 0};
        text.characters.fill(' ');
        return text;
    }
};

/// The same text as generalText() for a finite 32-bit real: at most 7 significant digits, exactly rounded, no padding.
/// It allocates no memory, since a table has tens of thousands of numbers.
[[nodiscard]] CellText numberText(float value);

/// The decimal text of a row number of at most eight digits.
[[nodiscard]] CellText rowNumberText(std::uint32_t number);

} // namespace sixtrace
