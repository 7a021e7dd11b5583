// SPDX-License-Identifier: MIT
#include "platform/files/privatefolder.h"

#include "platform/files/filenames.h"
#include "platform/files/programfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace sixtrace {

namespace {

/// Makes a folder, and the folders above it that are missing. On a failure, the next access to the folder fails.
void makeMissing(const QString& folder) {
#ifdef Q_OS_UNIX
    if (folder.isEmpty() || QFileInfo::exists(folder)) {
        return;
    }
    makeMissing(QFileInfo(folder).path());
    mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
#else
    ensureFolder(folder);
#endif
}

} // namespace

Result<QString> privateFolder() {
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    makeMissing(cache);
    return privateFolderAt(cache + QStringLiteral("/sixtrace"));
}

Result<QString> makePrivateFolder(const QString& path) {
    const QString target = QFileInfo(path).canonicalFilePath();
    const QString place = target.isEmpty() ? QDir::cleanPath(path) : target;
    makeMissing(QFileInfo(place).path());
    return privateFolderAt(place);
}

Result<QString> privateFolderAt(const QString& path) {
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST) {
        return RuntimeError::ofErrno(errno);
    }
    struct stat found {};
    if (lstat(name.constData(), &found) != 0) {
        return RuntimeError::ofErrno(errno);
    }
    if (!S_ISDIR(found.st_mode) || found.st_uid != geteuid()) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    if ((found.st_mode & 07777U) != S_IRWXU && chmod(name.constData(), S_IRWXU) != 0) {
        return RuntimeError::ofErrno(errno);
    }
#else
    ensureFolder(path); // below the user's own profile, which others cannot enter
#endif
    return withSeparator(QDir::toNativeSeparators(path));
}

Result<QString> autoGetFileIn(const QString& folder) {
    const QString path = folder + QStringLiteral("AutoGet.bin");
    if (QFileInfo(path).isSymLink() && !QFile::remove(path)) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    return path;
}

Result<QString> autoGetFile() {
    const Result<QString> folder = privateFolder();
    if (!folder) {
        return folder.error();
    }
    return autoGetFileIn(folder.value());
}

} // namespace sixtrace
