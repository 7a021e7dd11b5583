// SPDX-License-Identifier: MIT
#include "acquire/porttable.h"

#include <gtest/gtest.h>

#include <vector>

namespace sixtrace::test {
namespace {

TEST(PortTable, OnlyPorts1To16AreProbed) {
    std::vector<int> tried;
    PortTable table;
    table.search([&tried](int number) {
        tried.push_back(number);
        return success();
    });
    EXPECT_EQ(tried, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(table.count(), 16);
    EXPECT_EQ(table.at(16).value(), 16);
    EXPECT_EQ(table.at(17).value(), 0);
}

TEST(PortTable, ATakenPortCountsAndAnyOtherErrorSkipsTheNumber) {
    PortTable table;
    table.search([](int number) -> Outcome {
        switch (number) {
        case 3:
            return success();
        case 7:
            return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
        case 9:
            return RuntimeError::of(ErrorNumber::PermissionDenied);
        default:
            return RuntimeError::of(ErrorNumber::FileNotFound);
        }
    });
    EXPECT_EQ(table.count(), 2);
    EXPECT_EQ(table.at(1).value(), 3);
    EXPECT_EQ(table.at(2).value(), 7);
    EXPECT_EQ(table.at(3).value(), 0);
    EXPECT_EQ(std::vector(table.found().begin(), table.found().end()), (std::vector<std::int16_t>{3, 7}));
}

TEST(PortTable, AnIndexOutside0To17IsASubscriptError) {
    const PortTable table;
    EXPECT_EQ(table.at(-1).error().number, ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(table.at(18).error().number, ErrorNumber::SubscriptOutOfRange);
    EXPECT_TRUE(table.at(0).ok());
}

} // namespace
} // namespace sixtrace::test
