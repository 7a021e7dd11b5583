// SPDX-License-Identifier: MIT
#include "platform/files/workshop.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

#include <optional>
#include <vector>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sixtrace {

namespace {

/// The first part of a workshop's name. It names the machine: on a disk that several machines share, a lock may be
/// known only on the machine that took it, so that a folder of another machine can look unlocked while it is in use.
QString stemOf(const WorkshopKind& kind) {
    const QByteArray machine = QSysInfo::machineUniqueId() + '/' + QSysInfo::machineHostName().toUtf8();
    constexpr qsizetype kDigits = 8;
    const QByteArray hash = QCryptographicHash::hash(machine, QCryptographicHash::Sha256).toHex().first(kDigits);
    return kind.prefix + u'-' + QString::fromLatin1(hash) + u'-';
}

#ifdef Q_OS_UNIX

constexpr int kFolderOnly = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// The names in an open folder; nothing when it cannot be read to its end.
std::optional<std::vector<QByteArray>> namesIn(const Descriptor& folder) {
    Descriptor again(::openat(folder.number(), ".", kFolderOnly));
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(again ? ::fdopendir(again.number()) : nullptr, ::closedir);
    if (!listing) {
        return std::nullopt;
    }
    static_cast<void>(again.release()); // the listing closes it
    std::vector<QByteArray> names;
    errno = 0;
    while (const dirent* entry = ::readdir(listing.get())) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    return errno == 0 ? std::optional(names) : std::nullopt;
}

bool isKnownFile(const Descriptor& folder, const QByteArray& name, const QRegularExpression& known) {
    struct stat found {};
    return ::fstatat(folder.number(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(found.st_mode) &&
           found.st_uid == ::geteuid() && known.match(QFile::decodeName(name)).hasMatch();
}

/// Removes one workshop if it is an orphan. Changes that others make to the tree meanwhile do no harm: every file is
/// reached through the folders that were opened and checked, and the last step removes an empty folder only.
void clearIfOrphan(const Descriptor& parent, const QByteArray& name, const QRegularExpression& known) {
    const Descriptor folder(::openat(parent.number(), name.constData(), kFolderOnly | O_NOFOLLOW));
    struct stat found {};
    if (!folder || ::fstat(folder.number(), &found) != 0 || found.st_uid != ::geteuid() ||
        (found.st_mode & (S_IRWXG | S_IRWXO)) != 0 || ::flock(folder.number(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    const auto names = namesIn(folder);
    if (!names) {
        return;
    }
    for (const QByteArray& each : *names) {
        if (!isKnownFile(folder, each, known)) {
            return;
        }
    }
    for (const QByteArray& each : *names) {
        if (::unlinkat(folder.number(), each.constData(), 0) != 0) {
            return;
        }
    }
    static_cast<void>(
        ::unlinkat(parent.number(), name.constData(), AT_REMOVEDIR)); // if it fails, a later run tries again
}

void clearOrphans(const QString& parent, const WorkshopKind& kind) {
    const Descriptor folder(::open(QFile::encodeName(parent).constData(), kFolderOnly));
    const auto names = folder ? namesIn(folder) : std::nullopt;
    if (!names) {
        return;
    }
    const QRegularExpression own(QRegularExpression::anchoredPattern(QRegularExpression::escape(stemOf(kind)) +
                                                                     QStringLiteral("[A-Za-z0-9]{6}")));
    const QRegularExpression known(QRegularExpression::anchoredPattern(kind.files.pattern()),
                                   QRegularExpression::DotMatchesEverythingOption);
    for (const QByteArray& name : *names) {
        if (own.match(QFile::decodeName(name)).hasMatch()) {
            clearIfOrphan(folder, name, known);
        }
    }
}

#endif

} // namespace

Workshop::Workshop(const QString& parent, const WorkshopKind& kind) {
#ifdef Q_OS_UNIX
    clearOrphans(parent, kind);
#endif
    // Another process may take the folder for an orphan before it is locked here. Then a new one is made.
    constexpr int kAttempts = 10;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        m_folder = std::make_unique<QTemporaryDir>(parent + u'/' + stemOf(kind) + QStringLiteral("XXXXXX"));
        if (!m_folder->isValid() || hold()) {
            return;
        }
        release();
    }
}

Workshop::~Workshop() {
    release();
}

bool Workshop::isValid() const {
    return m_folder && m_folder->isValid();
}

QString Workshop::path() const {
    return m_folder ? m_folder->path() : QString();
}

QString Workshop::filePath(const QString& name) const {
    return isValid() ? path() + u'/' + name : QString();
}

/// Locks the folder until release(). The kernel drops such a lock when the process ends, however it ends; a process id
/// in a file would become doubtful as soon as another process can bear the number. True when the folder is ours.
bool Workshop::hold() {
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(m_folder->path());
    m_lock = Descriptor(::open(name.constData(), kFolderOnly | O_NOFOLLOW));
    if (!m_lock) {
        return false;
    }
    if (::flock(m_lock.number(), LOCK_EX | LOCK_NB) != 0) {
        return errno != EWOULDBLOCK; // where folders cannot be locked, none is ever taken for an orphan
    }
    struct stat held {};
    struct stat named {};
    return ::fstat(m_lock.number(), &held) == 0 && ::lstat(name.constData(), &named) == 0 &&
           held.st_dev == named.st_dev && held.st_ino == named.st_ino;
#else
    return true;
#endif
}

void Workshop::release() {
    m_folder.reset(); // while the lock still holds
    m_lock.close();
}

} // namespace sixtrace
