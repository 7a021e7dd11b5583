// SPDX-License-Identifier: MIT
#include "platform/files/programfolder.h"

#include "platform/files/filenames.h"
#include "platform/files/privatefolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace sixtrace {

namespace {

QString ownFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/sixtrace");
}

/// A folder of an install for all users. The build gives its path relative to the folder of the programs.
QString installFolder(const QString& executables, const char* path) {
    return QDir::cleanPath(executables + QLatin1Char('/') + QString::fromUtf8(path));
}

} // namespace

QString programFolder() {
    return programFolderOf(QCoreApplication::applicationDirPath());
}

QString programFolderOf(const QString& executables) {
    const QString installed = installFolder(executables, SIXTRACE_SHARED_FROM_PROGRAMS);
    const bool forAll = QFileInfo(installed).isDir();
    if (!forAll && QFileInfo(executables).isWritable()) {
        return withSeparator(QDir::toNativeSeparators(executables));
    }
    const QString own = ownFolder();
    // The program loads code from this folder, so nobody else may write to it. A folder of another user is left as it
    // is; later writes to it report their errors.
    static_cast<void>(makePrivateFolder(own));
    if (forAll) {
        furnishProgramFolder(own, installed);
        furnishProgramFolder(own, installFolder(executables, SIXTRACE_LIBRARY_FROM_PROGRAMS));
    } else {
        furnishProgramFolder(own, executables);
    }
    return withSeparator(QDir::toNativeSeparators(own));
}

void furnishProgramFolder(const QString& own, const QString& installed) {
    const QStringList linked{QStringLiteral("*.Lan"), QStringLiteral("vrt_*"), QStringLiteral("*ttdll.so"),
                             QStringLiteral("ttdll.dll")};
    const QDir source(installed);
    const QDir target(own);
    for (const QString& name : source.entryList(linked, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QFileInfo present(target.filePath(name));
        if (present.isSymLink() && !present.exists()) {
            QFile::remove(present.filePath());
        } else if (present.exists()) {
            continue;
        }
        QFile::link(source.filePath(name), target.filePath(name));
    }
    const QString settings = QStringLiteral("ttdll.ini");
    const QFileInfo theirs(source.filePath(settings));
    if (!QFileInfo::exists(target.filePath(settings)) && theirs.isFile() &&
        QFile::copy(source.filePath(settings), target.filePath(settings))) {
        QFile::setPermissions(target.filePath(settings), QFile::ReadOwner | QFile::WriteOwner);
    }
}

void ensureFolder(const QString& folder) {
    QDir().mkpath(folder);
}

} // namespace sixtrace
