// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFileInfo>

namespace sixtrace::test {

/// Whether this process has the file open.
[[nodiscard]] inline bool isOpenHere(const QString& path) {
    const QString wanted = QFileInfo(path).canonicalFilePath();
    const QDir handles(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& handle : handles.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (handle.symLinkTarget() == wanted) {
            return true;
        }
    }
    return false;
}

/// How many file handles of this process belong to deleted files whose path starts with `beginning`, for example
/// "/dev/pts/3 (deleted)".
[[nodiscard]] inline int deadHandles(const QString& beginning) {
    int count = 0;
    const QDir handles(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& handle : handles.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const QString target = handle.symLinkTarget();
        count += target.startsWith(beginning) && target.endsWith(QLatin1String("(deleted)")) ? 1 : 0;
    }
    return count;
}

} // namespace sixtrace::test

// For the tests that are not in namespace sixtrace::test yet.
namespace sixtrace {
using test::deadHandles;
using test::isOpenHere;
} // namespace sixtrace
