// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace sixtrace {

/// A folder for the files of one target. It is in memory if the system offers that, because a disk would slow down the
/// runs.
class ScratchFolder {
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString filePath(const QString& name) const { return m_folder.filePath(name); }

private:
    [[nodiscard]] static QString place() {
        const QString memory = QStringLiteral("/dev/shm");
        return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    }

    QTemporaryDir m_folder{place() + QStringLiteral("/sixtrace-fuzz-XXXXXX")};
};

} // namespace sixtrace
