// SPDX-License-Identifier: MIT
// The settings file of a program that is killed while it writes.
#include "platform/files/profilefile.h"
#include "soak/killing.h"
#include "support/strings.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <sys/file.h>

namespace sixtrace::test {
namespace {

const QByteArray kBefore("; kept by hand\r\n[Common]\r\nLanguage=");
const QByteArray kBehind("\r\nComPort=3\r\n\r\n[LineColor]\r\n0=255\r\n; the end\r\n");

class SettingsKills : public ::testing::Test {
protected:
    [[nodiscard]] QString path() const { return folder.filePath(u"vkq.ini"_s); }
    void put(const QString& name, const QByteArray& content) const {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    [[nodiscard]] Outcome set(const QString& value) const {
        return writeProfile(u"Common"_s, u"Language"_s, value, path());
    }

    QTemporaryDir folder;
};

/// A value that is long, so that a write takes many bytes, and that differs in every byte from one pass to the next.
QByteArray valueOf(int pass) {
    return {20'000, static_cast<char>('a' + pass % 26)};
}

TEST_F(SettingsKills, KeepEveryOtherKeyAndOneOfTheTwoValues) {
    put(path(), kBefore + valueOf(0) + kBehind);
    // A new value each time: a value that the file has already is not written.
    int pass = 0;
    Moments moments(duration([&] { ASSERT_TRUE(set(QString::fromLatin1(valueOf(pass++) + "x"))); }));
    int newFiles = 0;
    for (int i = 0; i < kKills; ++i) {
        const QByteArray start = i % 2 == 0 ? "even" : "odd";
        ASSERT_TRUE(set(QString::fromLatin1(start))) << "a kill blocks the next writer: " << i;
        EXPECT_EQ(contentOf(path()), kBefore + start + kBehind);
        killWhile([this](int each) { static_cast<void>(set(QString::fromLatin1(valueOf(each))).ok()); }, i,
                  moments.next());
        const QByteArray found = contentOf(path());
        ASSERT_TRUE(found.startsWith(kBefore) && found.endsWith(kBehind)) << i;
        const QByteArray value = found.sliced(kBefore.size(), found.size() - kBefore.size() - kBehind.size());
        const bool isNew = value != start;
        if (isNew) {
            EXPECT_EQ(value, QByteArray(20'000, value.front())) << i;
        }
        newFiles += isNew ? 1 : 0;
    }
    ASSERT_TRUE(set(u"end"_s));
    const QStringList left = leftovers(folder.path(), {u"vkq.ini"_s});
    tell("settings write", kKills, newFiles, left.size());
    EXPECT_LE(left.size(), kKills) << "more than one file a kill";
    EXPECT_FALSE(left.contains(u"vkq.ini.lock"_s)) << "the next write takes the lock away";
}

// The lock file is made and then filled. A kill between the two leaves a lock that names no process.
TEST_F(SettingsKills, ALockThatNamesNobodyDoesNotBlockTheNextWriter) {
    put(path(), kBefore + "0" + kBehind);
    put(path() + u".lock"_s, QByteArray());
    EXPECT_TRUE(set(u"1"_s));
    EXPECT_EQ(contentOf(path()), kBefore + "1" + kBehind);
    EXPECT_TRUE(leftovers(folder.path(), {u"vkq.ini"_s}).isEmpty());
}

TEST_F(SettingsKills, ALockWhoseHolderLivesIsNotTakenAway) {
    put(path(), kBefore + "0" + kBehind);
    const QString lock = path() + u".lock"_s;
    // The state of a lock whose holder stopped while writing it: open and locked, but its name not written yet.
    QFile held(lock);
    ASSERT_TRUE(held.open(QIODevice::WriteOnly));
    ASSERT_EQ(::flock(held.handle(), LOCK_EX | LOCK_NB), 0);
    EXPECT_FALSE(set(u"1"_s));
    EXPECT_EQ(contentOf(path()), kBefore + "0" + kBehind);
    EXPECT_TRUE(QFile::exists(lock));
    held.close();
    EXPECT_TRUE(set(u"1"_s));
}

} // namespace
} // namespace sixtrace::test
