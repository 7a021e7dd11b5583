// SPDX-License-Identifier: MIT
// kqx open: hands a capture to the running program over the session bus, or starts the program. The program itself
// takes no arguments, so its desktop entry runs this command on desktops that do not call programs over the bus.
#include "commands.h"
#include "jsontext.h"

#include "platform/desktop/sessionbus.h"
#include "platform/files/bytefile.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QThread>

namespace sixtrace::kqx {

namespace {

constexpr int kStartMs = 15000;
constexpr unsigned long kLookMs = 50;

const QString kService = QString::fromLatin1(kDesktopId);

bool startProgram() {
    QProcess program;
    program.setProgram(kqxFolder() + QStringLiteral("/sixtrace"));
    // A process that reads the output of kqx must not have to wait for the end of the program.
    program.setStandardInputFile(QProcess::nullDevice());
    program.setStandardOutputFile(QProcess::nullDevice());
    program.setStandardErrorFile(QProcess::nullDevice());
    return program.startDetached();
}

/// Whether the program is on the bus. When it does not run yet, the bus or this process starts it.
bool onTheBus(const QDBusConnection& bus) {
    QDBusConnectionInterface& names = *bus.interface();
    if (names.isServiceRegistered(kService)) {
        return true;
    }
    names.startService(kService);
    if (names.isServiceRegistered(kService)) {
        return true;
    }
    if (!startProgram()) {
        return false;
    }
    for (const QDeadlineTimer end(kStartMs); !end.hasExpired(); QThread::msleep(kLookMs)) {
        if (names.isServiceRegistered(kService)) {
            return true;
        }
    }
    return false;
}

const Usage& usage() {
    static const Usage made{"open",
                            "[FILE]",
                            "Opens the capture FILE in the running program, or starts it. Without FILE the program "
                            "comes to the front.",
                            {}};
    return made;
}

/// The URL of a local file, whose name need not be text.
QString addressOf(const std::string& file) {
    const QByteArray name = QByteArray::fromStdString(file);
    const QByteArray folder = name.startsWith('/') ? QByteArray() : QFile::encodeName(QDir::currentPath()) + '/';
    return QStringLiteral("file://") + QString::fromLatin1(QByteArray(folder + name).toPercentEncoding("/"));
}

} // namespace

ExitCode open(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    if (given.positional().size() > 1) {
        return failWith(WrongUse, "kqx open takes [FILE]");
    }
    const bool hasFile = !given.positional().empty();
    if (hasFile) {
        ByteFile file;
        const std::string& name = given.positional().front();
        if (const auto opened = file.open(name); !opened) {
            const bool unreadable = opened.error() == FileRefusal::Unreadable;
            return failWith(Failed, validUtf8(name) + (unreadable ? ": the file cannot be read" : ": no such file"));
        }
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return failWith(Failed, "there is no session bus to reach the program by; start sixtrace, and drop a file onto "
                                "its window");
    }
    if (!onTheBus(bus)) {
        return failWith(Failed, "sixtrace could not be started");
    }
    QDBusMessage call = QDBusMessage::createMethodCall(kService, QString::fromLatin1(kDesktopPath),
                                                       QStringLiteral("org.freedesktop.Application"),
                                                       hasFile ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (hasFile) {
        call << QStringList{addressOf(given.positional().front())};
    }
    call << QVariantMap();
    const QDBusMessage answer = bus.call(call);
    if (answer.type() != QDBusMessage::ErrorMessage) {
        return Done;
    }
    const QString why = answer.errorMessage();
    return fail(Failed, why.isEmpty() ? QStringLiteral("the program did not take the call") : why);
}

} // namespace sixtrace::kqx
