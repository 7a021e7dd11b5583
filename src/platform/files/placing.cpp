// SPDX-License-Identifier: MIT
#include "platform/files/placing.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace sixtrace {

namespace {

constexpr int kMostLinks = 40;

Outcome outcomeOf(bool done) {
    if (done) {
        return success();
    }
    return errno == EEXIST ? RuntimeError::of(ErrorNumber::FileAlreadyExists) : RuntimeError::ofErrno(errno);
}

/// A name must not come to stand for bytes that are not on the disk yet.
void settle(const QByteArray& file) {
#ifdef Q_OS_UNIX
    const int handle = ::open(file.constData(), O_RDONLY | O_CLOEXEC);
    if (handle >= 0) {
        static_cast<void>(::fsync(handle)); // what cannot be synchronised is placed all the same
        ::close(handle);
    }
#else
    Q_UNUSED(file);
#endif
}

#ifdef Q_OS_UNIX

/// For a file system that can neither rename without replacing nor link: takes the name with an empty file first.
bool placeOverOwn(const QByteArray& from, const QByteArray& to) {
    const int taken = ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (taken < 0) {
        return false;
    }
    ::close(taken);
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

Outcome placeNew(const QString& file, const QString& name) {
    const QByteArray from = QFile::encodeName(file);
    settle(from);
#ifdef Q_OS_UNIX
    return outcomeOf(moveNew(from, QFile::encodeName(name)));
#else
    return outcomeOf(std::rename(from.constData(), QFile::encodeName(name).constData()) == 0); // never replaces there
#endif
}

Outcome placeOver(const QString& file, const QString& name) {
    const QFileInfo old(name);
    if (old.exists()) {
        static_cast<void>(QFile::setPermissions(file, old.permissions())); // a disk without rights has none to keep
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
