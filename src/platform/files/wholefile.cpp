// SPDX-License-Identifier: MIT
#include "platform/files/wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>

#ifdef Q_OS_UNIX
#include "platform/files/descriptor.h"

#include <fcntl.h>
#include <unistd.h>
#endif

namespace sixtrace {

namespace {

/// Why the new file in the folder of `path` could not be made.
RuntimeError errorOfOpening(const QString& path, QFileDevice::FileError error) {
    if (!QFileInfo::exists(QFileInfo(path).path())) {
        return RuntimeError::of(ErrorNumber::PathNotFound);
    }
    return RuntimeError::of(error == QFileDevice::ResourceError ? ErrorNumber::DiskFull
                                                                : ErrorNumber::PermissionDenied);
}

constexpr int kMostLinks = 40;

Outcome outcomeOf(bool done) {
    if (done) {
        return success();
    }
    return errno == EEXIST ? RuntimeError::of(ErrorNumber::FileAlreadyExists) : RuntimeError::ofErrno(errno);
}

/// Waits until the content of a file is on the disk: its final name must not stand for less.
void settle(const QByteArray& file) {
#ifdef Q_OS_UNIX
    if (const Descriptor opened{::open(file.constData(), O_RDONLY | O_CLOEXEC)}) {
        static_cast<void>(::fsync(opened.number())); // a file that cannot be synchronised is renamed all the same
    }
#else
    Q_UNUSED(file);
#endif
}

#ifdef Q_OS_UNIX

/// For a file system that can neither rename without replacing nor link: makes an empty file of the new name, and then
/// replaces that.
bool placeOverOwn(const QByteArray& from, const QByteArray& to) {
    if (!Descriptor(::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))) {
        return false;
    }
    if (std::rename(from.constData(), to.constData()) == 0) {
        return true;
    }
    const int reason = errno;
    ::unlink(to.constData());
    errno = reason;
    return false;
}

bool moveNew(const QByteArray& from, const QByteArray& to) {
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
#endif
    if (::link(from.constData(), to.constData()) == 0) {
        ::unlink(from.constData());
        return true;
    }
    return errno != EEXIST && placeOverOwn(from, to);
}

#endif

} // namespace

Outcome writeWhole(const QString& path, const QByteArray& content) {
    const QFileInfo target(path);
    if (target.exists() && !target.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    QSaveFile file(path);
    // With a buffer, a last piece that is written only in part would go unnoticed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return errorOfOpening(path, file.error());
    }
    if (file.write(content) != content.size()) {
        return RuntimeError::of(ErrorNumber::DiskFull);
    }
    if (!file.commit()) {
        return RuntimeError::of(file.error() == QFileDevice::RenameError ? ErrorNumber::PathAccess
                                                                         : ErrorNumber::DiskFull);
    }
    return success();
}

Outcome placeNew(const QString& file, const QString& name) {
    const QByteArray from = QFile::encodeName(file);
    settle(from);
#ifdef Q_OS_UNIX
    return outcomeOf(moveNew(from, QFile::encodeName(name)));
#else
    return outcomeOf(std::rename(from.constData(), QFile::encodeName(name).constData()) ==
                     0); // on that system it never replaces a file
#endif
}

Outcome placeOver(const QString& file, const QString& name) {
    const QFileInfo old(name);
    if (old.exists()) {
        static_cast<void>(
            QFile::setPermissions(file, old.permissions())); // a file system without permissions has none to keep
    }
    const QByteArray from = QFile::encodeName(file);
    settle(from);
    return outcomeOf(std::rename(from.constData(), QFile::encodeName(name).constData()) == 0);
}

std::optional<QString> followed(const QString& path) {
    QString at = QFileInfo(path).absoluteFilePath();
    for (int i = 0; i < kMostLinks; ++i) {
        const QFileInfo info(at);
        if (!info.isSymLink()) {
            return at;
        }
        at = QDir::cleanPath(info.symLinkTarget());
    }
    return std::nullopt;
}

} // namespace sixtrace
