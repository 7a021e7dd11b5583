// SPDX-License-Identifier: MIT
#include "capture/bytesource.h"

#include "capture/bytes.h"
#include "platform/files/bytefile.h"
#include "support/strings.h"

#include <array>
#include <limits>

namespace sixtrace::test {
namespace {

class SourcesOfBytes : public CaptureTest {
protected:
    static std::span<const std::byte> bytesOf(const QByteArray& content) {
        return {reinterpret_cast<const std::byte*>(content.constData()), static_cast<std::size_t>(content.size())};
    }
    /// Bytes of which no two that lie near each other are alike, as many as `size`.
    static QByteArray content(qsizetype size) {
        QByteArray bytes(size, '\0');
        for (qsizetype i = 0; i < size; ++i) {
            bytes[i] = static_cast<char>(i % 251);
        }
        return bytes;
    }
    static QByteArray copied(std::span<const std::byte> bytes) {
        return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
    }
};

constexpr qsizetype kBeyondTheWindow = 256 * 1024 + 7;
constexpr std::array<std::size_t, 7> kCounts{0, 1, 2, 4, 12, 256 * 1024, 256 * 1024 + 1};

TEST_F(SourcesOfBytes, AreTheSameInAFileAndInMemory) {
    for (const qsizetype size : {qsizetype{0}, qsizetype{1}, qsizetype{13}, kBeyondTheWindow}) {
        const QByteArray held = content(size);
        ByteSource file;
        ASSERT_TRUE(file.open(put(held)));
        ByteSource memory;
        memory.openBytes(bytesOf(held));
        const auto end = static_cast<double>(size);
        for (const double position : {-1.0, 0.0, 0.5, 1.0, 1.5, 2.0, 10.0, end - 1, end, end + 1, end + 2, 1e300,
                                      std::numeric_limits<double>::quiet_NaN()}) {
            for (const std::size_t count : kCounts) {
                const auto a = file.upTo(position, count);
                const auto b = memory.upTo(position, count);
                ASSERT_EQ(a.size(), b.size()) << size << ' ' << position << ' ' << count;
                EXPECT_EQ(copied(a), copied(b)) << size << ' ' << position;
            }
            EXPECT_EQ(file.atEnd(position), memory.atEnd(position)) << size << ' ' << position;
        }
    }
}

TEST_F(SourcesOfBytes, InMemoryEndAfterTheirLastByte) {
    const QByteArray held = content(5);
    ByteSource source;
    source.openBytes(bytesOf(held));
    EXPECT_EQ(source.number<std::int16_t>(1), 0x0100);
    EXPECT_EQ(source.number<std::int16_t>(4), 0x0403);
    EXPECT_EQ(source.number<std::int16_t>(5), std::nullopt);
    EXPECT_EQ(source.upTo(4, 10).size(), 2U);
    EXPECT_FALSE(source.atEnd(5));
    EXPECT_TRUE(source.atEnd(6));
    source.close();
    EXPECT_EQ(source.number<char>(1), std::nullopt);
}

TEST_F(SourcesOfBytes, ReplaceWhatWasOpenBefore) {
    const QByteArray held = content(5);
    ByteSource source;
    source.openBytes(bytesOf(held));
    ASSERT_TRUE(source.open(put("file")));
    EXPECT_EQ(source.number<char>(1), 'f');
    source.openBytes(bytesOf(held));
    EXPECT_EQ(source.number<char>(4), 3);
    EXPECT_FALSE(source.open(path(u"none"_s)));
    EXPECT_EQ(source.number<char>(4), std::nullopt);
}

TEST_F(SourcesOfBytes, ForRecordsAreTheSameInAFileAndInMemory) {
    for (const qsizetype size : {qsizetype{0}, qsizetype{1}, qsizetype{13}, kBeyondTheWindow}) {
        const QByteArray held = content(size);
        ByteFile file;
        ASSERT_TRUE(file.open(put(held).toStdString()));
        ByteFile memory;
        memory.openBytes(bytesOf(held));
        EXPECT_TRUE(memory.isResident());
        ASSERT_EQ(file.size(), memory.size());
        for (const std::int64_t offset :
             {std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}, std::int64_t{size} - 2, std::int64_t{size} - 1,
              std::int64_t{size}, std::int64_t{size} + 1, std::numeric_limits<std::int64_t>::max()}) {
            for (const std::size_t count : kCounts) {
                const auto a = file.stretch(offset, count);
                const QByteArray ofFile = copied(a);
                const auto b = memory.stretch(offset, count);
                EXPECT_EQ(ofFile, copied(b)) << size << ' ' << offset << ' ' << count;
            }
        }
    }
}

TEST_F(SourcesOfBytes, InMemoryAreLoadedAsFromAFile) {
    const QByteArray held = capture("V11", {{.mark = "CHB", .samples = {5, -6, 7, 8}}});
    ByteSource source;
    source.openBytes(bytesOf(held));
    loadCapture(source, view->scope());
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ChannelPresent[3], 1);
    EXPECT_EQ(model->SampleData(3, 1), -6);
    EXPECT_EQ(model->PeakToPeak[3], 14);
    EXPECT_TRUE(view->ticks[3]);
    EXPECT_TRUE(view->tableLoaded);

    const QByteArray older = capture("bin", {{.samples = {9, 8, 7, 6}}});
    source.openBytes(bytesOf(held));
    EXPECT_EQ(loadOlderCapture(source, view->scope()), BinFileOutcome::NotACapture);
    source.openBytes(bytesOf(older));
    EXPECT_EQ(loadOlderCapture(source, view->scope()), BinFileOutcome::Loaded);
    EXPECT_EQ(model->SampleData(0, 3), 6);
}

} // namespace
} // namespace sixtrace::test
