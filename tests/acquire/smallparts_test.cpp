// SPDX-License-Identifier: MIT
#include "acquire/clsthread.h"
#include "acquire/filenames.h"
#include "acquire/porttable.h"
#include "platform/files/privatefolder.h"
#include "support/strings.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>

using namespace sixtrace;

namespace {

TEST(PortTable, OnlyPorts1To16AreProbed) {
    std::vector<int> tried;
    PortTable table;
    probePorts(table, [&tried](int number) {
        tried.push_back(number);
        return success();
    });
    EXPECT_EQ(tried, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(table.count, 16);
    EXPECT_EQ(table.at(16).value(), 16);
    EXPECT_EQ(table.at(17).value(), 0);
}

TEST(PortTable, ATakenPortCountsAndAnyOtherErrorSkipsTheNumber) {
    PortTable table;
    probePorts(table, [](int number) -> Outcome {
        switch (number) {
        case 3:
            return success();
        case 7:
            return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
        case 9:
            return RuntimeError::of(ErrorNumber::PermissionDenied);
        default:
            return RuntimeError::of(ErrorNumber::FileNotFound);
        }
    });
    EXPECT_EQ(table.count, 2);
    EXPECT_EQ(table.at(1).value(), 3);
    EXPECT_EQ(table.at(2).value(), 7);
    EXPECT_EQ(table.at(3).value(), 0);
}

TEST(PortTable, AnIndexOutside0To17IsASubscriptError) {
    const PortTable table;
    EXPECT_EQ(table.at(-1).error().number, ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(table.at(18).error().number, ErrorNumber::SubscriptOutOfRange);
    EXPECT_TRUE(table.at(0).ok());
}

TEST(FileNames, HoldTwoDigitsEachOfYearMonthDayHourAndMinute) {
    const QDateTime when(QDate(2026, 3, 4), QTime(5, 6, 7));
    EXPECT_EQ(stampedName(when), text("D2603040506.bin"));
    EXPECT_EQ(serialStorePath(text("/opt/x/"), when), text("/opt/x/dat/D2603040506.bin"));
}

TEST(FileNames, ThePathEndsBeforeTheLastSeparatorAndAPathWithoutOneIsAnError) {
    EXPECT_EQ(getPath(text("/a/b/c.bin")).value(), text("/a/b"));
    EXPECT_EQ(getPath(text("/c.bin")).value(), QString());
    EXPECT_EQ(getPath(text("c.bin")).error().number, ErrorNumber::InvalidCall);
}

TEST(PrivateFolder, IsMadeForItsOwnerAlone) {
    QTemporaryDir place;
    const auto folder = privateFolderAt(place.filePath(QStringLiteral("own")));
    ASSERT_TRUE(folder.ok());
    EXPECT_EQ(QFileInfo(folder.value()).permissions() & QFileDevice::Permissions(0x0777),
              QFileDevice::Permissions(QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser));
    EXPECT_TRUE(folder.value().endsWith(u'/'));
}

TEST(PrivateFolder, ALinkInItsPlaceIsRefused) {
    QTemporaryDir place;
    QTemporaryDir elsewhere;
    ASSERT_TRUE(QFile::link(elsewhere.path(), place.filePath(QStringLiteral("own"))));
    EXPECT_EQ(privateFolderAt(place.filePath(QStringLiteral("own"))).error().number, ErrorNumber::PathAccess);
}

TEST(PrivateFolder, APlantedLinkNamedAutoGetIsRemovedAndNotFollowed) {
    QTemporaryDir place;
    const QString victim = place.filePath(QStringLiteral("victim"));
    QFile(victim).open(QIODevice::WriteOnly);
    const QString folder = privateFolderAt(place.filePath(QStringLiteral("own"))).value();
    ASSERT_TRUE(QFile::link(victim, folder + text("AutoGet.bin")));
    const auto file = autoGetFileIn(folder);
    ASSERT_TRUE(file.ok());
    EXPECT_EQ(file.value(), folder + text("AutoGet.bin"));
    EXPECT_FALSE(QFileInfo(file.value()).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(victim));
}

TEST(Thread, WaitsSuspendedRunsAndPausesAtItsGate) {
    std::atomic<int> passes = 0;
    cls_Thread thread([](const char*, const char*) { FAIL(); });
    thread.Initialize([&passes](ThreadGate& gate) {
        while (gate.pass()) {
            ++passes;
            std::this_thread::yield();
        }
    });
    EXPECT_NE(thread.handle(), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(20)); // time enough to run, were it not suspended
    EXPECT_EQ(passes, 0);
    thread.setThreadEnabled(true);
    while (passes < 3) {
        std::this_thread::yield();
    }
    thread.setThreadEnabled(true);                              // true while it runs suspends it
    std::this_thread::sleep_for(std::chrono::milliseconds(20)); // one pass may have been under way
    const int stopped = passes;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(passes, stopped);
    thread.setThreadEnabled(false); // and false while it stands does nothing
    EXPECT_EQ(passes, stopped);
}

TEST(Thread, ReadingThePropertySetsTheFlagAndGivesFalse) {
    cls_Thread thread([](const char*, const char*) {});
    std::atomic<bool> ran = false;
    thread.Initialize([&ran](ThreadGate& gate) { ran = gate.pass(); });
    EXPECT_FALSE(thread.ThreadEnabled());
    thread.setThreadEnabled(true); // the flag is set, so this suspends: the thread never ran
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(ran);
}

TEST(Thread, AFailedCreationLeavesHandle0IsToldAndLaterCallsActOnNothing) {
    std::string told;
    cls_Thread thread([&told](const char* what, const char* title) { told = std::string(title) + ": " + what; },
                      [](const std::function<void()>&) { return std::unique_ptr<std::thread>(); });
    thread.Initialize([](ThreadGate&) {});
    EXPECT_EQ(told, "错误: 线程创建失败！");
    EXPECT_EQ(thread.handle(), 0);
    thread.setThreadEnabled(true);
    thread.setThreadEnabled(false);
    EXPECT_EQ(thread.handle(), 0);
}

} // namespace
