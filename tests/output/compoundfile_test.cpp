// SPDX-License-Identifier: MIT
#include "output/compoundfile.h"

#include "support/strings.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace sixtrace::test {
namespace {

std::uint32_t at32(const QByteArray& bytes, qsizetype place) {
    if (place < 0 || place + 4 > bytes.size()) {
        throw std::out_of_range("behind the end of the file");
    }
    std::uint32_t number = 0;
    for (qsizetype i = 3; i >= 0; --i) {
        number = number << 8U | static_cast<std::uint8_t>(bytes.at(place + i));
    }
    return number;
}

qsizetype placeOf(std::uint32_t sector) {
    return 512 + static_cast<qsizetype>(sector) * 512;
}

/// The entry of the sector table that the header's list leads to.
std::uint32_t next(const QByteArray& file, std::uint32_t sector) {
    const std::uint32_t table = at32(file, 76 + static_cast<qsizetype>(sector / 128) * 4);
    return at32(file, placeOf(table) + static_cast<qsizetype>(sector % 128) * 4);
}

/// The content of a chain of sectors, found in the way of a reader.
QByteArray chain(const QByteArray& file, std::uint32_t sector) {
    QByteArray content;
    while (sector != 0xFFFFFFFE) {
        if (content.size() > file.size()) {
            throw std::runtime_error("the chain runs in a circle");
        }
        content += file.mid(placeOf(sector), 512);
        sector = next(file, sector);
    }
    return content;
}

QByteArray pattern(qsizetype size) {
    QByteArray bytes(size, '\0');
    for (qsizetype i = 0; i < size; ++i) {
        bytes[i] = static_cast<char>(i * 7 + i / 512);
    }
    return bytes;
}

TEST(CompoundFile, GivesTheStreamBackAlongItsChainOfSectors) {
    // Sizes around a whole number of sectors, around the end of the first sector table, and around the end of the last
    // but one table that the header can list.
    for (const qsizetype size : {4096, 4097, 4607, 4608, 126 * 512, 126 * 512 + 1, 127 * 512, 128 * 512, 1'500'000}) {
        const QByteArray stream = pattern(size);
        const Result<QByteArray> made = compoundFile(u"Workbook"_s, stream);
        ASSERT_TRUE(made) << size;
        const QByteArray& file = made.value();
        EXPECT_EQ(file.size() % 512, 0);
        EXPECT_TRUE(file.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
        const QByteArray directory = chain(file, at32(file, 48));
        ASSERT_EQ(directory.size(), 512);
        EXPECT_EQ(directory.at(66), 5) << "the first entry is the root";
        EXPECT_EQ(at32(directory, 76), 1U) << "whose child is the second";
        const QByteArray entry = directory.mid(128, 128);
        EXPECT_EQ(entry.left(16), QByteArray("W\0o\0r\0k\0b\0o\0o\0k\0", 16));
        EXPECT_EQ(entry.at(64), 18) << "bytes of the name with its end";
        EXPECT_EQ(entry.at(66), 2) << "a stream";
        EXPECT_EQ(at32(entry, 120), static_cast<std::uint32_t>(size));
        EXPECT_EQ(chain(file, at32(entry, 116)).left(size), stream) << size;
    }
}

TEST(CompoundFile, MarksItsSectorTablesAsSuchAndTheSectorsBehindTheFileAsFree) {
    const Result<QByteArray> made = compoundFile(u"Workbook"_s, pattern(300'000));
    ASSERT_TRUE(made);
    const QByteArray& file = made.value();
    const std::uint32_t tables = at32(file, 44);
    EXPECT_EQ(tables, 5U); // 586 sectors of stream, 1 of directory and 5 of tables with 128 entries each
    for (std::uint32_t i = 0; i < tables; ++i) {
        EXPECT_EQ(next(file, at32(file, 76 + static_cast<qsizetype>(i) * 4)), 0xFFFFFFFDU);
    }
    const auto sectors = static_cast<std::uint32_t>(file.size() / 512 - 1);
    EXPECT_EQ(sectors, 592U);
    for (std::uint32_t sector = sectors; sector < tables * 128; ++sector) {
        EXPECT_EQ(next(file, sector), 0xFFFFFFFFU);
    }
}

TEST(CompoundFile, FillsAShortStreamWithZeros) {
    const Result<QByteArray> made = compoundFile(u"Book"_s, "short");
    ASSERT_TRUE(made);
    const QByteArray directory = chain(made.value(), at32(made.value(), 48));
    EXPECT_EQ(at32(directory, 128 + 120), 4096U);
    EXPECT_EQ(chain(made.value(), at32(directory, 128 + 116)), "short" + QByteArray(4091, '\0'));
}

TEST(CompoundFile, RefusesAStreamThatItsHeaderCannotDescribe) {
    // 109 tables describe 109 x 128 sectors. The directory takes one of them and the tables take 109.
    const qsizetype most = (109 * 128 - 110) * 512;
    EXPECT_TRUE(compoundFile(u"Workbook"_s, QByteArray(most, 'x')));
    const Result<QByteArray> refused = compoundFile(u"Workbook"_s, QByteArray(most + 1, 'x'));
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code(), 5);
}

} // namespace
} // namespace sixtrace::test
