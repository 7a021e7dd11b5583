// SPDX-License-Identifier: MIT
#include "platform/files/wholefile.h"

#include <QFileDevice>
#include <QFileInfo>
#include <QSaveFile>

namespace sixtrace {

namespace {

/// Why the new file beside `path` could not be made.
RuntimeError errorOfOpening(const QString& path, QFileDevice::FileError error) {
    if (!QFileInfo::exists(QFileInfo(path).path())) {
        return RuntimeError::of(ErrorNumber::PathNotFound);
    }
    return RuntimeError::of(error == QFileDevice::ResourceError ? ErrorNumber::DiskFull
                                                                : ErrorNumber::PermissionDenied);
}

} // namespace

Outcome writeWhole(const QString& path, const QByteArray& content) {
    const QFileInfo target(path);
    if (target.exists() && !target.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    QSaveFile file(path);
    // A buffer would hide from us that its last piece was only written in part.
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

} // namespace sixtrace
