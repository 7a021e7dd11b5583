// SPDX-License-Identifier: MIT
#include "platform/profilefile.h"

#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace sixtrace {
namespace {

class ProfileFile : public ::testing::Test {
protected:
    void give(const QByteArray& content) const {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    [[nodiscard]] QByteArray content() const {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("unreadable");
    }
    [[nodiscard]] QString read(const char* section, const char* key) const {
        return readProfile(text(section), text(key), text("default"), file);
    }
    void write(const char* section, const char* key, const char* value) const {
        ASSERT_TRUE(writeProfile(text(section), text(key), text(value), file).ok());
    }

    QTemporaryDir folder;
    QString file = folder.filePath(QStringLiteral("vkq.ini"));
};

TEST_F(ProfileFile, GivesTheDefaultWithoutFileSectionKeyOrValue) {
    EXPECT_EQ(read("Common", "Language"), text("default"));
    give("[Common]\nLanguage=\nOther=1\n");
    EXPECT_EQ(read("Common", "Language"), text("default"));
    EXPECT_EQ(read("Common", "Missing"), text("default"));
    EXPECT_EQ(read("Missing", "Other"), text("default"));
}

TEST_F(ProfileFile, ComparesSectionsAndKeysWithoutCase) {
    give("[cOMMON]\nlANGUAGE=1\n");
    EXPECT_EQ(read("Common", "Language"), text("1"));
}

TEST_F(ProfileFile, DropsBlanksAndOnePairOfQuotes) {
    give("[ S ]\n  a  =  255 \nb=\" kept \"\nc='x'\nd=\"\"y\"\"\ne=\"open\n");
    EXPECT_EQ(read("S", "a"), text("255"));
    EXPECT_EQ(read("S", "b"), text(" kept "));
    EXPECT_EQ(read("S", "c"), text("x"));
    EXPECT_EQ(read("S", "d"), text("\"y\""));
    EXPECT_EQ(read("S", "e"), text("\"open"));
}

TEST_F(ProfileFile, TakesTheFirstKeyOfTheFirstSection) {
    give("[S]\na=1\na=2\n[T]\nb=1\n[S]\na=3\nc=4\n");
    EXPECT_EQ(read("S", "a"), text("1"));
    EXPECT_EQ(read("S", "c"), text("default"));
}

TEST_F(ProfileFile, PassesOverCommentsAndLinesWithoutAMark) {
    give("; a=0\n[S]\n;a=1\nrubbish\na=2\n");
    EXPECT_EQ(read("S", "a"), text("2"));
}

TEST_F(ProfileFile, ToleratesAByteOrderMarkAndCarriageReturns) {
    give("\xEF\xBB\xBF[S]\r\na=\xE6\x96\x87\r\n");
    EXPECT_EQ(read("S", "a"), text("文"));
}

TEST_F(ProfileFile, AValueOfExactly127CharactersSurvivesAndLongerOnesAreCut) {
    const QString exact(127, u'x');
    give("[S]\na=" + exact.toUtf8() + "\nb=" + exact.toUtf8() + "y\n");
    EXPECT_EQ(read("S", "a"), exact);
    EXPECT_EQ(read("S", "b"), exact);
}

TEST_F(ProfileFile, SurvivesBytesThatAreNoText) {
    QByteArray bytes;
    for (int i = 0; i < 4096; ++i) {
        bytes += static_cast<char>(i * 37);
    }
    give(bytes + "\n[S]\na=1\n");
    EXPECT_EQ(read("S", "a"), text("1"));
    EXPECT_EQ(readProfile(text("S"), text("a"), text("default"), folder.path()), text("default")) << "a folder";
}

TEST_F(ProfileFile, AFirstWriteMakesTheFileWithJustThatKey) {
    write("Common", "Language", "0");
    EXPECT_EQ(content(), QByteArray("[Common]\nLanguage=0\n"));
}

TEST_F(ProfileFile, WritingKeepsCommentsOrderAndAllOtherKeys) {
    give("; mine\n[A]\nx=1\n\n[Common]\n; here\nLanguage = 0\nGraticule=True\n[Z]\ny=2");
    write("common", "LANGUAGE", "1");
    EXPECT_EQ(content(), QByteArray("; mine\n[A]\nx=1\n\n[Common]\n; here\nLANGUAGE=1\nGraticule=True\n[Z]\ny=2"));
    write("A", "w", " 7");
    EXPECT_EQ(content(),
              QByteArray("; mine\n[A]\nx=1\nw= 7\n\n[Common]\n; here\nLANGUAGE=1\nGraticule=True\n[Z]\ny=2"));
    write("Z", "z", "3");
    write("New", "n", "4");
    EXPECT_TRUE(content().endsWith("[Z]\ny=2\nz=3\n[New]\nn=4\n")) << content().constData();
}

TEST_F(ProfileFile, WritingKeepsLineEndsAndTheByteOrderMark) {
    give("\xEF\xBB\xBF[S]\r\na=1\r\n");
    write("S", "a", "2");
    write("T", "b", "3");
    EXPECT_EQ(content(), QByteArray("\xEF\xBB\xBF[S]\r\na=2\r\n[T]\r\nb=3\r\n"));
}

TEST_F(ProfileFile, LineEndsInAValueBecomeBlanks) {
    write("S", "a", "1\n[T]\rb=2");
    EXPECT_EQ(content(), QByteArray("[S]\na=1 [T] b=2\n"));
}

TEST_F(ProfileFile, TwoWritersAtOnceLoseNoKey) {
    constexpr int kKeys = 40;
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 2; ++writer) {
        writers.emplace_back([this, writer] {
            for (int i = 0; i < kKeys; ++i) {
                const QString key = QString::number(writer) + u'_' + QString::number(i);
                static_cast<void>(writeProfile(text("S"), key, key, file));
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    for (int i = 0; i < kKeys; ++i) {
        for (int writer = 0; writer < 2; ++writer) {
            const QString key = QString::number(writer) + u'_' + QString::number(i);
            EXPECT_EQ(readProfile(text("S"), key, text("lost"), file), key);
        }
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1) << "nothing else is left behind";
}

TEST_F(ProfileFile, WritingWhereNoFileCanBeIsAnErrorAndLeavesNothing) {
    const QString nowhere = folder.filePath(QStringLiteral("missing/vkq.ini"));
    EXPECT_FALSE(writeProfile(text("S"), text("a"), text("1"), nowhere).ok());
    EXPECT_FALSE(writeProfile(text("S"), text("a"), text("1"), folder.path()).ok());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(ProfileFile, WritingKeepsPermissionsAndFollowsALink) {
    give("[S]\na=1\n");
    QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const QString link = folder.filePath(QStringLiteral("link.ini"));
    ASSERT_TRUE(QFile::link(file, link));
    ASSERT_TRUE(writeProfile(text("S"), text("a"), text("2"), link).ok());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(content(), QByteArray("[S]\na=2\n"));
    EXPECT_FALSE(QFile::permissions(file) & (QFileDevice::ReadGroup | QFileDevice::ReadOther));
}

} // namespace
} // namespace sixtrace
