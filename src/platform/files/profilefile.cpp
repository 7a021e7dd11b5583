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
/// A lock that names no living process is left by one that was killed. A holder who lives is not robbed, however long
/// he takes: the system's own lock on the file goes with him, and without it nobody takes the file away.
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
    // What a failing disk gives is not the whole; writing it back would lose the rest.
    return file.error() == QFileDevice::NoError ? std::optional(content) : std::nullopt;
}

/// How long a write waits for the lock. It waits in the thread that paints the windows, and one choice of the user may
/// be several keys: where a holder has not let go in the whole time, writes that follow soon do not wait as long again.
/// A holder that works normally is done sooner than even they give up.
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

/// The file that a link leads to, so that all who change it take the same lock, by whatever name they know it.
QString behindLinks(const QString& file) {
    const QString target = QFileInfo(file).canonicalFilePath();
    return target.isEmpty() ? file : target;
}

/// A file as it is, and as it shall be.
struct Change {
    std::optional<QByteArray> before; ///< Nothing where there is no file.
    QByteArray after;

    [[nodiscard]] bool saysSoAlready() const { return before == after; }
};

/// What setting a key makes of a file, or nothing where the file cannot be read whole.
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
    const QString file = behindLinks(path);
    // A key that says so already needs no write, and none to wait for: the program sets the language at every start.
    // The file is only ever replaced whole, so what is read here stood there at one moment, and that is when this
    // counts.
    if (const auto change = changeOf(file, section, key, value); change && change->saysSoAlready()) {
        return success();
    }
    const QString lockName = file + QStringLiteral(".lock");
    if (const QFileInfo present(lockName); present.exists() && !present.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess); // reading a pipe in its place would wait for the other end
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
    return change->saysSoAlready() ? success() : writeWhole(file, change->after);
}

} // namespace sixtrace
