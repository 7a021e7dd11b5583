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

} // namespace sixtrace
