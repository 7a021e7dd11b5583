// SPDX-License-Identifier: MIT
#include "platform/ports/serialports.h"

#include <QCollator>
#include <QFileInfo>
#include <QSerialPortInfo>

#include <algorithm>

namespace sixtrace {

namespace {

bool isUsbAdapter(const QSerialPortInfo& port) {
    return port.hasVendorIdentifier() || port.portName().startsWith(QLatin1String("ttyUSB")) ||
           port.portName().startsWith(QLatin1String("ttyACM"));
}

} // namespace

QStringList machineSerialPorts() {
    QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    QCollator byNumber(QLocale::c());
    byNumber.setNumericMode(true);
    std::sort(ports.begin(), ports.end(), [&byNumber](const QSerialPortInfo& a, const QSerialPortInfo& b) {
        if (isUsbAdapter(a) != isUsbAdapter(b)) {
            return isUsbAdapter(a);
        }
        return byNumber.compare(a.portName(), b.portName()) < 0;
    });
    QStringList locations;
    for (const QSerialPortInfo& port : ports) {
        locations << port.systemLocation();
    }
    return locations;
}

QString serialPortLocation(const QString& appDir, int number) {
#ifdef Q_OS_WIN
    Q_UNUSED(appDir);
    return number < 1 ? QString() : QStringLiteral("COM%1").arg(number);
#else
    const QFileInfo pinned(appDir + QStringLiteral("ports/com%1").arg(number));
    if (pinned.exists()) {
        return pinned.canonicalFilePath();
    }
    const QStringList ports = machineSerialPorts();
    return number < 1 || number > ports.size() ? QString() : ports.at(number - 1);
#endif
}

} // namespace sixtrace
