// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/descriptor.h"

#include <QRegularExpression>
#include <QString>

#include <memory>

class QTemporaryDir;

namespace sixtrace {

/// The names of the workshops of one kind of work, and the files that this work makes there.
struct WorkshopKind {
    QString prefix;           ///< of the folder's name
    QRegularExpression files; ///< matches the whole name of each file
};

/// A private folder for the files of one piece of work. It is made in a given folder and removed with this object.
///
/// A process that is killed leaves its workshop behind. A new workshop therefore first removes the orphans of its kind
/// in the same folder. An orphan is a folder of exactly such a name that was made on this machine, is owned by this
/// user and closed to others, is not locked, and holds nothing but plain files that the work is known to make.
/// Everything else stays as it is, and no link is followed.
class Workshop {
public:
    Workshop(const QString& parent, const WorkshopKind& kind);
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop();

    /// Whether the folder could be made.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] QString path() const;
    /// The path of a file in it; empty when the folder could not be made.
    [[nodiscard]] QString filePath(const QString& name) const;

private:
    [[nodiscard]] bool hold();
    void release();

    std::unique_ptr<QTemporaryDir> m_folder;
    Descriptor m_lock; ///< the folder itself, open and locked
};

} // namespace sixtrace
