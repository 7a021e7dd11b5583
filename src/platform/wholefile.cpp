// SPDX-License-Identifier: MIT
#include "platform/wholefile.h"

#include <QFileDevice>
#include <QFileInfo>
#include <QSaveFile>

namespace sixtrace {

namespace {

RuntimeError errorOf(const QString& path, QFileDevice::FileError error) {
    if (QFileInfo(path).isDir()) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    if (!QFileInfo::exists(QFileInfo(path).path())) {
        return RuntimeError::of(ErrorNumber::PathNotFound);
    }
    switch (error) {
    case QFileDevice::ResourceError:
    case QFileDevice::WriteError:
        return RuntimeError::of(ErrorNumber::DiskFull);
    case QFileDevice::PermissionsError:
    case QFileDevice::OpenError:
        return RuntimeError::of(ErrorNumber::PermissionDenied);
    default:
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
}

} // namespace

Outcome writeWhole(const QString& path, const QByteArray& content) {
    const QFileInfo target(path);
    if (target.exists() && !target.isFile()) {
        return RuntimeError::of(ErrorNumber::PathAccess);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
        return errorOf(path, file.error());
    }
    return success();
}

} // namespace sixtrace
