// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>

#include <gtest/gtest.h>

#include <iostream>
#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__)
#include <cstddef>
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // the compiler is packaged without the header
#endif

namespace sixtrace::test {

/// What the process holds at one moment.
struct Holdings {
    qint64 bytes = 0;
    qint64 handles = 0;
    qint64 widgets = 0;

    static Holdings now() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const qint64 handles = QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size();
        return {allocated(), handles, QApplication::allWidgets().size()};
    }

private:
    static qint64 allocated() {
#if defined(__SANITIZE_ADDRESS__)
        return static_cast<qint64>(__sanitizer_get_current_allocated_bytes());
#else
        return static_cast<qint64>(mallinfo2().uordblks);
#endif
    }
};

/// Calls `round` with its number: first a few times so that caches fill, then so many times as asked. Expects that
/// nothing grows in the second part, not even by two bytes a round where there are many rounds. Events are delivered in
/// between, since Qt keeps the memory that waiting events have taken.
template<typename Round>
void expectNoGrowth(const char* what, int rounds, Round round) {
    constexpr qint64 kSlack = 16 * 1024;
    const auto goRound = [&round](int i) {
        round(i);
        if (i % 100 == 99) {
            QCoreApplication::processEvents();
        }
    };
    for (int i = 0; i < rounds / 10; ++i) {
        goRound(i);
    }
    const Holdings before = Holdings::now();
    for (int i = 0; i < rounds; ++i) {
        goRound(i);
    }
    const Holdings after = Holdings::now();
    std::cout << "[  SOAK    ] " << what << ": " << rounds << " rounds, " << after.bytes - before.bytes << " bytes of "
              << before.bytes << ", " << after.handles - before.handles << " handles of " << before.handles << ", "
              << after.widgets - before.widgets << " widgets of " << before.widgets << '\n';
    EXPECT_LE(after.bytes, before.bytes + kSlack) << what;
    EXPECT_LE(after.handles, before.handles) << what;
    EXPECT_LE(after.widgets, before.widgets) << what;
}

} // namespace sixtrace::test
