// SPDX-License-Identifier: MIT
#include "shell/desktopcalls.h"

#include "platform/desktop/sessionbus.h"

#include <QDBusConnection>
#include <QUrl>

#include <utility>

namespace sixtrace {

namespace {
/// How soon after the end of a dialog its capture comes: no user waits for that.
constexpr int kLookAgainMs = 100;
} // namespace

DesktopCalls::DesktopCalls() {
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &DesktopCalls::openWaiting);
}

bool DesktopCalls::answerOn(QDBusConnection bus) {
    // First the object, then the name: whoever waits for the name may call at once.
    return bus.isConnected() &&
           bus.registerObject(QString::fromLatin1(kDesktopPath), this, QDBusConnection::ExportAllSlots) &&
           bus.registerService(QString::fromLatin1(kDesktopId));
}

void DesktopCalls::reach(Window window) {
    m_window = std::move(window);
    m_soon.start(0);
}

void DesktopCalls::openWaiting() {
    if (m_waiting.isEmpty() || !m_window.open) {
        return;
    }
    if (m_window.isBusy && m_window.isBusy()) {
        m_soon.start(kLookAgainMs);
        return;
    }
    m_window.open(std::exchange(m_waiting, QString()));
}

void DesktopCalls::raise(const QVariantMap& platformData) {
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); // the right to come to the front, where the desktop grants it
    }
    if (m_window.raise) {
        m_window.raise();
    }
}

void DesktopCalls::Activate(const QVariantMap& platformData) {
    raise(platformData);
}

void DesktopCalls::Open(const QStringList& uris, const QVariantMap& platformData) {
    raise(platformData);
    for (const QString& uri : uris) {
        const QString path = QUrl(uri).toLocalFile();
        if (path.isEmpty()) {
            continue;
        }
        m_waiting = path;
        m_soon.start(0);
        return;
    }
}

void DesktopCalls::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData) {
    raise(platformData);
}

} // namespace sixtrace
