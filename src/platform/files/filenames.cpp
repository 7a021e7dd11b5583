// SPDX-License-Identifier: MIT
#include "platform/files/filenames.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace sixtrace {

QString dateName(const QDateTime& when) {
    return u'D' + when.toString(QStringLiteral("yyMMddHHmm"));
}

QString withSeparator(const QString& path) {
    const bool ended = path.endsWith(QDir::separator()) || path.endsWith(u'/');
    return ended ? path : path + QDir::separator();
}

QString withExtension(const QString& path, const QString& extension) {
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() || name.contains(u'.') ? path : path + extension;
}

Result<QString> getPath(const QString& path) {
    // The desktop's dialogs may return "/" also where the platform's own separator is another one.
    const qsizetype last = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(QDir::separator()));
    if (last < 0) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    return path.left(last);
}

QString withoutFolder(const QString& name) {
    const auto isSeparator = [](QChar c) { return c == u'/' || c == u'\\' || c == u':'; };
    const auto last = std::find_if(name.crbegin(), name.crend(), isSeparator);
    return name.right(std::distance(name.crbegin(), last));
}

} // namespace sixtrace
