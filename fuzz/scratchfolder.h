// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace sixtrace {

/// A folder for the files of one target: in memory where the system has such a place, as a disk would be what the runs
/// wait for.
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
