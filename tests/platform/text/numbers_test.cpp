// SPDX-License-Identifier: MIT
#include "platform/text/numbers.h"

#include "support/strings.h"

#include <cmath>
#include <limits>

namespace sixtrace::test {
namespace {

constexpr NumberMarks kPoint{};
constexpr NumberMarks kComma{u',', u'.'};

QString text(double value, QStringView picture) {
    return Format(value, picture, kPoint);
}

TEST(Val, ReadsANumberUpToTheFirstForeignCharacter) {
    EXPECT_EQ(Val(u"12.5mV"), 12.5);
    EXPECT_EQ(Val(u"-7"), -7.0);
    EXPECT_EQ(Val(u"+3x9"), 3.0);
    EXPECT_EQ(Val(u"1.2.3"), 1.2);
    EXPECT_EQ(Val(u".5"), 0.5);
    EXPECT_EQ(Val(u"5."), 5.0);
}

TEST(Val, SkipsBlanksWhereverTheyStand) {
    EXPECT_EQ(Val(u"  1 2 3 4 "), 1234.0);
    EXPECT_EQ(Val(u"- 4\t2"), -42.0);
    EXPECT_EQ(Val(u"1\r\n5"), 15.0);
}

TEST(Val, GivesZeroWithoutDigits) {
    for (const auto* nothing : {u"", u" ", u"abc", u"-", u"+", u".", u"-.", u"e5", u"\u0661"}) {
        EXPECT_EQ(Val(nothing), 0.0);
    }
}

TEST(Val, ReadsExponentsAfterEAndD) {
    EXPECT_EQ(Val(u"1e3"), 1000.0);
    EXPECT_EQ(Val(u"1d3"), 1000.0);
    EXPECT_EQ(Val(u"2.5D-1"), 0.25);
    EXPECT_EQ(Val(u"1E+2"), 100.0);
    EXPECT_EQ(Val(u"7e"), 7.0);
    EXPECT_EQ(Val(u"7e+"), 7.0);
    EXPECT_EQ(Val(u"7ex"), 7.0);
}

TEST(Val, ExponentsOutOfRangeGiveInfinityOrZero) {
    EXPECT_EQ(Val(u"1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val(u"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val(u"1e-999"), 0.0);
    EXPECT_EQ(Val(u"1e99999999999999999999"), std::numeric_limits<double>::infinity());
}

TEST(Val, MoreDigitsThanFitGiveInfinityOrZero) {
    EXPECT_EQ(Val(QString(400, u'9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val(QString(u"0." + QString(400, u'0') + u'1')), 0.0);
}

TEST(Val, StopsAtACommaWhateverTheDesktopsDecimalMark) {
    EXPECT_EQ(Val(u"1,5"), 1.0);
}

TEST(Str, PutsABlankInThePlaceOfAPlusSign) {
    EXPECT_EQ(Str(255), u" 255"_s);
    EXPECT_EQ(Str(0), u" 0"_s);
    EXPECT_EQ(Str(-3), u"-3"_s);
}

TEST(GeneralText, AThirtyTwoBitRealHasSevenDigits) {
    EXPECT_EQ(generalText(0.1F, kPoint), u"0.1"_s);
    EXPECT_EQ(generalText(1.0F / 3, kPoint), u"0.3333333"_s);
    EXPECT_EQ(generalText(2.0F / 3, kPoint), u"0.6666667"_s);
    EXPECT_EQ(generalText(16777216.0F, kPoint), u"1.677722E+07"_s);
    EXPECT_EQ(generalText(1234567.0F, kPoint), u"1234567"_s);
    EXPECT_EQ(generalText(666.6667F, kPoint), u"666.6667"_s);
}

TEST(GeneralText, ASixtyFourBitRealHasFifteenDigits) {
    EXPECT_EQ(generalText(0.1, kPoint), u"0.1"_s);
    EXPECT_EQ(generalText(1.0 / 3, kPoint), u"0.333333333333333"_s);
    EXPECT_EQ(generalText(2.0 / 3, kPoint), u"0.666666666666667"_s);
    EXPECT_EQ(generalText(0.1 + 0.2, kPoint), u"0.3"_s);
    EXPECT_EQ(generalText(100000000000000.0, kPoint), u"100000000000000"_s);
}

TEST(GeneralText, TheSameNumberReadsDifferentlyByItsWidth) {
    EXPECT_EQ(generalText(0.1F, kPoint), u"0.1"_s);
    EXPECT_EQ(generalText(double{0.1F}, kPoint), u"0.100000001490116"_s);
}

TEST(GeneralText, SwitchesToAnExponentOutsideItsDigits) {
    EXPECT_EQ(generalText(0.0001, kPoint), u"0.0001"_s);
    EXPECT_EQ(generalText(0.00001, kPoint), u"1E-05"_s);
    EXPECT_EQ(generalText(1e15, kPoint), u"1E+15"_s);
    EXPECT_EQ(generalText(9999999.0F, kPoint), u"9999999"_s);
    EXPECT_EQ(generalText(1e7F, kPoint), u"1E+07"_s);
    EXPECT_EQ(generalText(1e100, kPoint), u"1E+100"_s);
}

TEST(GeneralText, ZeroHasNoSignAndWholeNumbersNoPoint) {
    EXPECT_EQ(generalText(-0.0, kPoint), u"0"_s);
    EXPECT_EQ(generalText(-0.0F, kPoint), u"0"_s);
    EXPECT_EQ(generalText(-25.0, kPoint), u"-25"_s);
}

TEST(GeneralText, WhatIsNoFiniteNumberIsNamed) {
    EXPECT_EQ(generalText(std::numeric_limits<double>::infinity(), kPoint), u"Inf"_s);
    EXPECT_EQ(generalText(-std::numeric_limits<float>::infinity(), kPoint), u"-Inf"_s);
    EXPECT_EQ(generalText(std::numeric_limits<double>::quiet_NaN(), kPoint), u"NaN"_s);
}

TEST(GeneralText, UsesTheDecimalMarkThatItIsGiven) {
    EXPECT_EQ(generalText(-1.25, kComma), u"-1,25"_s);
}

TEST(Format, HalvesOfTheDecimalValueGoAwayFromZero) {
    EXPECT_EQ(text(2.675, u"0.00"), u"2.68"_s); // the binary number is below the half
    EXPECT_EQ(text(-2.675, u"0.00"), u"-2.68"_s);
    EXPECT_EQ(text(0.125, u"0.00"), u"0.13"_s);
    EXPECT_EQ(text(0.5, u"0"), u"1"_s);
    EXPECT_EQ(text(1.5, u"0"), u"2"_s);
    EXPECT_EQ(text(2.5, u"0"), u"3"_s);
    EXPECT_EQ(text(-0.5, u"0"), u"-1"_s);
    EXPECT_EQ(text(1.0005, u"#0.000"), u"1.001"_s);
    EXPECT_EQ(text(0.05, u"0.0"), u"0.1"_s);
}

TEST(Format, JustBelowAHalfGoesDown) {
    EXPECT_EQ(text(2.67499999999999, u"0.00"), u"2.67"_s);
    EXPECT_EQ(text(0.00049999, u"#0.000"), u"0.000"_s);
    EXPECT_EQ(text(0.0005, u"#0.000"), u"0.001"_s);
}

TEST(Format, CarriesThroughAllNines) {
    EXPECT_EQ(text(999.9995, u"#0.000"), u"1000.000"_s);
    EXPECT_EQ(text(9.96, u"0.0"), u"10.0"_s);
    EXPECT_EQ(text(0.9996, u"#0.000"), u"1.000"_s);
    EXPECT_EQ(text(999.995, u"##,##0.00"), u"1,000.00"_s);
}

TEST(Format, WritesAtLeastTheDigitsThatTheZerosAskFor) {
    EXPECT_EQ(text(7, u"#0.000"), u"7.000"_s);
    EXPECT_EQ(text(0.25, u"#0.000"), u"0.250"_s);
    EXPECT_EQ(text(12345.678, u"####0.00"), u"12345.68"_s);
    EXPECT_EQ(text(123456.5, u"####0.00"), u"123456.50"_s);
    EXPECT_EQ(text(0, u"####0.00"), u"0.00"_s);
}

TEST(Format, GroupsOfThreeWhereThePictureHoldsAComma) {
    EXPECT_EQ(text(999.99, u"##,##0.00"), u"999.99"_s);
    EXPECT_EQ(text(1000, u"##,##0.00"), u"1,000.00"_s);
    EXPECT_EQ(text(-1234567.891, u"##,##0.00"), u"-1,234,567.89"_s);
}

TEST(Format, AValueThatRoundsToZeroHasNoSign) {
    EXPECT_EQ(text(-0.0004, u"#0.000"), u"0.000"_s);
    EXPECT_EQ(text(-0.0, u"0.0"), u"0.0"_s);
    EXPECT_EQ(text(-0.0005, u"#0.000"), u"-0.001"_s);
}

TEST(Format, VerySmallAndVeryLargeValuesKeepTheirDigits) {
    EXPECT_EQ(text(1e-300, u"0.00"), u"0.00"_s);
    EXPECT_EQ(text(1e20, u"0.0"), u"100000000000000000000.0"_s);
    EXPECT_EQ(text(123456789012345678.0, u"0"), u"123456789012346000"_s);
}

TEST(Format, WhatIsNoFiniteNumberIsNamedWhateverThePicture) {
    EXPECT_EQ(text(-std::numeric_limits<double>::infinity(), u"0.00"), u"-Inf"_s);
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN(), u"#,##0"), u"NaN"_s);
}

TEST(Format, UsesTheMarksThatItIsGiven) {
    EXPECT_EQ(Format(1234.5, u"##,##0.00", kComma), u"1.234,50"_s);
}

TEST(ParseNumber, TakesBackWhatFormatWrote) {
    EXPECT_EQ(parseNumber(u"1,234,567.89", kPoint), 1234567.89);
    EXPECT_EQ(parseNumber(u" -0.5 ", kPoint), -0.5);
    EXPECT_EQ(parseNumber(u"1.234,50", kComma), 1234.5);
    EXPECT_EQ(parseNumber(u"1e3", kPoint), 1000.0);
    EXPECT_EQ(parseNumber(u"1E+16", kPoint), 1e16);
}

TEST(ParseNumber, RefusesWhatIsNotOneNumber) {
    for (const auto* foreign : {u"", u" ", u"1 2", u"12x", u"--1", u"1.2.3", u"e", u"1e", u",", u"\u0661"}) {
        EXPECT_FALSE(parseNumber(foreign, kPoint).has_value()) << QString::fromUtf16(foreign).toStdString();
    }
    EXPECT_FALSE(parseNumber(u"1+", kPoint).has_value());
    EXPECT_FALSE(parseNumber(u"1++", kPoint).has_value());
    EXPECT_FALSE(parseNumber(u"++1", kPoint).has_value());
    EXPECT_FALSE(parseNumber(u"1e5+", kPoint).has_value());
}

TEST(ToInt16, RoundsToTheNearestWithHalvesToEven) {
    EXPECT_EQ(toInt16(0.5), 0);
    EXPECT_EQ(toInt16(1.5), 2);
    EXPECT_EQ(toInt16(2.5), 2);
    EXPECT_EQ(toInt16(3.5), 4);
    EXPECT_EQ(toInt16(-0.5), 0);
    EXPECT_EQ(toInt16(-1.5), -2);
    EXPECT_EQ(toInt16(-2.5), -2);
    EXPECT_EQ(toInt16(2.4999999), 2);
}

TEST(ToInt16, HasNoValueOutsideSixteenBits) {
    EXPECT_EQ(toInt16(32767.49), 32767);
    EXPECT_FALSE(toInt16(32767.5).has_value());
    EXPECT_EQ(toInt16(-32768.5), -32768); // the half is rounded to the even number, which is in range
    EXPECT_FALSE(toInt16(-32768.51).has_value());
    EXPECT_FALSE(toInt16(std::nan("")).has_value());
}

TEST(ToInt32, RoundsToTheNearestWithHalvesToEven) {
    EXPECT_EQ(toInt32(2147483646.5), 2147483646);
    EXPECT_EQ(toInt32(-2.5), -2);
    EXPECT_EQ(toInt32(3.5), 4);
}

TEST(ToInt32, HasNoValueOutsideThirtyTwoBits) {
    EXPECT_EQ(toInt32(2147483647.49), 2147483647);
    EXPECT_FALSE(toInt32(2147483647.5).has_value());
    EXPECT_EQ(toInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_FALSE(toInt32(-2147483649.0).has_value());
    EXPECT_FALSE(toInt32(std::numeric_limits<double>::infinity()).has_value());
    EXPECT_FALSE(toInt32(std::nan("")).has_value());
}

TEST(ToBoolean, KnowsTheTwoWordsInAnyCaseAndNumbers) {
    EXPECT_EQ(toBoolean(u"True"), true);
    EXPECT_EQ(toBoolean(u" fALSE "), false);
    EXPECT_EQ(toBoolean(u"-1"), true);
    EXPECT_EQ(toBoolean(u"0"), false);
    EXPECT_EQ(toBoolean(u"0.0"), false);
    EXPECT_EQ(toBoolean(u"0.5"), true);
}

TEST(ToBoolean, HasNoValueForAnyOtherText) {
    for (const auto* foreign : {u"", u"yes", u"Truee", u"1x", u"T"}) {
        EXPECT_FALSE(toBoolean(foreign).has_value());
    }
}

TEST(BooleanText, WritesTheTwoWords) {
    EXPECT_EQ(booleanText(true), u"True"_s);
    EXPECT_EQ(booleanText(false), u"False"_s);
}

} // namespace
} // namespace sixtrace::test
