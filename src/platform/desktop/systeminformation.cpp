// SPDX-License-Identifier: MIT
#include "platform/desktop/systeminformation.h"

#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

namespace sixtrace {

std::optional<QString> GetKeyValue([[maybe_unused]] const QString& path, [[maybe_unused]] const QString& name) {
#if defined(Q_OS_WIN)
    const QSettings registry(QStringLiteral("HKEY_LOCAL_MACHINE\\") + path, QSettings::NativeFormat);
    const QVariant value = registry.value(name);
    if (!value.isValid()) {
        return std::nullopt;
    }
    if (value.typeId() == QMetaType::Int) {
        return QStringLiteral("&h") + QString::number(value.toUInt(), 16);
    }
    const QString text = value.toString();
    return text.left(text.indexOf(QChar(u'\0')));
#else
    return std::nullopt;
#endif
}

bool startSystemInformation() {
    QString program;
    if (const auto tool =
            GetKeyValue(QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), QStringLiteral("PATH"))) {
        program = *tool;
    } else if (const auto folder = GetKeyValue(QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"),
                                               QStringLiteral("MSINFO"))) {
        program = *folder + QStringLiteral("\\MSINFO32.EXE");
    } else {
        // The information programs of the usual desktops.
        for (const char* name : {"kinfocenter", "hardinfo", "hardinfo2"}) {
            program = program.isEmpty() ? QStandardPaths::findExecutable(QString::fromLatin1(name)) : program;
        }
    }
    return QFileInfo(program).isFile() && QProcess::startDetached(program, {});
}

} // namespace sixtrace
