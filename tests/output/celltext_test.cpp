// SPDX-License-Identifier: MIT
#include "output/celltext.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace sixtrace::test {
namespace {

std::string text(float value) {
    return std::string(numberText(value).view());
}

/// The digits of the C library's exact conversion, with exponents and zero written as the program writes them.
std::string exact(float value) {
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.7g", static_cast<double>(value));
    std::string all = buffer.data();
    if (const auto mark = all.find('e'); mark != std::string::npos) {
        all[mark] = 'E';
    }
    return all == "-0" ? "0" : all;
}

TEST(NumberText, ASampleOf0Shows0) {
    EXPECT_EQ(text(0.0F), "0");
    EXPECT_EQ(text(-0.0F), "0");
    EXPECT_EQ(text(0.0F * -20.0F), "0");
}

TEST(NumberText, AValueSuchAs12_5StaysAsItIs) {
    EXPECT_EQ(text(12.5F), "12.5");
    EXPECT_EQ(text(-12.5F), "-12.5");
    EXPECT_EQ(text(0.4F), "0.4");
    EXPECT_EQ(text(-72.0F), "-72");
    EXPECT_EQ(text(100.0F), "100");
    EXPECT_EQ(text(1000000.0F), "1000000");
}

TEST(NumberText, HasAtMostSevenSignificantDigits) {
    EXPECT_EQ(text(1.0F / 3.0F), "0.3333333");
    EXPECT_EQ(text(123456.7F), "123456.7");
    EXPECT_EQ(text(16777.217F), "16777.22");
    EXPECT_EQ(text(9999999.0F), "9999999");
    EXPECT_EQ(text(0.0001F), "0.0001");
}

TEST(NumberText, TurnsToExponentsOutsideTheSevenDigits) {
    EXPECT_EQ(text(1e7F), "1E+07");
    EXPECT_EQ(text(-12345678.0F), "-1.234568E+07");
    EXPECT_EQ(text(0.00001F), "1E-05");
    EXPECT_EQ(text(0.00009999999F), "9.999999E-05");
    EXPECT_EQ(text(std::numeric_limits<float>::max()), "3.402823E+38");
    EXPECT_EQ(text(-std::numeric_limits<float>::denorm_min()), "-1.401298E-45");
}

TEST(NumberText, RoundingUpToAFurtherDigitMovesThePoint) {
    EXPECT_EQ(text(999999.96875F), "1000000"); // 999999.97 to seven digits is 1000000.0
    EXPECT_EQ(text(std::nextafterf(10.0F, 0.0F)), "9.999999");
    EXPECT_EQ(text(std::nextafterf(1.0F, 0.0F)), "0.9999999");
    EXPECT_EQ(text(std::nextafterf(0.0001F, 1.0F)), exact(std::nextafterf(0.0001F, 1.0F)));
}

TEST(NumberText, ExactHalvesGoToTheEvenDigit) {
    EXPECT_EQ(text(0.00390625F), "0.00390625");
    EXPECT_EQ(text(1.00000000F + 0.00048828125F), "1.000488"); // 1.00048828125
    EXPECT_EQ(text(524288.25F), "524288.2");                   // a half: to the even digit below
    EXPECT_EQ(text(524288.75F), "524288.8");                   // a half: to the even digit above
    EXPECT_EQ(text(10000001.0F), "1E+07");
    EXPECT_EQ(text(10000005.0F), "1E+07"); // a half
    EXPECT_EQ(text(10000015.0F), "1.000002E+07");
}

TEST(NumberText, AllCountsTimesManyFactorsGiveTheDigitsOfAnExactConversion) {
    // Factors that instruments use, factors whose products need all digits, and very large and small ones.
    const std::vector<float> factors{
        20,     10,     8,     4,      2,     1.6F,     0.8F,    0.4F,    0.2F,     0.1F,          0.08F, 0.04F,
        0.02F,  0.5F,   0.25F, 0.125F, 1,     40,       80,      100,     200,      1000,          400,   2.5F,
        12.5F,  0.3F,   0.7F,  1.1F,   3.3F,  1.0F / 3, 78.125F, 0.0012F, 3.14159F, 1e-3F,         1e-5F, 1.7e-9F,
        1e-20F, 1e-41F, 1e5F,  6.1e7F, 1e15F, 1.23e28F, 1e33F,   -0.05F,  -1.6F,    0.00061035156F};
    std::size_t wrong = 0;
    for (const float factor : factors) {
        for (int count = -32768; count <= 32767; ++count) {
            const float value = static_cast<float>(count) * factor;
            if (text(value) != exact(value) && ++wrong < 20) {
                ADD_FAILURE() << count << " x " << factor << ": " << text(value) << " for " << exact(value);
            }
        }
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(NumberText, AnyRealGivesTheDigitsOfAnExactConversion) {
    std::uint32_t state = 12345;
    std::size_t wrong = 0;
    for (int i = 0; i < 1'000'000; ++i) {
        state = state * 1664525U + 1013904223U;
        const auto value = std::bit_cast<float>(state ^ (state >> 15U));
        if (std::isfinite(value) && text(value) != exact(value) && ++wrong < 20) {
            ADD_FAILURE() << text(value) << " for " << exact(value);
        }
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(NumberText, ReturnsBlanksBehindTheText) {
    const CellText made = numberText(-12.5F);
    EXPECT_EQ(std::string(made.characters.data(), made.characters.size()), "-12.5        ");
    EXPECT_EQ(rowNumberText(7).view(), "7");
    EXPECT_EQ(rowNumberText(10231).view(), "10231");
    EXPECT_EQ(rowNumberText(0).view(), "0");
}

} // namespace
} // namespace sixtrace::test
