// SPDX-License-Identifier: MIT
#include "platform/files/profilefile.h"

#include "platform/files/wholefile.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>
#include <optional>

namespace sixtrace {

namespace {

constexpr qint64 kWriteLimit = 16 * 1024 * 1024;
constexpr int kLockPatienceMs = 3000;
constexpr int kLockShortPatienceMs = 50;
constexpr int kLockStuckMs = 5000;
/// After this time a lock file whose process no longer runs is removed; that process was killed. The lock of a running
/// process is never removed, however long it lasts.
constexpr int kLockOrphanedMs = 500;

std::optional<QByteArray> contentOf(const QString& path, qint64 limit) {
    if (!QFileInfo(path).isFile()) {
        return std::nullopt; // a folder, a pipe or a device could block or be endless
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // No more room than the file needs: settings are a few hundred bytes, the limit is megabytes.
    const QByteArray content = file.read(std::min(limit, file.size() + 1));
    // A failing disk may give only a part of the file; writing that back would lose the rest.
    return file.error() == QFileDevice::NoError ? std::optional(content) : std::nullopt;
}

/// How long a write waits for the lock. It waits in the thread that paints the windows, and one choice of the user may
/// set several keys. After one write has waited the whole time in vain, the writes of the next seconds wait only a
/// short time. Even that is longer than a process that works normally holds the lock.
class LockPatience {
public:
    [[nodiscard]] int milliseconds(const QString& file) const {
        return file == m_file && !m_stuck.hasExpired() ? kLockShortPatienceMs : kLockPatienceMs;
    }
    void noteLocked(const QString& file) { m_file = file == m_file ? QString() : m_file; }
    void noteWaitedInVain(const QString& file) {
        m_file = file;
        m_stuck.setRemainingTime(kLockStuckMs);
    }

private:
    QString m_file;
    QDeadlineTimer m_stuck;
};

/// The file that a link leads to, so that all writers take the same lock, whatever name of the file they use.
QString linkTarget(const QString& file) {
    const QString target = QFileInfo(file).canonicalFilePath();
    return target.isEmpty() ? file : target;
}

/// The content of a file before and after a change.
struct Change {
    std::optional<QByteArray> before; ///< nothing when there is no file
    QByteArray after;

    [[nodiscard]] bool isNeedless() const { return before == after; }
};

/// The change that sets a key; nothing when the file cannot be read as a whole.
std::optional<Change> changeOf(const QString& file, const QString& section, const QString& key, const QString& value) {
    Change change;
    if (QFileInfo::exists(file)) {
        change.before = contentOf(file, kWriteLimit + 1);
        if (!change.before || change.before->size() > kWriteLimit) {
            return std::nullopt;
        }
    }
    change.after = withProfileKey(change.before.value_or(QByteArray()), section, key, value);
    return change;
}

} // namespace

ProfileText profileTextOf(const QString& file) {
    return ProfileText(contentOf(file, kProfileReadLimit + 1).value_or(QByteArray()));
}

QString readProfile(const QString& section, const QString& key, const QString& fallback, const QString& file) {
    return profileTextOf(file).value(section, key, fallback);
}

QString GetIniString(const QString& section, const QString& key, const QString& fallback, const QString& file) {
    return readProfile(section, key, fallback, file);
}

Outcome writeProfile(const QString& section, const QString& key, const QString& value, const QString& path) {
    const QString file = linkTarget(path);
    // A key that has the value already needs no write and no lock: the program sets the language at every start. The
    // file is only replaced as a whole, so this reading without the lock sees one consistent content.
    if (const auto change = changeOf(file, section, key, value); change && change->isNeedless()) {
        return success();
    }
    const QString lockName = file + QStringLiteral(".lock");
    if (const QFileInfo present(lockName); present.exists() && !present.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess); // a pipe of that name would make the reading of the lock wait
    }
    QLockFile lock(lockName);
    lock.setStaleLockTime(kLockOrphanedMs);
    thread_local LockPatience patience;
    if (!lock.tryLock(patience.milliseconds(file))) {
        if (lock.error() == QLockFile::LockFailedError) {
            patience.noteWaitedInVain(file);
        }
        return RuntimeError::of(lock.error() == QLockFile::PermissionError ? ErrorNumber::PermissionDenied
                                                                           : ErrorNumber::PathAccess);
    }
    patience.noteLocked(file);
    const auto change = changeOf(file, section, key, value);
    if (!change) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    return change->isNeedless() ? success() : writeWhole(file, change->after);
}

} // namespace sixtrace
