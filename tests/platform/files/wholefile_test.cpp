// SPDX-License-Identifier: MIT
#include "platform/files/wholefile.h"

#include "support/hardships.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

TEST(WriteWhole, MakesAndReplacesAFile) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.bin"_s);
    ASSERT_TRUE(writeWhole(path, QByteArray("one\0two", 7)));
    EXPECT_EQ(contentOf(path), QByteArray("one\0two", 7));
    ASSERT_TRUE(writeWhole(path, QByteArray()));
    EXPECT_EQ(contentOf(path), QByteArray());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList(u"a.bin"_s));
}

TEST(WriteWhole, FollowsALink) {
    const QTemporaryDir folder;
    ASSERT_TRUE(writeWhole(folder.filePath(u"real"_s), "old"));
    ASSERT_TRUE(QFile::link(folder.filePath(u"real"_s), folder.filePath(u"link"_s)));
    ASSERT_TRUE(writeWhole(folder.filePath(u"link"_s), "new"));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"link"_s)).isSymLink());
    EXPECT_EQ(contentOf(folder.filePath(u"real"_s)), "new");
}

TEST(WriteWhole, NamesAFolderInPlaceOfTheFile) {
    const QTemporaryDir folder;
    const Outcome outcome = writeWhole(folder.path(), "x");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code(), 75);
}

TEST(WriteWhole, NamesAMissingFolder) {
    const QTemporaryDir folder;
    const Outcome outcome = writeWhole(folder.filePath(u"none/a"_s), "x");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code(), 76);
}

TEST(WriteWhole, NamesAFullDiskAndLeavesTheFileAsItWas) {
    const QTemporaryDir folder;
    ASSERT_TRUE(writeWhole(folder.filePath(u"a"_s), "old"));
    for (const qsizetype size : {200, 100'000}) { // smaller and larger than a buffer
        for (const rlim_t room : {rlim_t{0}, rlim_t{100}, rlim_t{199}}) {
            const Outcome outcome = [&] {
                const test::SmallDisk disk(room);
                return writeWhole(folder.filePath(u"a"_s), QByteArray(size, 'x'));
            }();
            ASSERT_FALSE(outcome) << room;
            EXPECT_EQ(outcome.error().code(), 61) << room;
            EXPECT_EQ(contentOf(folder.filePath(u"a"_s)), "old");
        }
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList(u"a"_s));
}

TEST(WriteWhole, LeavesDevicesAlone) {
    const Outcome outcome = writeWhole(u"/dev/null"_s, "x");
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().code(), 75);
}

} // namespace
} // namespace sixtrace::test
