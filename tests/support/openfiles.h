// SPDX-License-Identifier: MIT
#pragma once

#include "support/strings.h"

#include <QDir>
#include <QFileInfo>

namespace sixtrace::test {

/// Whether this process has the file open.
[[nodiscard]] inline bool isOpenHere(const QString& path) {
    const QString wanted = QFileInfo(path).canonicalFilePath();
    const QDir handles(u"/proc/self/fd"_s);
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
    const QDir handles(u"/proc/self/fd"_s);
    for (const QFileInfo& handle : handles.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const QString target = handle.symLinkTarget();
        count += target.startsWith(beginning) && target.endsWith(u"(deleted)"_s) ? 1 : 0;
    }
    return count;
}

} // namespace sixtrace::test
