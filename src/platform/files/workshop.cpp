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

/// The first part of a workshop's name. It tells the machine: on a disk that several machines share, the lock may only
/// be known where it was taken, and a folder of another machine proves nothing by being free here.
QString stemOf(const WorkshopKind& kind) {
    const QByteArray machine = QSysInfo::machineUniqueId() + '/' + QSysInfo::machineHostName().toUtf8();
    constexpr qsizetype kDigits = 8;
    const QByteArray hash = QCryptographicHash::hash(machine, QCryptographicHash::Sha256).toHex().first(kDigits);
    return kind.prefix + u'-' + QString::fromLatin1(hash) + u'-';
}

#ifdef Q_OS_UNIX

/// A file descriptor that is closed with this object.
class Handle {
public:
    explicit Handle(int descriptor)
        : m_descriptor(descriptor) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

constexpr int kFolderOnly = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// The names in an open folder, or nothing where it does not let itself be read to its end.
std::optional<std::vector<QByteArray>> namesIn(const Handle& folder) {
    const int again = ::openat(folder.get(), ".", kFolderOnly);
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(again < 0 ? nullptr : ::fdopendir(again), ::closedir);
    if (!listing) {
        if (again >= 0) {
            ::close(again);
        }
        return std::nullopt;
    }
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

bool isKnownFile(const Handle& folder, const QByteArray& name, const QRegularExpression& known) {
    struct stat found {};
    return ::fstatat(folder.get(), name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(found.st_mode) &&
           found.st_uid == ::geteuid() && known.match(QFile::decodeName(name)).hasMatch();
}

/// Removes one workshop if it is an orphan. What happens to the tree meanwhile does no harm: everything is reached from
/// the folders that were opened and looked at, and the last step takes an empty folder only.
void clearIfOrphan(const Handle& parent, const QByteArray& name, const QRegularExpression& known) {
    const Handle folder(::openat(parent.get(), name.constData(), kFolderOnly | O_NOFOLLOW));
    struct stat found {};
    if (!folder.isOpen() || ::fstat(folder.get(), &found) != 0 || found.st_uid != ::geteuid() ||
        (found.st_mode & (S_IRWXG | S_IRWXO)) != 0 || ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0) {
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
        if (::unlinkat(folder.get(), each.constData(), 0) != 0) {
            return;
        }
    }
    static_cast<void>(::unlinkat(parent.get(), name.constData(), AT_REMOVEDIR)); // what stays is for a later run
}

void clearOrphans(const QString& parent, const WorkshopKind& kind) {
    const Handle folder(::open(QFile::encodeName(parent).constData(), kFolderOnly));
    const auto names = folder.isOpen() ? namesIn(folder) : std::nullopt;
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
    // Between its making and its locking another process may take the folder for an orphan. Then a new one is made.
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

/// Locks the folder for as long as this process lives: the kernel drops such a lock with the process, however it ends,
/// where a process id in a file would have to be doubted once the number has passed on. Says whether it is ours.
bool Workshop::hold() {
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(m_folder->path());
    m_lock = ::open(name.constData(), kFolderOnly | O_NOFOLLOW);
    if (m_lock < 0) {
        return false;
    }
    if (::flock(m_lock, LOCK_EX | LOCK_NB) != 0) {
        return errno != EWOULDBLOCK; // where no folder can be locked, none is ever taken for an orphan
    }
    struct stat held {};
    struct stat named {};
    return ::fstat(m_lock, &held) == 0 && ::lstat(name.constData(), &named) == 0 && held.st_dev == named.st_dev &&
           held.st_ino == named.st_ino;
#else
    return true;
#endif
}

void Workshop::release() {
    m_folder.reset(); // under the lock
#ifdef Q_OS_UNIX
    if (m_lock >= 0) {
        ::close(m_lock);
        m_lock = -1;
    }
#endif
}

} // namespace sixtrace
