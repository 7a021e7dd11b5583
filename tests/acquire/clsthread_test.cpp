// SPDX-License-Identifier: MIT
#include "acquire/clsthread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>

namespace sixtrace::test {
namespace {

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
    std::this_thread::sleep_for(std::chrono::milliseconds(20)); // it would have run by now if it were not suspended
    EXPECT_EQ(passes, 0);
    thread.setThreadEnabled(true);
    while (passes < 3) {
        std::this_thread::yield();
    }
    thread.setThreadEnabled(true);                              // true while it runs suspends it
    std::this_thread::sleep_for(std::chrono::milliseconds(20)); // a pass that has begun may end
    const int stopped = passes;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(passes, stopped);
    thread.setThreadEnabled(false); // false while it is suspended does nothing
    EXPECT_EQ(passes, stopped);
}

TEST(Thread, ReadingThePropertySetsTheFlagAndGivesFalse) {
    cls_Thread thread([](const char*, const char*) {});
    std::atomic<bool> ran = false;
    thread.Initialize([&ran](ThreadGate& gate) { ran = gate.pass(); });
    EXPECT_FALSE(thread.ThreadEnabled());
    thread.setThreadEnabled(true); // the flag is set, so this suspends the thread, which has never run
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
} // namespace sixtrace::test
