// SPDX-License-Identifier: MIT
#include "platform/numbers.h"

#include "support/strings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sixtrace {
namespace {

const NumberMarks kPoint{};
const NumberMarks kComma{u',', u'.'};

QString format(double value, const char* picture) { return Format(value, text(picture), kPoint); }

TEST(Val, SkipsBlanksWhereverTheyStand) {
    EXPECT_EQ(Val(u"  1 2 3"), 123.0);
    EXPECT_EQ(Val(u"\t-\n4 . 5\r"), -4.5);
    EXPECT_EQ(Val(u" 255"), 255.0);
}

TEST(Val, StopsAtTheFirstForeignCharacter) {
    EXPECT_EQ(Val(u"12,5"), 12.0);
    EXPECT_EQ(Val(u"3.5.7"), 3.5);
    EXPECT_EQ(Val(u"7volts"), 7.0);
    EXPECT_EQ(Val(u"5\u00e97"), 5.0);
    EXPECT_EQ(Val(u"--3"), 0.0);
}

TEST(Val, GivesZeroWhereNoNumberStands) {
    EXPECT_EQ(Val(u""), 0.0);
    EXPECT_EQ(Val(u"abc"), 0.0);
    EXPECT_EQ(Val(u"."), 0.0);
    EXPECT_EQ(Val(u"-"), 0.0);
    EXPECT_EQ(Val(u"e5"), 0.0);
}

TEST(Val, ReadsExponentsAfterEAndD) {
    EXPECT_EQ(Val(u"1e3"), 1000.0);
    EXPECT_EQ(Val(u"1D-2"), 0.01);
    EXPECT_EQ(Val(u"2E"), 2.0);
    EXPECT_EQ(Val(u"2E+x"), 2.0);
}

TEST(Val, GoesToInfinityOrZeroBeyondTheRange) {
    EXPECT_EQ(Val(u"1e999"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val(u"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(Val(u"1e-999"), 0.0);
    EXPECT_EQ(Val(QString(400, u'9')), std::numeric_limits<double>::infinity());
    const QString tiny = u'.' + QString(400, u'0') + u'1';
    EXPECT_EQ(Val(tiny), 0.0);
}

TEST(ParseNumber, TakesTheWholeTextOrNothing) {
    EXPECT_EQ(parseNumber(u"-2420.00", kPoint), -2420.0);
    EXPECT_EQ(parseNumber(u"2,000.50", kPoint), 2000.5);
    EXPECT_EQ(parseNumber(u"2.000,50", kComma), 2000.5);
    EXPECT_EQ(parseNumber(u"12x", kPoint), std::nullopt);
    EXPECT_EQ(parseNumber(u"", kPoint), std::nullopt);
    EXPECT_EQ(parseNumber(u"1.5", kComma), 15.0) << "a point groups digits where a comma is the decimal mark";
}

TEST(Str, PutsOneBlankBeforeWhatIsNotNegative) {
    EXPECT_EQ(Str(255), text(" 255"));
    EXPECT_EQ(Str(0), text(" 0"));
    EXPECT_EQ(Str(-3), text("-3"));
}

TEST(GeneralText, GivesSevenDigitsOfA32BitReal) {
    EXPECT_EQ(generalText(0.1F, kPoint), text("0.1"));
    EXPECT_EQ(generalText(12.5F, kPoint), text("12.5"));
    EXPECT_EQ(generalText(1234567.0F, kPoint), text("1234567"));
    EXPECT_EQ(generalText(1.0F / 3.0F, kPoint), text("0.3333333"));
    EXPECT_EQ(generalText(-0.00025F, kPoint), text("-0.00025"));
    EXPECT_EQ(generalText(9999999.5F, kPoint), text("1E+07"));
    EXPECT_EQ(generalText(0.00001F, kPoint), text("1E-05"));
}

TEST(GeneralText, GivesFifteenDigitsOfA64BitReal) {
    EXPECT_EQ(generalText(0.1, kPoint), text("0.1"));
    EXPECT_EQ(generalText(1.0 / 3.0, kPoint), text("0.333333333333333"));
    EXPECT_EQ(generalText(1000.0, kPoint), text("1000"));
    EXPECT_EQ(generalText(static_cast<double>(0.1F), kPoint), text("0.100000001490116"));
    EXPECT_EQ(generalText(1e15, kPoint), text("1E+15"));
    EXPECT_EQ(generalText(123456789012345.0, kPoint), text("123456789012345"));
}

TEST(GeneralText, HasNoSignOnZeroAndUsesTheDecimalMark) {
    EXPECT_EQ(generalText(-0.0, kPoint), text("0"));
    EXPECT_EQ(generalText(-0.0F, kPoint), text("0"));
    EXPECT_EQ(generalText(2.5, kComma), text("2,5"));
}

TEST(Format, RoundsHalvesAwayFromZeroOnTheDecimalValue) {
    EXPECT_EQ(format(0.125, "0.00"), text("0.13"));
    EXPECT_EQ(format(-0.125, "0.00"), text("-0.13"));
    EXPECT_EQ(format(2.675, "#0.00"), text("2.68")) << "its nearest binary value lies below the half";
    EXPECT_EQ(format(1.005, "#0.00"), text("1.01"));
    EXPECT_EQ(format(0.5, "0"), text("1"));
    EXPECT_EQ(format(2.5, "0"), text("3"));
    EXPECT_EQ(format(0.0005, "#0.000"), text("0.001"));
    EXPECT_EQ(format(0.00049999, "#0.000"), text("0.000"));
}

TEST(Format, CarriesIntoNewDigits) {
    EXPECT_EQ(format(9.995, "#0.00"), text("10.00"));
    EXPECT_EQ(format(999.9996, "#0.000"), text("1000.000"));
    EXPECT_EQ(format(0.96, "0.0"), text("1.0"));
}

TEST(Format, GivesAtLeastTheDigitsThatTheZerosAskFor) {
    EXPECT_EQ(format(0.25, "#0.000"), text("0.250"));
    EXPECT_EQ(format(0.25, "####0.00"), text("0.25"));
    EXPECT_EQ(format(12345678.9, "####0.00"), text("12345678.90"));
    EXPECT_EQ(format(0.0, "#0.000"), text("0.000"));
    EXPECT_EQ(format(1e15, "0.0"), text("1000000000000000.0"));
}

TEST(Format, GroupsByThreeWhereThePictureHasAComma) {
    EXPECT_EQ(format(2000, "##,##0.00"), text("2,000.00"));
    EXPECT_EQ(format(1234567.891, "##,##0.00"), text("1,234,567.89"));
    EXPECT_EQ(format(999.999, "##,##0.00"), text("1,000.00"));
    EXPECT_EQ(format(-1000, "##,##0.00"), text("-1,000.00"));
    EXPECT_EQ(Format(2000.5, text("##,##0.00"), kComma), text("2.000,50"));
}

TEST(Format, ShowsANumberThatRoundsToZeroWithoutASign) {
    EXPECT_EQ(format(-0.001, "#0.00"), text("0.00"));
    EXPECT_EQ(format(-0.0, "#0.00"), text("0.00"));
    EXPECT_EQ(format(-0.005, "#0.00"), text("-0.01"));
}

TEST(ToInteger, RoundsHalvesToTheEvenNumber) {
    EXPECT_EQ(toInt32(2.5), 2);
    EXPECT_EQ(toInt32(3.5), 4);
    EXPECT_EQ(toInt32(-2.5), -2);
    EXPECT_EQ(toInt32(2.5000001), 3);
    EXPECT_EQ(toInt16(0.5), 0);
    EXPECT_EQ(toInt16(1.5), 2);
}

TEST(ToInteger, OverflowsBeyondItsType) {
    EXPECT_EQ(toInt16(32767.49), 32767);
    EXPECT_EQ(toInt16(32767.5), std::nullopt);
    EXPECT_EQ(toInt16(-32768.5), -32768);
    EXPECT_EQ(toInt16(-32768.6), std::nullopt);
    EXPECT_EQ(toInt32(2147483647.4), 2147483647);
    EXPECT_EQ(toInt32(2147483647.5), std::nullopt);
    EXPECT_EQ(toInt32(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(toInt32(std::nan("")), std::nullopt);
    EXPECT_EQ(toInt32(std::numeric_limits<double>::infinity()), std::nullopt);
}

TEST(Boolean, ReadsWordsAndNumbers) {
    EXPECT_EQ(toBoolean(u"True"), true);
    EXPECT_EQ(toBoolean(u" FALSE "), false);
    EXPECT_EQ(toBoolean(u"0"), false);
    EXPECT_EQ(toBoolean(u"-1"), true);
    EXPECT_EQ(toBoolean(u"0.5"), true);
    EXPECT_EQ(toBoolean(u"yes"), std::nullopt);
    EXPECT_EQ(toBoolean(u""), std::nullopt);
    EXPECT_EQ(booleanText(true), text("True"));
    EXPECT_EQ(booleanText(false), text("False"));
}

} // namespace
} // namespace sixtrace
