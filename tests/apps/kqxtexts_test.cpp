// SPDX-License-Identifier: MIT
// How kqx writes numbers and names.
#include "capture/numbertexts.h"
#include "kqx/batch.h"
#include "kqx/jsontext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace sixtrace::test {
namespace {

using namespace kqx;

std::string number(double value) {
    std::string text;
    appendNumber(text, value);
    return text;
}

std::string json(double value) {
    std::string text;
    appendJsonNumber(text, value);
    return text;
}

std::string quoted(std::string_view text) {
    std::string out;
    appendJsonString(out, text);
    return out;
}

TEST(NumberTexts, HaveTwelveDigitsAtMostAndNoZerosBehind) {
    EXPECT_EQ(number(0), "0");
    EXPECT_EQ(number(-0.0), "0");
    EXPECT_EQ(number(1), "1");
    EXPECT_EQ(number(-1.5), "-1.5");
    EXPECT_EQ(number(0.1 + 0.2), "0.3");
    EXPECT_EQ(number(1.0 / 3), "0.333333333333");
    EXPECT_EQ(number(-2.0 / 3), "-0.666666666667");
    EXPECT_EQ(number(123456789012.0), "123456789012");
    EXPECT_EQ(number(1234567890123.0), "1234567890120");
    EXPECT_EQ(number(100), "100");
    EXPECT_EQ(number(9.9999999999996), "10");
}

TEST(NumberTexts, RoundUpToTheNextPowerOfTen) {
    EXPECT_EQ(number(0.99999999999996), "1");
    EXPECT_EQ(number(9999999999999.6), "10000000000000");
}

TEST(NumberTexts, TurnToExponentsFarFromOne) {
    EXPECT_EQ(number(1e-5), "0.00001");
    EXPECT_EQ(number(1.25e-6), "1.25e-6");
    EXPECT_EQ(number(1e14), "100000000000000");
    EXPECT_EQ(number(1e15), "1e15");
    EXPECT_EQ(number(-2.5e20), "-2.5e20");
    EXPECT_EQ(std::stod(number(1.7e300)), 1.7e300);
    EXPECT_EQ(std::stod(number(3e-300)), 3e-300);
}

TEST(NumberTexts, ReadBackToTheTwelfthDigit) {
    for (double value = 1.234567e-12; value < 1e16; value *= 7.3) {
        EXPECT_NEAR(std::stod(number(value)) / value, 1, 1e-11) << value;
        EXPECT_NEAR(std::stod(number(-value)) / value, -1, 1e-11) << value;
    }
}

TEST(JsonTexts, WhatIsNoNumberIsNull) {
    EXPECT_EQ(json(std::numeric_limits<double>::quiet_NaN()), "null");
    EXPECT_EQ(json(-std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "");
    EXPECT_EQ(json(2.5), "2.5");
    std::string text;
    appendJsonNumber(text, 0.1F);
    appendJsonNumber(text, std::numeric_limits<float>::infinity());
    EXPECT_EQ(text, "0.1null");
}

TEST(JsonTexts, EscapeWhatJsonDoesNotTake) {
    EXPECT_EQ(quoted("a\"b\\c"), R"("a\"b\\c")");
    EXPECT_EQ(quoted("\n\x1F "), R"("\u000a\u001f ")");
    EXPECT_EQ(quoted("\xE6\xB3\xA2\xF0\x9F\x98\x80\x7F"), "\"\xE6\xB3\xA2\xF0\x9F\x98\x80\x7F\"");
}

TEST(JsonTexts, BytesThatAreNoUtf8AreReplacedOneByOne) {
    const std::string mark = "\xEF\xBF\xBD";
    for (const std::string bad : {"\x80", "\xC1", "\xFF", "\xF5", "\xC2", "\xE6\xB3", "\xF0\x9F\x98", "\xC0\x80",
                                  "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xE6x",
                                  "\xF0\x9Fxy", "\xF5\x80\x80\x80", "\xC1\x80\x80\x80"}) {
        EXPECT_FALSE(isUtf8("a" + bad));
        std::string expected = "a";
        for (const char c : bad) {
            expected += (static_cast<unsigned char>(c) & 0x80U) != 0 ? mark : std::string(1, c);
        }
        EXPECT_EQ(validUtf8("a" + bad), expected);
    }
    for (const std::string good : {"", "abc", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEF\xBF\xBF",
                                   "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(isUtf8(good));
        EXPECT_EQ(validUtf8(good), good);
    }
}

TEST(JsonTexts, ACharacterEndsWithItsText) {
    EXPECT_FALSE(isUtf8(std::string_view("\xE6\xB3\xA2", 2)));
    EXPECT_FALSE(isUtf8(std::string_view("\xC2\x80", 1)));
}

TEST(JsonTexts, ANameThatIsNoTextStandsInHexadecimalToo) {
    std::string text;
    appendJsonFile(text, "plain");
    EXPECT_EQ(text, "\"file\":\"plain\"");
    text.clear();
    appendJsonFile(text, "a\xFF");
    EXPECT_EQ(text, "\"file\":\"a\xEF\xBF\xBD\",\"file_bytes\":\"61ff\"");
}

TEST(Batches, GiveTheGreatestCodeAndHaveEachFileOnce) {
    for (const int jobs : {1, 2, 5}) {
        std::vector<int> seen(1000);
        const ExitCode code = runBatch(seen.size(), jobs, [&]() -> Work {
            return [&seen](std::size_t i, Answer& answer) {
                ++seen[i];
                answer.code = std::max(answer.code, i == 700 ? Failed : Done);
            };
        });
        EXPECT_EQ(code, Failed);
        EXPECT_EQ(seen, std::vector<int>(1000, 1));
    }
    EXPECT_EQ(runBatch(0, 3, [] { return Work(); }), Done);
}

TEST(Batches, WholeNumbersAreNothingButDigitsInTheirRange) {
    EXPECT_EQ(wholeNumber("1", 1, 16), 1);
    EXPECT_EQ(wholeNumber("16", 1, 16), 16);
    for (const char* wrong : {"", "0", "17", "1.5", " 1", "1 ", "x", "99999999999"}) {
        EXPECT_EQ(wholeNumber(wrong, 1, 16), std::nullopt) << wrong;
    }
    EXPECT_EQ(wholeNumber("-3", -5, 5), -3);
}

} // namespace
} // namespace sixtrace::test
