// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// How numbers are written for people: the desktop's marks, or fixed ones for files that machines read.
struct NumberMarks {
    QChar decimal = QLatin1Char('.');
    QChar group = QLatin1Char(',');

    /// The marks of the desktop's locale.
    [[nodiscard]] static NumberMarks system();
};

/// The number at the start of `text`: blanks, tabs and line ends are skipped wherever they stand, reading stops at the
/// first character that cannot continue a decimal number, and nothing readable gives 0. The decimal mark is always a
/// point. Exponents are read after E or D ("1d3" is 1000). Out-of-range exponents give infinity or 0.
[[nodiscard]] double Val(QStringView text);

/// The number in `text` as the desktop writes it: the whole text has to be one number, with the given decimal mark,
/// group marks allowed between digits. This is the inverse of Format().
[[nodiscard]] std::optional<double> parseNumber(QStringView text, NumberMarks marks = NumberMarks::system());

/// Decimal text of `value` behind one blank, or behind its minus sign: " 255", "-3".
[[nodiscard]] QString Str(std::int64_t value);

/// The general text of a real number: at most 7 significant digits for a 32-bit real and 15 for a 64-bit one, exactly
/// rounded, halves to even of the binary value, no padding, no trailing zeros, no sign on zero. Exponent form (1E-05,
/// 1E+16) outside 0.0001 <= |value| < 10^digits.
[[nodiscard]] QString generalText(float value, NumberMarks marks = NumberMarks::system());
[[nodiscard]] QString generalText(double value, NumberMarks marks = NumberMarks::system());

/// `value` by a picture of digits such as "#0.000" or "##,##0.00": as many decimals as the picture has zeros behind
/// its point, at least as many integer digits as it has zeros before it, groups of three where it holds a comma. The
/// value is taken at its 15 significant decimal digits, so that 2.675 is a half, and halves go away from zero. A value
/// that rounds to zero has no sign.
[[nodiscard]] QString Format(double value, QStringView picture, NumberMarks marks = NumberMarks::system());

/// The nearest integer, halves to the even one; nothing where it lies outside the type (or for NaN): the overflow that
/// ends or skips a statement.
[[nodiscard]] std::optional<std::int16_t> toInt16(double value);
[[nodiscard]] std::optional<std::int32_t> toInt32(double value);

/// The truth value in `text`: "True" and "False" in any case, or a number, which is true unless it is 0. Nothing for
/// any other text.
[[nodiscard]] std::optional<bool> toBoolean(QStringView text);

/// "True" or "False".
[[nodiscard]] QString booleanText(bool value);

} // namespace sixtrace
