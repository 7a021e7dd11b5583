// SPDX-License-Identifier: MIT
#include "platform/files/profilefile.h"

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

class ProfileFile : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid()); }

    [[nodiscard]] QString path(const QString& name = u"some.ini"_s) const { return m_folder.filePath(name); }
    void put(const QByteArray& content) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    [[nodiscard]] QByteArray content() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
    [[nodiscard]] QString get(const QString& section, const QString& key) const {
        return readProfile(section, key, u"fallback"_s, path());
    }
    [[nodiscard]] bool set(const QString& section, const QString& key, const QString& value) const {
        return writeProfile(section, key, value, path()).ok();
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(ProfileFile, MissingFileSectionOrKeyGivesTheFallback) {
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    put("[A]\nk=1\n");
    EXPECT_EQ(get(u"B"_s, u"k"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
}

TEST_F(ProfileFile, AnEmptyValueGivesTheFallback) {
    put("[A]\nk=\nj=   \nq=\"\"\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"q"_s), u"fallback"_s);
}

TEST_F(ProfileFile, SectionsAndKeysCompareWithoutCase) {
    put("[LineColor]\nCh1=255\n");
    EXPECT_EQ(get(u"LINECOLOR"_s, u"cH1"_s), u"255"_s);
}

TEST_F(ProfileFile, BlanksAroundEverythingAreDropped) {
    put("  [ A ]  \n \t key one \t = \t two words \t\n");
    EXPECT_EQ(get(u"A"_s, u"key one"_s), u"two words"_s);
}

TEST_F(ProfileFile, OnePairOfQuotesAroundAValueIsDropped) {
    put("[A]\na=\"  x  \"\nb='y'\nc=\"\"z\"\"\nd=\"half\ne=\"mixed'\nf=\"\n");
    EXPECT_EQ(get(u"A"_s, u"a"_s), u"  x  "_s);
    EXPECT_EQ(get(u"A"_s, u"b"_s), u"y"_s);
    EXPECT_EQ(get(u"A"_s, u"c"_s), u"\"z\""_s);
    EXPECT_EQ(get(u"A"_s, u"d"_s), u"\"half"_s);
    EXPECT_EQ(get(u"A"_s, u"e"_s), u"\"mixed'"_s);
    EXPECT_EQ(get(u"A"_s, u"f"_s), u"\""_s);
}

TEST_F(ProfileFile, CommentsAreNoKeys) {
    put("[A]\n;k=1\n  ; k=2\nk=3 ; still the value\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"3 ; still the value"_s);
    EXPECT_EQ(get(u"A"_s, u";k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, TheFirstKeyOfTheFirstSectionOfThatNameCounts) {
    put("[A]\nk=1\nk=2\n[B]\nk=3\n[A]\nk=4\nj=5\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
}

TEST_F(ProfileFile, KeysBeforeAnySectionBelongToNone) {
    put("k=1\n[A]\nj=2\n");
    EXPECT_EQ(get(u""_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, ValuesMayHoldEqualSignsAndBackslashes) {
    put("[A]\nk=a=b\\c, d%20\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"a=b\\c, d%20"_s);
}

TEST_F(ProfileFile, DosLineEndsAndALastLineWithoutEndAreRead) {
    put("[A]\r\nk=1\r\nj=2");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"2"_s);
}

TEST_F(ProfileFile, AByteOrderMarkIsTolerated) {
    put("\xEF\xBB\xBF[A]\nk=\xE4\xB8\xAD\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"\u4E2D"_s);
}

TEST_F(ProfileFile, ValueOfExactly127CharactersSurvives) {
    const QString value(127, u'x');
    put("[A]\nk=" + value.toUtf8() + "\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), value);
}

TEST_F(ProfileFile, ValueOf128CharactersIsCutTo127) {
    put("[A]\nk=" + QByteArray(127, 'x') + "y\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(127, u'x'));
}

TEST_F(ProfileFile, CharactersAreCountedNotBytes) {
    put("[A]\nk=" + QString(130, u'\u4E2D').toUtf8() + "\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(127, u'\u4E2D'));
}

TEST_F(ProfileFile, BytesOfAnyKindAreRead) {
    put(QByteArray("[A\n\x00\xFF\xFE=\n]\n[]\n=\n[A]\nk=\xFF\n", 24));
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(QChar(QChar::ReplacementCharacter)));
}

TEST_F(ProfileFile, AValueIsNotCutInsideACharacter) {
    // 126 characters, then one of two units, of which the first would be the 127th.
    put("[A]\nk=" + QByteArray(126, 'x') + "\xF0\x9F\x98\x80\nj=" + QByteArray(125, 'x') + "\xF0\x9F\x98\x80z\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(126, u'x'));
    EXPECT_EQ(get(u"A"_s, u"j"_s), QString(125, u'x') + u"\U0001F600"_s);
}

TEST_F(ProfileFile, ReadingAndWritingSeeTheSameSections) {
    // A no-break space, an ideographic space, and a byte-order mark behind blanks.
    for (const QByteArray start : {"\xC2\xA0", "\xE3\x80\x80", " \xEF\xBB\xBF", "\xEF\xBB\xBF"}) {
        put("[B]\ni=0\n" + start + "[A]\nk=1\n" + start + ";j=2\n");
        ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
        EXPECT_EQ(get(u"A"_s, u"k"_s), u"2"_s) << start.toHex().toStdString();
        ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
        EXPECT_EQ(get(u"A"_s, u"j"_s), u"3"_s) << start.toHex().toStdString();
        ASSERT_TRUE(set(u"B"_s, u"k"_s, u"4"_s));
        EXPECT_EQ(get(u"B"_s, u"k"_s), u"4"_s) << start.toHex().toStdString();
    }
}

TEST_F(ProfileFile, TheLineThatTheLimitCutsIsNotRead) {
    // 4 + 1048560 bytes and the 12 up to "k=1" are 1 MiB, so that "k=12" is cut there.
    put("[A]\n;" + QByteArray(1048560 - 1, 'x') + "\nj=8\nabc\nk=12\n");
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"8"_s);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, AFirstWriteMakesTheFile) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"1"_s));
    EXPECT_EQ(content(), "[A]\nk=1\n");
}

TEST_F(ProfileFile, CommentsOrderAndForeignLinesAreKept) {
    put("; head\n\n[A]\n; about k\nk = 1\njunk\nj=2\n\n[B]\nk=3\n; tail\n");
    ASSERT_TRUE(set(u"a"_s, u"K"_s, u"9"_s));
    EXPECT_EQ(content(), "; head\n\n[A]\n; about k\nK=9\njunk\nj=2\n\n[B]\nk=3\n; tail\n");
}

TEST_F(ProfileFile, ANewKeyGoesBehindTheLastLineOfItsSection) {
    put("[A]\nk=1\n\n[B]\nk=2\n");
    ASSERT_TRUE(set(u"A"_s, u"new"_s, u"x"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nnew=x\n\n[B]\nk=2\n");
    ASSERT_TRUE(set(u"B"_s, u"last"_s, u"y"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nnew=x\n\n[B]\nk=2\nlast=y\n");
}

TEST_F(ProfileFile, ANewSectionGoesToTheEndOnALineOfItsOwn) {
    put("[A]\nk=1");
    ASSERT_TRUE(set(u"B"_s, u"j"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nk=1\n[B]\nj=2\n");
}

TEST_F(ProfileFile, ANewKeyBehindALastLineWithoutEndGetsALineOfItsOwn) {
    put("[A]\nk=1");
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nj=2\n");
}

TEST_F(ProfileFile, DosLineEndsAreKept) {
    put("[A]\r\nk=1\r\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
    ASSERT_TRUE(set(u"B"_s, u"i"_s, u"4"_s));
    EXPECT_EQ(content(), "[A]\r\nk=2\r\nj=3\r\n[B]\r\ni=4\r\n");
}

TEST_F(ProfileFile, ALastLineWithoutAnEndOfADosFileIsReplacedWithoutALoneCarriageReturn) {
    put("[A]\r\nj=1\r\nk=1");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\r\nj=1\r\nk=2");
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
    EXPECT_EQ(content(), "[A]\r\nj=3\r\nk=2");
    ASSERT_TRUE(set(u"A"_s, u"i"_s, u"4"_s));
    EXPECT_EQ(content(), "[A]\r\nj=3\r\nk=2\r\ni=4\r\n");
}

TEST_F(ProfileFile, ACarriageReturnAtTheVeryEndBecomesALineEndOnce) {
    put("[A]\nj=1\r");
    ASSERT_TRUE(set(u"B"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\n[B]\r\nk=2\r\n");
    ASSERT_TRUE(set(u"B"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\n[B]\r\nk=2\r\n");
    put("[A]\nj=1\r");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\nk=2\r\n");
}

TEST_F(ProfileFile, TheByteOrderMarkIsKept) {
    put("\xEF\xBB\xBF[A]\nk=1\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "\xEF\xBB\xBF[A]\nk=2\n");
}

TEST_F(ProfileFile, OnlyTheFirstOfTwoEqualKeysIsReplaced) {
    put("[A]\nk=1\nk=2\n[A]\nk=3\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"9"_s));
    EXPECT_EQ(content(), "[A]\nk=9\nk=2\n[A]\nk=3\n");
}

TEST_F(ProfileFile, LineEndsInAValueAreWrittenAsBlanks) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"1\n[B]\r\nk=2"_s));
    EXPECT_EQ(content(), "[A]\nk=1 [B]  k=2\n");
    EXPECT_EQ(get(u"B"_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, WhatIsWrittenIsReadBack) {
    for (const QString& value : {u"16776960"_s, u"\u4E2D\u6587"_s, u"C:\\a\\b.bin"_s, u"-1"_s, u"a=b;c"_s}) {
        ASSERT_TRUE(set(u"Some section"_s, u"key"_s, value));
        EXPECT_EQ(get(u"Some section"_s, u"key"_s), value);
    }
}

TEST_F(ProfileFile, QuotesAroundAValueAreWrittenAndLostOnReading) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"\"quoted\""_s));
    EXPECT_EQ(content(), "[A]\nk=\"quoted\"\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"quoted"_s);
}

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
    // Another copy of the program that knows the file itself holds its lock: the write by the link waits, in vain.
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
        sleep(2); // sooner than a write that waits as long as ever would give up
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
    // Everybody may make files here, so that only the file itself stands in the way.
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
