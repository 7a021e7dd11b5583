// SPDX-License-Identifier: MIT
#include "platform/wholefile.h"

#include "platform/programfolder.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace sixtrace {
namespace {

TEST(WholeFile, ReplacesAFileWhole) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.bin"));
    ASSERT_TRUE(writeWhole(path, "first and longer").ok());
    ASSERT_TRUE(writeWhole(path, "second").ok());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("second"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(WholeFile, NamesTheReasonWhenItCannotWrite) {
    const QTemporaryDir folder;
    EXPECT_EQ(writeWhole(folder.path(), "x").error().number, ErrorNumber::PathAccess);
    EXPECT_EQ(writeWhole(folder.filePath(QStringLiteral("no/a.bin")), "x").error().number, ErrorNumber::PathNotFound);
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(ProgramFolder, EndsInOneSeparator) {
    EXPECT_EQ(withSeparator(text("/opt/sixtrace")), text("/opt/sixtrace/"));
    EXPECT_EQ(withSeparator(text("/")), text("/")) << "a folder at the root gets no second one";
}

} // namespace
} // namespace sixtrace
