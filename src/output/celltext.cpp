// SPDX-License-Identifier: MIT
#include "output/celltext.h"

#include "capture/channels.h"
#include "platform/text/numbers.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace sixtrace {

namespace {

constexpr int kDigits = 7;
constexpr std::uint32_t kTenToDigits = 10'000'000;
constexpr int kExactTens = 22; ///< 10^22 is the largest power of ten that a 64-bit real holds exactly

constexpr auto kTens = [] {
    NumberedArray<double, kExactTens + 1> tens{};
    double ten = 1;
    for (double& entry : tens) {
        entry = ten;
        ten *= 10;
    }
    return tens;
}();

constexpr auto kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

void putPair(char* at, std::uint32_t pair) {
    std::memcpy(at, kPairs.data() + std::size_t{2} * pair, 2);
}

/// Writes `value`, which is below 10^8, as eight digits with leading zeros.
void putEight(char* at, std::uint32_t value) {
    const std::uint32_t upper = value / 10000;
    const std::uint32_t lower = value % 10000;
    putPair(at, upper / 100);
    putPair(at + 2, upper % 100);
    putPair(at + 4, lower / 100);
    putPair(at + 6, lower % 100);
}

/// Appends the digits of `value`, which is below 10^8.
void appendWhole(CellText& text, std::uint32_t value) {
    std::array<char, 8> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    putEight(digits.data(), value);
    std::size_t first = 0;
    while (first < 7 && digits[first] == '0') {
        ++first;
    }
    std::memcpy(text.characters.data() + text.length, digits.data() + first, 8 - first);
    text.length = static_cast<std::uint8_t>(text.length + 8 - first);
}

/// The exponent of the first decimal digit, or one less.
int decimalExponent(double magnitude) {
    const int binary = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    return (binary * 78913) >> 18; // floor(binary x log10(2)), which is exact in the range of a 32-bit real
}

/// The whole number nearest to magnitude x 10^scale, halves to the even one, decided on the exact product.
std::uint32_t scaledAndRounded(double magnitude, int scale) {
    const double ten = kTens[std::abs(scale)];
    const double product = scale < 0 ? magnitude / ten : magnitude * ten;
    auto whole = static_cast<std::uint32_t>(product);
    const double rest = product - whole;
    if (rest != 0.5) {
        // The product is a multiple of 2^-29 or finer, and its error is at most half of that. So a rest that is not one
        // half lies on the same side of it as the exact rest.
        return whole + (rest > 0.5 ? 1 : 0);
    }
    const double beyond = scale < 0 ? std::fma(-product, ten, magnitude) : std::fma(magnitude, ten, -product);
    if (beyond > 0 || (beyond == 0 && whole % 2 == 1)) {
        ++whole;
    }
    return whole;
}

/// The text of the few numbers that cannot be scaled to seven digits by an exact power of ten.
CellText slowText(float value) {
    CellText text = CellText::empty();
    const QByteArray general = generalText(value, NumberMarks{}).toLatin1();
    text.length = static_cast<std::uint8_t>(std::min<qsizetype>(general.size(), CellText::kLongest));
    std::memcpy(text.characters.data(), general.constData(), text.length);
    return text;
}

void appendExponent(CellText& text, int exponent) {
    char* at = text.characters.data() + text.length;
    at[0] = 'E';
    at[1] = exponent < 0 ? '-' : '+';
    putPair(at + 2, static_cast<std::uint32_t>(exponent < 0 ? -exponent : exponent));
    text.length = static_cast<std::uint8_t>(text.length + 4);
}

/// Appends seven digits without their trailing zeros, with a point after the first `integerDigits` of them.
void appendDigits(CellText& text, std::uint32_t digits, int integerDigits) {
    std::array<char, 8> all; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    putEight(all.data(), digits);
    const char* significant = all.data() + 1;
    int count = kDigits;
    while (count > 1 && significant[count - 1] == '0') {
        --count;
    }
    char* at = text.characters.data() + text.length;
    const char* const start = at;
    if (integerDigits <= 0) {
        *at++ = '0';
        *at++ = '.';
        for (int zero = integerDigits; zero < 0; ++zero) {
            *at++ = '0';
        }
        std::memcpy(at, significant, static_cast<std::size_t>(count));
        at += count;
    } else {
        std::memcpy(at, significant, static_cast<std::size_t>(integerDigits));
        at += integerDigits;
        if (count > integerDigits) {
            *at++ = '.';
            std::memcpy(at, significant + integerDigits, static_cast<std::size_t>(count - integerDigits));
            at += count - integerDigits;
        }
    }
    text.length = static_cast<std::uint8_t>(text.length + (at - start));
}

} // namespace

CellText numberText(float value) {
    CellText text = CellText::empty();
    const double magnitude = std::fabs(static_cast<double>(value));
    if (value < 0) {
        text.characters[0] = '-';
        text.length = 1;
    }
    if (magnitude < kTenToDigits) {
        const auto whole = static_cast<std::uint32_t>(magnitude);
        if (static_cast<double>(whole) == magnitude) {
            appendWhole(text, whole);
            return text;
        }
    }
    int exponent = decimalExponent(magnitude);
    int scale = kDigits - 1 - exponent;
    if (scale > kExactTens || scale < -kExactTens) {
        return slowText(value);
    }
    std::uint32_t digits = 0;
    if (magnitude * kTens[std::max(scale, 0)] >= kTenToDigits * kTens[std::max(-scale, 0)]) {
        ++exponent;
        --scale;
        if (scale < -kExactTens) {
            return slowText(value);
        }
    }
    digits = scaledAndRounded(magnitude, scale);
    if (digits == kTenToDigits) {
        digits /= 10;
        ++exponent;
    }
    if (exponent < -4 || exponent >= kDigits) {
        appendDigits(text, digits, 1);
        appendExponent(text, exponent);
    } else {
        appendDigits(text, digits, exponent + 1);
    }
    return text;
}

CellText rowNumberText(std::uint32_t number) {
    CellText text = CellText::empty();
    appendWhole(text, number % 100'000'000);
    return text;
}

} // namespace sixtrace
