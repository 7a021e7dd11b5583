// SPDX-License-Identifier: MIT
// kqx open: hands a capture to the running program over the session bus, or starts it. The program itself takes no
// arguments; this is what its desktop entry runs where the desktop does not call it over the bus.
#include "commands.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QThread>
#include <QUrl>

namespace sixtrace::kqx {

namespace {

constexpr int kStartMs = 15000;
constexpr unsigned long kLookMs = 50;

const QString kService = QStringLiteral("org.sixtrace.Sixtrace");

bool startProgram() {
    QProcess program;
    program.setProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/sixtrace"));
    // Whoever reads our output must not wait for the end of the program.
    program.setStandardInputFile(QProcess::nullDevice());
    program.setStandardOutputFile(QProcess::nullDevice());
    program.setStandardErrorFile(QProcess::nullDevice());
    return program.startDetached();
}

/// Whether the program has its name on the bus: at once, by the bus starting it, or by our starting it.
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

} // namespace

int open(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Opens a capture in the running program, or starts it. Without FILE it comes to the front."));
    const bool hasFile = arguments.size() == 1 && !arguments.first().startsWith(u'-');
    if (const std::optional<int> ended = parse(parser, QStringLiteral("open"), arguments,
                                               hasFile ? QStringList{QStringLiteral("FILE")} : QStringList())) {
        return *ended;
    }
    if (hasFile && !QFileInfo(arguments.first()).isFile()) {
        return fail(Failed, QStringLiteral("%1: no such file").arg(arguments.first()));
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        if (hasFile) {
            return fail(Failed, QStringLiteral("there is no session bus to reach the program by; start sixtrace and "
                                               "drop the file onto its window"));
        }
        return startProgram() ? Done : fail(Failed, QStringLiteral("sixtrace could not be started"));
    }
    if (!onTheBus(bus)) {
        return fail(Failed, QStringLiteral("sixtrace could not be started"));
    }
    QDBusMessage call = QDBusMessage::createMethodCall(kService, QStringLiteral("/org/sixtrace/Sixtrace"),
                                                       QStringLiteral("org.freedesktop.Application"),
                                                       hasFile ? QStringLiteral("Open") : QStringLiteral("Activate"));
    if (hasFile) {
        const QUrl file = QUrl::fromLocalFile(QFileInfo(arguments.first()).absoluteFilePath());
        call << QStringList{QString::fromLatin1(file.toEncoded())};
    }
    call << QVariantMap();
    const QDBusMessage answer = bus.call(call);
    return answer.type() == QDBusMessage::ErrorMessage ? fail(Failed, answer.errorMessage()) : Done;
}

} // namespace sixtrace::kqx
