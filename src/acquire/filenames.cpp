// SPDX-License-Identifier: MIT
#include "acquire/filenames.h"

#include <QDir>

#include <algorithm>

namespace sixtrace {

QString stampedName(const QDateTime& when) {
    return u'D' + when.toString(QStringLiteral("yyMMddHHmm")) + QStringLiteral(".bin");
}

QString serialStorePath(const QString& appDir, const QDateTime& when) {
    return appDir + QStringLiteral("dat") + QDir::separator() + stampedName(when);
}

Result<QString> getPath(const QString& path) {
    // Dialogs of the desktop may hand out "/" beside the platform's own separator.
    const qsizetype last = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(QDir::separator()));
    if (last < 0) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    return path.left(last);
}

} // namespace sixtrace
