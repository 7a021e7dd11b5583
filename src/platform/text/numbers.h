// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// The marks in written numbers: those of the desktop for people, or fixed ones for files that programs read.
struct NumberMarks {
    QChar decimal = QLatin1Char('.');
    QChar group = QLatin1Char(',');

    /// The marks of the desktop's locale.
    [[nodiscard]] static NumberMarks system();
};

/// The number at the start of `text`, or 0 when there is none. Blanks, tabs and line ends are skipped wherever they
/// are. Reading stops at the first character that cannot continue a decimal number. The decimal mark is always a point.
/// An exponent follows E or D ("1d3" is 1000). A number beyond the range of a 64-bit real gives infinity or 0.
[[nodiscard]] double Val(QStringView text);

/// The number that `text` is as a whole, with the given decimal mark; group marks are allowed between digits. Nothing
/// for any other text. It reads what Format() writes.
[[nodiscard]] std::optional<double> parseNumber(QStringView text, NumberMarks marks = NumberMarks::system());

/// The decimal text of `value` after one blank or its minus sign: " 255", "-3".
[[nodiscard]] QString Str(std::int64_t value);

/// The general text of a real number: at most 7 significant digits for a 32-bit real, and 15 for a 64-bit one. The
/// exact binary value is rounded, halves to even. There is no padding, no trailing zero and no sign on zero. Numbers
/// outside 0.0001 <= |value| < 10^digits have an exponent: 1E-05, 1E+16.
[[nodiscard]] QString generalText(float value, NumberMarks marks = NumberMarks::system());
[[nodiscard]] QString generalText(double value, NumberMarks marks = NumberMarks::system());

/// The text of `value` by a picture of digits such as "#0.000" or "##,##0.00". It has as many decimals as the picture
/// has zeros after its point, at least as many integer digits as the picture has zeros before its point, and groups of
/// three digits when the picture holds a comma. The value is first rounded to 15 significant decimal digits, so
/// that 2.675 counts as a half; halves are then rounded away from zero. A value that is rounded to zero has no sign.
[[nodiscard]] QString Format(double value, QStringView picture, NumberMarks marks = NumberMarks::system());

/// The nearest integer, halves to the even one; nothing for NaN and for a number outside the range of the type.
[[nodiscard]] std::optional<std::int16_t> toInt16(double value);
[[nodiscard]] std::optional<std::int32_t> toInt32(double value);

/// The truth value of `text`: of "True" or "False" in any case, or of a number, which is true unless it is 0. Nothing
/// for any other text.
[[nodiscard]] std::optional<bool> toBoolean(QStringView text);

/// "True" or "False".
[[nodiscard]] QString booleanText(bool value);

} // namespace sixtrace
