// SPDX-License-Identifier: MIT
#include "platform/programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace sixtrace {

QString withSeparator(const QString& path) {
    const bool ended = path.endsWith(QDir::separator()) || path.endsWith(u'/');
    return ended ? path : path + QDir::separator();
}

QString programFolder() {
    const QString folder = QCoreApplication::applicationDirPath();
    if (QFileInfo(folder).isWritable()) {
        return withSeparator(QDir::toNativeSeparators(folder));
    }
    const QString own =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/sixtrace");
    ensureFolder(own);
    return withSeparator(QDir::toNativeSeparators(own));
}

void ensureFolder(const QString& folder) { QDir().mkpath(folder); }

} // namespace sixtrace
