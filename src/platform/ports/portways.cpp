// SPDX-License-Identifier: MIT
// Finds out why a serial port does not open, with the means of an ordinary user.
#include "platform/ports/mscomm.h"
#include "platform/ports/serialports.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>

#ifdef Q_OS_UNIX
#include <grp.h>
#include <sys/stat.h>
#endif

namespace sixtrace {

namespace {

/// The name of the group that a device belongs to; empty when that is unknown.
QString groupOf(const QString& location) {
#ifdef Q_OS_UNIX
    struct stat found {};
    if (stat(QFile::encodeName(location).constData(), &found) == 0) {
        const group* entry = getgrgid(found.st_gid);
        return entry != nullptr ? QString::fromLocal8Bit(entry->gr_name) : QString::number(found.st_gid);
    }
#else
    Q_UNUSED(location);
#endif
    return {};
}

/// "NAME (process 123)" of a process that has a device open; empty when none is found. Only root sees the processes of
/// other users.
QString holderOf(const QString& location) {
    const QString device = QFileInfo(location).canonicalFilePath();
    const QDir processes(QStringLiteral("/proc"));
    for (const QString& id : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isNumber = false;
        static_cast<void>(id.toInt(&isNumber));
        const QDir handles(isNumber ? QStringLiteral("/proc/%1/fd").arg(id) : QString());
        if (!isNumber || device.isEmpty()) {
            continue;
        }
        for (const QFileInfo& handle : handles.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            if (handle.symLinkTarget() == device) {
                QFile name(QStringLiteral("/proc/%1/comm").arg(id));
                const bool told = name.open(QIODevice::ReadOnly);
                return QStringLiteral("%1 (process %2)")
                    .arg(told ? QString::fromLocal8Bit(name.readAll()).trimmed() : QStringLiteral("?"), id);
            }
        }
    }
    return {};
}

void tryOut(PortWay& way) {
    MSComm port([&way](int) { return way.location; });
    const Outcome opened = port.tryPort(way.number);
    if (opened) {
        return;
    }
    way.reason = opened.error().description;
    switch (opened.error().number) {
    case ErrorNumber::PermissionDenied:
        way.state = PortState::Rights;
        way.reason = groupOf(way.location);
        break;
    case ErrorNumber::PortAlreadyOpen:
        way.state = PortState::Busy;
        way.reason = holderOf(way.location);
        break;
    case ErrorNumber::DeviceUnavailable:
        way.state = PortState::Gone;
        break;
    default:
        way.state = PortState::Failed;
        break;
    }
}

} // namespace

QString AdapterName::text() const {
    QStringList parts{maker, product, serialNumber};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

AdapterName adapterAt(const QString& location) {
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        if (port.systemLocation() == location) {
            return {port.manufacturer(), port.description(), port.serialNumber()};
        }
    }
    return {};
}

std::vector<PortWay> serialWays(const QString& appDir, int highest) {
    std::vector<PortWay> ways;
    for (int number = 1; number <= highest; ++number) {
        PortWay way;
        way.number = number;
        way.location = serialPortLocation(appDir, number);
        const QFileInfo pin(appDir + QStringLiteral("ports/com%1").arg(number));
        way.pinned = pin.exists();
        if (way.location.isEmpty() && pin.isSymLink()) {
            way.location = pin.symLinkTarget(); // a link to a device that is not there
            way.pinned = true;
            way.state = PortState::Gone;
            ways.push_back(way);
        } else if (!way.location.isEmpty()) {
            way.adapter = adapterAt(way.location);
            tryOut(way);
            ways.push_back(way);
        }
    }
    return ways;
}

} // namespace sixtrace
