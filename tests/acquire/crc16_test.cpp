// SPDX-License-Identifier: MIT
#include "acquire/crc16.h"

#include <QByteArray>

#include <gtest/gtest.h>

using namespace sixtrace;

TEST(Crc16, CheckValueOfTheNineDigitsIs31C3) {
    EXPECT_EQ(crc16("123456789"), 0x31C3);
}

TEST(Crc16, NoDataAndZeroBytesGiveZero) {
    EXPECT_EQ(crc16({}), 0);
    EXPECT_EQ(crc16(QByteArray(1024, '\0')), 0);
}

TEST(Crc16, AByteAboveHalfIsTakenWithoutSign) {
    // 0xFF shifted through eight steps by hand: the published table's last entry.
    EXPECT_EQ(crc16(QByteArray(1, '\xFF')), 0x1EF0);
}
