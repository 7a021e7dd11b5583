// SPDX-License-Identifier: MIT
#include "platform/files/workshop.h"

#include "platform/files/wholefile.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sixtrace::test {
namespace {

const WorkshopKind kKind{u".work"_s, QRegularExpression(u"a\\.bin|b+"_s)};

class WorkshopTest : public ::testing::Test {
protected:
    [[nodiscard]] QString path(const QString& name) const { return m_parent.filePath(name); }
    [[nodiscard]] QString parent() const { return m_parent.path(); }
    [[nodiscard]] QStringList names() const {
        return QDir(parent()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    /// Makes a workshop with these files in a process that is then killed. Returns the workshop's name.
    [[nodiscard]] QString orphan(const QStringList& files) const {
        const QStringList before = names();
        std::array<int, 2> ready{};
        EXPECT_EQ(::pipe(ready.data()), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            const Workshop workshop(parent(), kKind);
            for (const QString& file : files) {
                if (!writeWhole(workshop.filePath(file), "content")) {
                    ::_exit(1);
                }
            }
            static_cast<void>(::write(ready[1], "x", 1) == 1);
            for (;;) {
                ::pause();
            }
        }
        char byte = 0;
        EXPECT_EQ(::read(ready[0], &byte, 1), 1);
        ::close(ready[0]);
        ::close(ready[1]);
        EXPECT_EQ(::kill(child, SIGKILL), 0);
        EXPECT_EQ(::waitpid(child, nullptr, 0), child);
        QStringList after = names();
        for (const QString& name : before) {
            after.removeAll(name);
        }
        EXPECT_EQ(after.size(), 1);
        return after.value(0);
    }
    void makeAnother() const { EXPECT_TRUE(Workshop(parent(), kKind).isValid()); }

private:
    QTemporaryDir m_parent;
};

TEST_F(WorkshopTest, IsAPrivateFolderThatGoesWithItsFiles) {
    {
        const Workshop workshop(parent(), kKind);
        ASSERT_TRUE(workshop.isValid());
        EXPECT_EQ(names(), QStringList(QFileInfo(workshop.path()).fileName()));
        struct stat found {};
        ASSERT_EQ(::stat(QFile::encodeName(workshop.path()).constData(), &found), 0);
        EXPECT_EQ(found.st_mode & 0777U, 0700U);
        EXPECT_TRUE(writeWhole(workshop.filePath(u"any"_s), "x"));
        EXPECT_TRUE(QDir(workshop.path()).exists(u"any"_s));
    }
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(WorkshopTest, IsNotValidWhereNoFolderCanBeMade) {
    const Workshop nowhere(path(u"none"_s), kKind);
    EXPECT_FALSE(nowhere.isValid());
    EXPECT_EQ(nowhere.filePath(u"a.bin"_s), QString()) << "no file of any other folder";
}

TEST_F(WorkshopTest, ClearsWhatAKilledProcessHasLeft) {
    for (const QStringList& files : {QStringList(), {u"a.bin"_s}, {u"a.bin"_s, u"b"_s, u"bbb"_s}}) {
        const QString left = orphan(files);
        ASSERT_EQ(names(), QStringList(left));
        makeAnother();
        EXPECT_TRUE(names().isEmpty());
    }
}

TEST_F(WorkshopTest, LeavesThoseOfRunningWorkAlone) {
    const Workshop running(parent(), kKind);
    ASSERT_TRUE(writeWhole(running.filePath(u"a.bin"_s), "mine"));
    const QStringList before = names();
    makeAnother();
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(QDir(running.path()).exists(u"a.bin"_s));
}

TEST_F(WorkshopTest, LeavesFoldersOfSimilarNamesAlone) {
    const QString own = orphan({u"a.bin"_s});
    const QString stem = own.chopped(6);
    QStringList others{stem,
                       stem + u"abcde"_s,
                       stem + u"abcdefg"_s,
                       stem + u"abc.ef"_s,
                       u"x"_s + own,
                       own + u".old"_s,
                       u".work-abcdef"_s,
                       u".work-00000000-abcdef"_s}; // the last one could be from another machine
    for (const QString& other : others) {
        ASSERT_TRUE(QDir(parent()).mkdir(other));
        ASSERT_TRUE(QFile::setPermissions(path(other), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    ASSERT_TRUE(writeWhole(path(stem + u"abcxyz"_s), "a file of such a name"));
    others.append(stem + u"abcxyz"_s);
    makeAnother();
    QStringList left = names();
    left.sort();
    others.sort();
    EXPECT_EQ(left, others) << "its own orphan alone has gone";
}

TEST_F(WorkshopTest, LeavesAFolderAloneThatHoldsAnythingUnknown) {
    const auto unknown = std::to_array<std::function<void(const QString&)>>({
        [](const QString& in) { EXPECT_TRUE(writeWhole(in + u"/notes"_s, "mine")); },
        [](const QString& in) { EXPECT_TRUE(writeWhole(in + u"/a.bin.txt"_s, "mine")); },
        [](const QString& in) { EXPECT_TRUE(QDir(in).mkdir(u"bb"_s)); },
        [this](const QString& in) {
            EXPECT_TRUE(writeWhole(path(u"precious"_s), "mine"));
            EXPECT_TRUE(QFile::link(path(u"precious"_s), in + u"/bb"_s));
        },
        [](const QString& in) { EXPECT_EQ(::mkfifo(QFile::encodeName(in + u"/bb"_s).constData(), 0600), 0); },
    });
    QStringList kept;
    for (const auto& put : unknown) {
        kept.append(orphan({u"a.bin"_s}));
        put(path(kept.last()));
        makeAnother();
        for (const QString& name : kept) {
            EXPECT_TRUE(QDir(path(name)).exists(u"a.bin"_s)) << "whole, as it was";
            EXPECT_EQ(QDir(path(name)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size(), 2);
        }
    }
    EXPECT_TRUE(QFile::exists(path(u"precious"_s)));
}

TEST_F(WorkshopTest, FollowsNoLink) {
    const QString own = orphan({u"a.bin"_s});
    ASSERT_TRUE(QDir(parent()).rename(own, u"elsewhere"_s));
    ASSERT_TRUE(QFile::link(path(u"elsewhere"_s), path(own)));
    makeAnother();
    EXPECT_TRUE(QFileInfo(path(own)).isSymLink());
    EXPECT_TRUE(QFile::exists(path(u"elsewhere/a.bin"_s)));
}

TEST_F(WorkshopTest, LeavesFoldersAloneThatOthersMayEnterOrOwn) {
    const QString open = orphan({u"a.bin"_s});
    ASSERT_EQ(::chmod(QFile::encodeName(path(open)).constData(), 0750), 0);
    makeAnother();
    EXPECT_TRUE(QFile::exists(path(open + u"/a.bin"_s)));
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    ASSERT_EQ(::chmod(QFile::encodeName(path(open)).constData(), 0700), 0);
    ASSERT_EQ(::chown(QFile::encodeName(path(open)).constData(), 65534, 65534), 0);
    makeAnother();
    EXPECT_TRUE(QFile::exists(path(open + u"/a.bin"_s)));
}

// Each process removes folders of the others wherever it takes them for orphans.
TEST_F(WorkshopTest, ManyAtOnceNeverTakeEachOthersFiles) {
    constexpr int kProcesses = 6;
    constexpr int kRounds = 100;
    std::array<pid_t, kProcesses> children{};
    for (pid_t& child : children) {
        child = ::fork();
        if (child == 0) {
            for (int i = 0; i < kRounds; ++i) {
                const Workshop workshop(parent(), kKind);
                QFile file(workshop.filePath(u"a.bin"_s));
                if (!workshop.isValid() || !file.open(QIODevice::WriteOnly) || file.write("x") != 1) {
                    ::_exit(1);
                }
                file.close();
                if (!QFile::exists(file.fileName())) {
                    ::_exit(2);
                }
            }
            ::_exit(0);
        }
        ASSERT_GT(child, 0);
    }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
    EXPECT_TRUE(names().isEmpty());
}

} // namespace
} // namespace sixtrace::test
