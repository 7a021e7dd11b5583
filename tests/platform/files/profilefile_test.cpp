// SPDX-License-Identifier: MIT
#include "platform/files/profilefile.h"
#include "platform/files/profilefixture.h"

#include "support/hardships.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryDir>

#include <array>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vector>

namespace sixtrace::test {
namespace {

TEST_F(ProfileFile, TwoWritersAtOnceLoseNoKey) {
    constexpr int kWriters = 2;
    constexpr int kKeys = 25;
    std::vector<pid_t> writers;
    for (int writer = 0; writer < kWriters; ++writer) {
        const pid_t pid = fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            bool good = true;
            for (int i = 0; i < kKeys; ++i) {
                good = set(u"S"_s, u"w%1k%2"_s.arg(writer).arg(i), QString::number(i)) && good;
            }
            _exit(good ? 0 : 1);
        }
        writers.push_back(pid);
    }
    for (const pid_t pid : writers) {
        int status = -1;
        ASSERT_EQ(waitpid(pid, &status, 0), pid);
        EXPECT_EQ(status, 0);
    }
    for (int writer = 0; writer < kWriters; ++writer) {
        for (int i = 0; i < kKeys; ++i) {
            EXPECT_EQ(get(u"S"_s, u"w%1k%2"_s.arg(writer).arg(i)), QString::number(i));
        }
    }
}

TEST_F(ProfileFile, NoLockOrHalfWrittenFileStaysBehind) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"1"_s));
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    const QFileInfo info(path());
    EXPECT_EQ(info.dir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList(u"some.ini"_s));
}

TEST_F(ProfileFile, AKeyThatSaysSoAlreadyNeedsNeitherLockNorAFolderToWriteIn) {
    put("[A]\r\nk = 1\r\nK=2\r\nlast=x");
    const QString folder = QFileInfo(path()).path();
    const auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    ASSERT_TRUE(QFile::setPermissions(path(), readable));
    ASSERT_TRUE(QFile::setPermissions(folder, readable | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther));
    {
        const test::OrdinaryUser user;
        EXPECT_TRUE(set(u"a"_s, u"last"_s, u"x"_s));
        EXPECT_FALSE(set(u"A"_s, u"last"_s, u"y"_s));
        // The same value in other letters is a line to be written.
        EXPECT_FALSE(set(u"A"_s, u"k"_s, u"1"_s));
        EXPECT_FALSE(set(u"A"_s, u"new"_s, u""_s));
    }
    EXPECT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(content(), "[A]\r\nk = 1\r\nK=2\r\nlast=x");
}

TEST_F(ProfileFile, ALinkIsFollowedAndStaysALink) {
    put("[A]\nk=1\n");
    const QString link = path(u"link.ini"_s);
    ASSERT_TRUE(QFile::link(path(), link));
    ASSERT_TRUE(writeProfile(u"A"_s, u"k"_s, u"2"_s, link));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(content(), "[A]\nk=2\n");
}

TEST_F(ProfileFile, TheLockOfALinkLiesBesideTheFileThatItLeadsTo) {
    put("[A]\nk=1\n");
    QTemporaryDir elsewhere;
    const QString link = elsewhere.filePath(u"link.ini"_s);
    ASSERT_TRUE(QFile::link(path(), link));
    // Another process holds the lock of the file itself. The write through the link waits for it and gives up.
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        QLockFile lock(path() + u".lock"_s);
        if (!lock.tryLock(0)) {
            _exit(2);
        }
        const pid_t writer = fork();
        if (writer == 0) {
            _exit(writeProfile(u"A"_s, u"k"_s, u"2"_s, link).ok() ? 1 : 0);
        }
        int status = -1;
        waitpid(writer, &status, 0);
        lock.unlock();
        _exit(WEXITSTATUS(status));
    }
    int status = -1;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(content(), "[A]\nk=1\n");
    ASSERT_TRUE(writeProfile(u"A"_s, u"k"_s, u"3"_s, link));
    EXPECT_EQ(content(), "[A]\nk=3\n");
}

TEST_F(ProfileFile, WritesBehindOneThatWaitedInVainForTheLockWaitAMomentOnlyAndHarmNothing) {
    put("[A]\nk=1\n");
    std::array<int, 2> locked{};
    std::array<int, 2> release{};
    ASSERT_EQ(pipe(locked.data()), 0);
    ASSERT_EQ(pipe(release.data()), 0);
    const pid_t holder = fork();
    ASSERT_GE(holder, 0);
    if (holder == 0) {
        QLockFile lock(path() + u".lock"_s);
        const bool good = lock.tryLock(0) && write(locked[1], "x", 1) == 1;
        char byte = 0;
        const bool told = read(release[0], &byte, 1) == 1;
        sleep(2); // shorter than the usual wait of a write
        lock.unlock();
        _exit(good && told ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(locked[0], &byte, 1), 1);
    EXPECT_FALSE(set(u"A"_s, u"k"_s, u"2"_s));
    ASSERT_EQ(write(release[1], "x", 1), 1);
    EXPECT_FALSE(set(u"A"_s, u"j"_s, u"3"_s));
    EXPECT_TRUE(writeProfile(u"A"_s, u"k"_s, u"of another file"_s, path(u"other.ini"_s)));
    int status = -1;
    ASSERT_EQ(waitpid(holder, &status, 0), holder);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content(), "[A]\nk=1\n");
    EXPECT_TRUE(set(u"A"_s, u"j"_s, u"4"_s)) << "a lock that is free is taken at once";
    EXPECT_EQ(content(), "[A]\nk=1\nj=4\n");
    for (const int end : {locked[0], locked[1], release[0], release[1]}) {
        close(end);
    }
}

TEST_F(ProfileFile, AFileAboveSixteenMebibytesIsNeverWrittenBackShorter) {
    constexpr qsizetype kMost = 16 * 1024 * 1024;
    const QByteArray head("[A]\nk=1\n;");
    for (const qsizetype size : {kMost, kMost + 1, kMost + 1000}) {
        const QByteArray before = head + QByteArray(size - head.size(), 'x');
        put(before);
        EXPECT_EQ(set(u"A"_s, u"k"_s, u"2"_s), size == kMost) << size;
        EXPECT_EQ(content(), size == kMost ? QByteArray(before).replace(6, 1, "2") : before) << size;
    }
}

TEST_F(ProfileFile, APipeInItsPlaceOrInThatOfItsLockBlocksNothing) {
    put("[A]\nk=1\n");
    const QString lock = path(u"some.ini.lock"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(lock).constData(), 0600), 0);
    EXPECT_FALSE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nk=1\n");
    ASSERT_TRUE(QFile::remove(lock));
    EXPECT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    ASSERT_TRUE(QFile::remove(path()));
    ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    EXPECT_FALSE(set(u"A"_s, u"k"_s, u"3"_s));
}

TEST_F(ProfileFile, PermissionsAreKept) {
    put("[A]\nk=1\n");
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    ASSERT_TRUE(QFile::setPermissions(path(), permissions));
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    const auto kept = QFile::permissions(path()) & ~(QFile::ReadUser | QFile::WriteUser);
    EXPECT_EQ(kept, permissions);
}

TEST_F(ProfileFile, AFolderInPlaceOfTheFileReadsAsNothingAndRefusesWrites) {
    ASSERT_TRUE(QDir().mkdir(path()));
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    const Outcome outcome = writeProfile(u"A"_s, u"k"_s, u"1"_s, path());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().number, ErrorNumber::PathAccess);
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(ProfileFile, AMissingFolderRefusesWrites) {
    EXPECT_FALSE(writeProfile(u"A"_s, u"k"_s, u"1"_s, path(u"none/some.ini"_s)).ok());
}

TEST_F(ProfileFile, AReadOnlyFolderRefusesWritesAndKeepsTheFile) {
    put("[A]\nk=1\n");
    const QString folder = QFileInfo(path()).path();
    const auto readable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    ASSERT_TRUE(QFile::setPermissions(path(), readable));
    ASSERT_TRUE(QFile::setPermissions(folder, readable | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther));
    {
        const test::OrdinaryUser user;
        EXPECT_FALSE(set(u"A"_s, u"k"_s, u"2"_s));
        EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    }
    EXPECT_EQ(content(), "[A]\nk=1\n");
    EXPECT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

TEST_F(ProfileFile, AnUnreadableFileReadsAsNothingAndIsNotReplaced) {
    put("[A]\nk=1\n");
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::Permissions()));
    // All users may make files here, so only the file's own permissions can refuse.
    ASSERT_TRUE(QFile::setPermissions(QFileInfo(path()).path(), QFile::Permissions(0x7777)));
    {
        const test::OrdinaryUser user;
        EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
        EXPECT_FALSE(set(u"A"_s, u"k"_s, u"2"_s));
    }
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(content(), "[A]\nk=1\n");
}

TEST_F(ProfileFile, AFileAboveOneMebibyteIsReadUpToThere) {
    QByteArray big("[A]\nk=1\n");
    big += QByteArray(1024 * 1024, '\n');
    big += "j=2\n";
    put(big);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
}

TEST_F(ProfileFile, GetIniStringIsTheSameReading) {
    put("[A]\nk=1\n");
    EXPECT_EQ(GetIniString(u"A"_s, u"k"_s, u"x"_s, path()), u"1"_s);
    EXPECT_EQ(GetIniString(u"A"_s, u"none"_s, u"x"_s, path()), u"x"_s);
}

} // namespace
} // namespace sixtrace::test
