// SPDX-License-Identifier: MIT
#include "platform/desktop/toolkitlanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace sixtrace {

void setToolkitLanguage(int languageId) {
    QCoreApplication* const application = QCoreApplication::instance();
    const QString name = QStringLiteral("toolkit's Chinese");
    auto* chinese = application->findChild<QTranslator*>(name, Qt::FindDirectChildrenOnly);
    if (languageId != 0) {
        delete chinese; // what the toolkit has of itself is English
        return;
    }
    if (chinese != nullptr) {
        return;
    }
    chinese = new QTranslator(application);
    chinese->setObjectName(name);
    if (chinese->load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(chinese);
    }
}

} // namespace sixtrace
