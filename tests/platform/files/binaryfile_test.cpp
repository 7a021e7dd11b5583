// SPDX-License-Identifier: MIT
#include "platform/files/binaryfile.h"

#include "support/strings.h"

#include <QFile>
#include <QTemporaryDir>

namespace sixtrace::test {
namespace {

ErrorNumber numberOf(const Outcome& outcome) {
    return outcome.ok() ? ErrorNumber::None : outcome.error().number;
}

TEST(BinaryFile, WritesFromTheStartAndKeepsWhatLiesBehind) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.bin"_s);
    BinaryFile file;
    ASSERT_TRUE(file.open(path).ok());
    ASSERT_TRUE(file.write("abcdef").ok());
    ASSERT_TRUE(file.open(path).ok()); // opening again closes the file first
    ASSERT_TRUE(file.write("XY").ok());
    file.close();
    QFile written(path);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), QByteArray("XYcdef"));
}

TEST(BinaryFile, NothingIsWrittenToAFileThatIsNotOpen) {
    BinaryFile file;
    EXPECT_EQ(numberOf(file.write("abc")), ErrorNumber::BadFileNumber);
}

TEST(BinaryFile, AnOpenThatFailsSaysWhy) {
    const QTemporaryDir folder;
    BinaryFile file;
    EXPECT_EQ(numberOf(file.open(QString())), ErrorNumber::BadFileNumber);
    EXPECT_EQ(numberOf(file.open(folder.path())), ErrorNumber::PathAccess);
    EXPECT_EQ(numberOf(file.open(folder.filePath(u"none/a.bin"_s))), ErrorNumber::PathNotFound);
    EXPECT_EQ(numberOf(file.open(folder.filePath(QString(300, u'n')))),
              ErrorNumber::BadFileNumber); // a name has at most 255 characters
    // Not even root can write to a program that runs.
    EXPECT_EQ(numberOf(file.open(u"/proc/self/exe"_s)), ErrorNumber::PermissionDenied);
}

} // namespace
} // namespace sixtrace::test
