// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFileInfo>

namespace sixtrace {

/// Whether this process holds the file open.
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

/// How many handles of this process lead to what its name says has gone: "/dev/pts/3 (deleted)" and the like.
[[nodiscard]] inline int deadHandles(const QString& beginning) {
    int count = 0;
    const QDir handles(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& handle : handles.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        const QString target = handle.symLinkTarget();
        count += target.startsWith(beginning) && target.endsWith(QLatin1String("(deleted)")) ? 1 : 0;
    }
    return count;
}

} // namespace sixtrace
