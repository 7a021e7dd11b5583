// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QString>

#include <memory>

class QTemporaryDir;

namespace sixtrace {

/// What the workshops of one kind of work are called, and which files that work makes there.
struct WorkshopKind {
    QString prefix;           ///< of the folder's name
    QRegularExpression files; ///< matches the whole name of each file
};

/// A private folder for the files of one piece of work, made in a folder that the work names and gone with this object.
///
/// A process that is killed leaves its workshop behind, so that a new one first clears away the orphans of its kind
/// beside it. An orphan is a folder of exactly such a name, made on this machine, owned by this user and closed to
/// others, on which nobody holds the lock, and which holds nothing but plain files that the work is known to make. All
/// else stays as it is, and no link is followed.
class Workshop {
public:
    Workshop(const QString& parent, const WorkshopKind& kind);
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop();

    /// Whether the folder could be made.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] QString path() const;
    /// The path of a file in it; empty where the folder could not be made.
    [[nodiscard]] QString filePath(const QString& name) const;

private:
    [[nodiscard]] bool hold();
    void release();

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_lock = -1; ///< the folder itself, open and locked
};

} // namespace sixtrace
