// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <iostream>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace sixtrace::test {

/// How often each kind of work is killed.
inline constexpr int kKills = 100;

/// Moments for kills: spread evenly over more than twice the time that the work takes, and the same in every run of the
/// test.
class Moments {
public:
    explicit Moments(std::chrono::microseconds work)
        : m_spread(0, static_cast<int>(2 * work.count() + 1000)) {}
    [[nodiscard]] useconds_t next() { return static_cast<useconds_t>(m_spread(m_engine)); }

private:
    std::mt19937 m_engine{20'011};
    std::uniform_int_distribution<int> m_spread;
};

/// How long one pass of `work` takes now. A pass before it is not measured, since it loads what every later pass finds.
template<typename Work>
std::chrono::microseconds duration(Work work) {
    work();
    const auto before = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - before);
}

/// Waits for a child process and expects that the kill has ended it, and nothing else.
inline void expectKilled(pid_t child) {
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "ended by itself: " << status;
}

/// Repeats `work` in a child process and kills the process `moment` microseconds after the start. `work` gets the
/// number of the pass, counted from `first`.
template<typename Work>
void killWhile(Work work, int first, useconds_t moment) {
    std::array<int, 2> begun{};
    ASSERT_EQ(::pipe(begun.data()), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        static_cast<void>(::write(begun[1], "x", 1) == 1);
        for (int pass = first;; ++pass) {
            work(pass);
        }
    }
    char byte = 0;
    EXPECT_EQ(::read(begun[0], &byte, 1), 1);
    ::close(begun[0]);
    ::close(begun[1]);
    ::usleep(moment);
    expectKilled(child);
}

inline QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

/// The names of everything in a folder apart from those that belong there.
inline QStringList leftovers(const QString& folder, const QStringList& known) {
    QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : known) {
        names.removeAll(name);
    }
    return names;
}

/// Writes a line into the report of the test.
inline void tell(const char* kind, int kills, int newFiles, qsizetype left) {
    std::cout << "[  SOAK    ] " << kind << ": " << kills << " kills, " << newFiles << " new files, "
              << kills - newFiles << " old ones, " << left << " left behind\n";
}

} // namespace sixtrace::test
