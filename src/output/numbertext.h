// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace sixtrace {

/// The text of one cell: ASCII with a point as decimal mark, blanks behind its end, so that a print zone is one copy.
/// The longest text of a 32-bit real ("-1.234567E-05") fills it.
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

/// The general text of a finite 32-bit real, as generalText() gives it: at most 7 significant digits, exactly rounded,
/// no padding. Made for tables of tens of thousands of numbers: it allocates nothing.
[[nodiscard]] CellText numberText(float value);

/// The decimal text of a row number. At least 0.
[[nodiscard]] CellText rowNumberText(std::uint32_t number);

} // namespace sixtrace
