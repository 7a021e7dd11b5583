// SPDX-License-Identifier: MIT
#include "platform/text/numbers.h"

#include <QLocale>

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

namespace sixtrace {

namespace {

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The value of a well-formed decimal number in ASCII with at least one digit: sign, digits, point, digits, "e", sign,
/// digits. A number that is too large for a 64-bit real gives infinity, one that is too small gives 0.
double valueOfDecimal(std::string_view text) {
    double value = 0;
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        const auto exponent = text.find('e');
        const bool tiny = exponent != std::string_view::npos ? text.substr(exponent + 1).starts_with('-')
                                                             : text.find_first_not_of('0') == text.find('.');
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

/// The longest prefix of `text` that is a decimal number.
struct DecimalPrefix {
    std::string number; ///< in ASCII with "e" as exponent mark and no sign on a positive exponent; empty without digits
    std::size_t length = 0; ///< of the prefix
};

DecimalPrefix decimalPrefix(std::string_view text) {
    std::string number;
    std::size_t i = 0;
    const auto takeDigits = [&] {
        const std::size_t before = number.size();
        while (i < text.size() && isDigit(text[i])) {
            number += text[i++];
        }
        return number.size() - before;
    };
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        number += text[i++];
    }
    std::size_t digits = takeDigits();
    if (i < text.size() && text[i] == '.') {
        number += text[i++];
        digits += takeDigits();
    }
    if (digits == 0) {
        return {};
    }
    if (i < text.size() && std::string_view("eEdD").find(text[i]) != std::string_view::npos) {
        const std::size_t mantissa = number.size();
        const std::size_t mark = i;
        number += 'e';
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
            if (text[i] == '-') {
                number += '-';
            }
            ++i;
        }
        if (takeDigits() == 0) {
            number.resize(mantissa);
            i = mark;
        }
    }
    return {number, i};
}

template<typename Real>
QString general(Real value, int digits, NumberMarks marks) {
    if (value == Real{0}) {
        return QStringLiteral("0");
    }
    if (std::isnan(value)) {
        return QStringLiteral("NaN");
    }
    if (std::isinf(value)) {
        return value > 0 ? QStringLiteral("Inf") : QStringLiteral("-Inf");
    }
    std::array<char, 48> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, digits);
    QString text = QString::fromLatin1(buffer.data(), end - buffer.data());
    text.replace(u'e', u'E');
    if (marks.decimal != u'.') {
        text.replace(u'.', marks.decimal);
    }
    return text;
}

/// A finite number as decimal digits d0 d1 d2 ...: |value| = 0.d0d1d2... x 10^point.
struct Decimal {
    std::string digits;
    int point = 0;
};

Decimal decimalOf(double value) {
    std::array<char, 48> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                            std::chars_format::scientific, 14);
    const std::string_view text(buffer.data(), end);
    const auto mark = text.find('e');
    Decimal decimal;
    decimal.digits = text[0];
    decimal.digits += text.substr(2, mark - 2);
    const bool negativeExponent = text[mark + 1] == '-';
    int exponent = 0;
    std::from_chars(text.data() + mark + 2, text.data() + text.size(), exponent);
    decimal.point = (negativeExponent ? -exponent : exponent) + 1;
    return decimal;
}

/// Rounds `decimal` to so many decimals, halves away from zero.
void roundAt(Decimal& decimal, int decimals) {
    const long keep = static_cast<long>(decimal.point) + decimals;
    if (keep < 0) {
        decimal.digits.clear();
        decimal.point = -decimals;
        return;
    }
    const auto kept = static_cast<std::size_t>(keep);
    if (kept >= decimal.digits.size()) {
        return;
    }
    const bool up = decimal.digits[kept] >= '5';
    decimal.digits.resize(kept);
    if (!up) {
        return;
    }
    for (std::size_t i = kept; i-- > 0;) {
        if (decimal.digits[i] != '9') {
            ++decimal.digits[i];
            return;
        }
        decimal.digits[i] = '0';
    }
    decimal.digits.insert(decimal.digits.begin(), '1');
    ++decimal.point;
}

/// The digit at the place of 10^exponent.
char digitAt(const Decimal& decimal, int exponent) {
    const int index = decimal.point - 1 - exponent;
    return index >= 0 && index < std::ssize(decimal.digits) ? decimal.digits[static_cast<std::size_t>(index)] : '0';
}

} // namespace

NumberMarks NumberMarks::system() {
    const QLocale locale = QLocale::system();
    const auto first = [](const QString& text, char16_t fallback) {
        return text.isEmpty() ? QChar(fallback) : text.at(0);
    };
    return {first(locale.decimalPoint(), u'.'), first(locale.groupSeparator(), u',')};
}

double Val(QStringView text) {
    std::string ascii;
    for (const QChar c : text) {
        if (isBlank(c)) {
            continue;
        }
        if (c.unicode() > 0x7E) {
            break;
        }
        ascii += static_cast<char>(c.unicode());
    }
    const std::string number = decimalPrefix(ascii).number;
    return number.empty() ? 0.0 : valueOfDecimal(number);
}

std::optional<double> parseNumber(QStringView text, NumberMarks marks) {
    std::string ascii;
    for (const QChar c : text.trimmed()) {
        if (c == marks.decimal) {
            ascii += '.';
        } else if (c == marks.group && !ascii.empty()) {
            continue;
        } else if (c.unicode() <= 0x7E && c != u'.') {
            ascii += static_cast<char>(c.unicode());
        } else {
            return std::nullopt;
        }
    }
    const auto [number, length] = decimalPrefix(ascii);
    return !number.empty() && length == ascii.size() ? std::optional(valueOfDecimal(number)) : std::nullopt;
}

QString Str(std::int64_t value) {
    const QString digits = QString::number(value);
    return value < 0 ? digits : u' ' + digits;
}

QString generalText(float value, NumberMarks marks) {
    return general(value, 7, marks);
}
QString generalText(double value, NumberMarks marks) {
    return general(value, 15, marks);
}

QString Format(double value, QStringView picture, NumberMarks marks) {
    if (!std::isfinite(value)) {
        return generalText(value, marks);
    }
    const auto pointAt = picture.indexOf(u'.');
    const QStringView integerPicture = pointAt < 0 ? picture : picture.left(pointAt);
    const int decimals = pointAt < 0 ? 0 : static_cast<int>(picture.mid(pointAt + 1).count(u'0'));
    const int leastDigits = static_cast<int>(integerPicture.count(u'0'));
    const bool grouped = integerPicture.contains(u',');

    Decimal decimal = decimalOf(value);
    roundAt(decimal, decimals);
    const bool zero = decimal.digits.find_first_not_of('0') == std::string::npos;

    QString text;
    if (value < 0 && !zero) {
        text += u'-';
    }
    const int integerDigits = std::max(zero ? 0 : decimal.point, leastDigits);
    for (int place = integerDigits - 1; place >= 0; --place) {
        text += QLatin1Char(zero ? '0' : digitAt(decimal, place));
        if (grouped && place > 0 && place % 3 == 0) {
            text += marks.group;
        }
    }
    if (decimals > 0) {
        text += marks.decimal;
        for (int place = -1; place >= -decimals; --place) {
            text += QLatin1Char(zero ? '0' : digitAt(decimal, place));
        }
    }
    return text;
}

std::optional<std::int16_t> toInt16(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0)) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(rounded);
}

std::optional<std::int32_t> toInt32(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

std::optional<bool> toBoolean(QStringView text) {
    const QStringView word = text.trimmed();
    if (word.compare(u"True", Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (word.compare(u"False", Qt::CaseInsensitive) == 0) {
        return false;
    }
    if (const auto number = parseNumber(word, NumberMarks{})) {
        return *number != 0.0;
    }
    return std::nullopt;
}

QString booleanText(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

} // namespace sixtrace
