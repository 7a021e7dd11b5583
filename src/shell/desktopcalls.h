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

/// What the desktop asks of the running program over the session bus, by the interface that freedesktop.org names
/// for programs of a desktop entry: come to the front, and open a capture. A call that comes before the
/// main window stands waits for it, and so does a capture that comes while a dialog waits for its answer; the caller
/// does not wait: what opening it has to say is said to the user, behind the answer. Without a bus, or where another
/// copy of the program has the name, there are no calls.
class DesktopCalls : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    struct Window {
        std::function<void()> raise;
        /// Whether the window cannot take a capture just now.
        std::function<bool()> isBusy;
        std::function<void(const QString& path)> open;
    };

    DesktopCalls();

    /// Whether calls will come.
    bool answerOn(QDBusConnection bus);
    /// From now on calls reach this window, beginning with one that has been waiting.
    void reach(Window window);

    // NOLINTNEXTLINE(readability-redundant-access-specifiers): the bus sees slots only
public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    /// Opens the first local file among `uris`: the program shows one capture.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    /// The program's desktop entry has no actions.
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    void raise(const QVariantMap& platformData);
    void openWaiting();

    Window m_window;
    QString m_waiting; ///< path of the capture to open next; empty for none
    QTimer m_soon;
};

} // namespace sixtrace
