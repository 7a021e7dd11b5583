// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <functional>

class QDBusConnection;

namespace sixtrace {

/// Answers the calls of the desktop over the session bus: come to the front, and open a capture. The interface is the
/// one that freedesktop.org defines for programs with a desktop entry. A call that comes before the main window exists
/// is carried out when it does, and a capture that comes while a dialog is open is opened after the dialog has closed.
/// The caller gets its answer at once; messages about the capture are shown to the user. Without a session bus, or if
/// another copy of the program has the name already, no calls come.
class DesktopCalls : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    struct Window {
        std::function<void()> raise;
        /// Whether the window cannot open a capture now, because a dialog is open.
        std::function<bool()> isBusy;
        std::function<void(const QString& path)> open;
    };

    DesktopCalls();

    /// Takes the program's name on a bus. False if that fails: then no calls will come.
    bool answerOn(QDBusConnection bus);
    /// From now on calls reach this window. A capture that has been waiting is opened.
    void reach(Window window);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): only slots are exported to the bus
public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    /// Opens the first local file among `uris`. The others are left out: the program shows one capture.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    /// Only comes to the front: the desktop entry of the program has no actions.
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    void raise(const QVariantMap& platformData);
    void openWaiting();

    Window m_window;
    QString m_waiting; ///< path of the capture to open next; empty for none
    QTimer m_soon;
};

} // namespace sixtrace
