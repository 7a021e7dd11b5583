// SPDX-License-Identifier: MIT
#include "platform/files/programfolder.h"

#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#if defined(Q_OS_UNIX)
#include <sys/stat.h>
#endif

namespace sixtrace::test {
namespace {

/// Programs in "bin", and a user whose data lie in "home".
class ProgramFolder : public ::testing::Test {
protected:
    void SetUp() override {
        m_dataHome = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", m_folder.filePath(u"home"_s).toUtf8());
        QDir().mkpath(at("bin"));
    }
    void TearDown() override {
        if (m_dataHome.isNull()) {
            qunsetenv("XDG_DATA_HOME");
        } else {
            qputenv("XDG_DATA_HOME", m_dataHome);
        }
    }
    [[nodiscard]] QString at(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }
    void put(const char* name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(at(name)).path());
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    [[nodiscard]] QByteArray read(const char* name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void install() const {
        put("share/sixtrace/English.Lan", "[FrmCom]\n");
        put("share/sixtrace/vrt_e.html", "help");
        put("share/sixtrace/vrt_pictures/a.png", "picture");
        put("share/sixtrace/ttdll.ini", "[Link]\n");
        put("share/sixtrace/other.txt", "not for users");
        put("lib/sixtrace/libttdll.so", "library");
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_dataHome;
};

TEST_F(ProgramFolder, IsTheExecutablesOwnWhereThatCanBeWritten) {
    EXPECT_EQ(programFolderOf(at("bin")), at("bin/"));
    EXPECT_FALSE(QFileInfo::exists(at("home")));
}

TEST_F(ProgramFolder, OfAnInstallForAllUsersIsTheUsersOwnAndHasWhatTheProgramLooksForThere) {
    install();
    EXPECT_EQ(programFolderOf(at("bin")), at("home/sixtrace/"));
    EXPECT_EQ(read("home/sixtrace/English.Lan"), "[FrmCom]\n");
    EXPECT_EQ(read("home/sixtrace/vrt_e.html"), "help");
    EXPECT_EQ(read("home/sixtrace/vrt_pictures/a.png"), "picture");
    EXPECT_EQ(read("home/sixtrace/libttdll.so"), "library");
    EXPECT_EQ(read("home/sixtrace/ttdll.ini"), "[Link]\n");
    EXPECT_FALSE(QFileInfo::exists(at("home/sixtrace/other.txt")));
    EXPECT_TRUE(
        QFileInfo(at("home/sixtrace/English.Lan")).isSymLink());        // a link, so that an upgrade reaches every user
    EXPECT_FALSE(QFileInfo(at("home/sixtrace/ttdll.ini")).isSymLink()); // a copy, which the user may change
    EXPECT_TRUE(QFileInfo(at("home/sixtrace/ttdll.ini")).isWritable());
}

TEST_F(ProgramFolder, KeepsWhatTheUserHasPutThere) {
    install();
    put("home/sixtrace/libttdll.so", "a maker's own");
    put("home/sixtrace/ttdll.ini", "[Link]\nLink=usb\n");
    put("home/sixtrace/English.Lan", "my captions");
    EXPECT_EQ(programFolderOf(at("bin")), at("home/sixtrace/"));
    EXPECT_EQ(read("home/sixtrace/libttdll.so"), "a maker's own");
    EXPECT_EQ(read("home/sixtrace/ttdll.ini"), "[Link]\nLink=usb\n");
    EXPECT_EQ(read("home/sixtrace/English.Lan"), "my captions");
}

TEST_F(ProgramFolder, LinkWhoseTargetIsGoneIsSetAnew) {
    install();
    QDir().mkpath(at("home/sixtrace"));
    ASSERT_TRUE(QFile::link(at("moved/English.Lan"), at("home/sixtrace/English.Lan")));
    static_cast<void>(programFolderOf(at("bin")));
    EXPECT_EQ(read("home/sixtrace/English.Lan"), "[FrmCom]\n");
}

TEST_F(ProgramFolder, OfAFolderThatCannotBeWrittenIsTheUsersOwn) {
    // Nobody can write to a folder that does not exist, not even root.
    EXPECT_EQ(programFolderOf(at("gone")), at("home/sixtrace/"));
    EXPECT_TRUE(QFileInfo(at("home/sixtrace")).isDir());
}

#if defined(Q_OS_UNIX)
TEST_F(ProgramFolder, OfTheUserIsClosedToOthersWhateverTheMask) {
    install();
    const mode_t before = umask(0);
    static_cast<void>(programFolderOf(at("bin")));
    umask(before);
    for (const char* folder : {"home", "home/sixtrace"}) {
        struct stat found {};
        ASSERT_EQ(stat(QFile::encodeName(at(folder)).constData(), &found), 0);
        EXPECT_EQ(found.st_mode & 07777U, 0700U) << folder;
    }
}

TEST_F(ProgramFolder, APipeInThePlaceOfTheLibrarysSettingsIsNotCopied) {
    install();
    const QByteArray settings = QFile::encodeName(at("share/sixtrace/ttdll.ini"));
    ASSERT_TRUE(QFile::remove(at("share/sixtrace/ttdll.ini")));
    ASSERT_EQ(mkfifo(settings.constData(), 0600), 0);
    EXPECT_EQ(programFolderOf(at("bin")), at("home/sixtrace/"));
    EXPECT_FALSE(QFileInfo::exists(at("home/sixtrace/ttdll.ini")));
}
#endif

TEST_F(ProgramFolder, IsFurnishedFromTheExecutablesFolderToo) {
    put("bin/English.Lan", "beside");
    put("bin/libttdll.so", "library");
    QDir().mkpath(at("home/sixtrace"));
    furnishProgramFolder(at("home/sixtrace"), at("bin"));
    EXPECT_EQ(read("home/sixtrace/English.Lan"), "beside");
    EXPECT_EQ(read("home/sixtrace/libttdll.so"), "library");
}

TEST(EnsureFolder, MakesAFolderAndItsParents) {
    const QTemporaryDir folder;
    ensureFolder(folder.filePath(u"a/b"_s));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"a/b"_s)).isDir());
    ensureFolder(folder.filePath(u"a/b"_s));
    EXPECT_TRUE(QFileInfo(folder.filePath(u"a/b"_s)).isDir());
}

} // namespace
} // namespace sixtrace::test
