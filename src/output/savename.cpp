// SPDX-License-Identifier: MIT
#include "output/savename.h"

#include <QFileInfo>

namespace sixtrace {

QString dateName(const QDateTime& time) {
    return u'D' + time.toString(QStringLiteral("yyMMddhhmm"));
}

QString withExtension(const QString& path, const QString& extension) {
    const QString name = QFileInfo(path).fileName();
    return name.isEmpty() || name.contains(u'.') ? path : path + extension;
}

} // namespace sixtrace
