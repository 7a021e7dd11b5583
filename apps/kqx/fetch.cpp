// SPDX-License-Identifier: MIT
// kqx fetch: captures from the instrument into files, over the receivers that the application uses.
#include "commands.h"
#include "fetchlinks.h"

#include "acquire/filenames.h"
#include "platform/programfolder.h"
#include "platform/serialports.h"
#include "platform/ttlink.h"
#include "platform/workshop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

#include <cstdio>

namespace sixtrace::kqx {

namespace {

constexpr int kLongestTimeoutS = 30;

/// A number of the table, or the path of a terminal device.
QString portLocation(const QString& port) {
    bool isNumber = false;
    const int number = port.toInt(&isNumber);
    return isNumber ? serialPortLocation(kqxProgramFolder(), number) : QFileInfo(port).absoluteFilePath();
}

/// A name in `folder` that no file bears: stamped with the time, and numbered when the minute has one already.
QString freeName(const QString& folder, bool bitmap) {
    const QString stem = folder + u'/' + stampedName(QDateTime::currentDateTime()).chopped(4);
    const QString suffix = bitmap ? QStringLiteral(".bmp") : QStringLiteral(".bin");
    QString name = stem + suffix;
    for (int i = 2; QFileInfo::exists(name); ++i) {
        name = stem + QStringLiteral("-%1").arg(i) + suffix;
    }
    return name;
}

/// Where the captures go.
struct Target {
    QString folder;
    QString file; ///< empty where names carry the time
};

/// Gives the received file its final name in one step; an existing file of that name is replaced only if the user
/// has given it.
bool place(const QString& received, const QString& name) {
    return std::rename(QFile::encodeName(received).constData(), QFile::encodeName(name).constData()) == 0;
}

/// The folders that fetches receive into. A bitmap bears the name that the instrument gives it.
WorkshopKind fetching() {
    return {QStringLiteral(".kqx-fetch"), QRegularExpression(QStringLiteral("capture\\.bin|.*bmp"))};
}

/// One fetch into a folder of its own beside the target, so that nothing half stands under a final name.
bool fetchOne(FetchLink& link, const Target& target) {
    const Workshop workshop(target.folder, fetching());
    if (!workshop.isValid()) {
        fail(Failed, QStringLiteral("%1 cannot be written").arg(target.folder));
        return false;
    }
    const QString before = QDir::currentPath();
    // A bitmap over the serial line goes to the current folder by its bare name.
    if (!QDir::setCurrent(workshop.path())) {
        fail(Failed, QStringLiteral("%1 cannot be entered").arg(workshop.path()));
        return false;
    }
    const Result<QString> received = link.fetch(workshop.filePath(QStringLiteral("capture.bin")));
    QDir::setCurrent(before);
    if (!received) {
        fail(Failed, received.error().description);
        return false;
    }
    const QString file = QDir(workshop.path()).absoluteFilePath(received.value());
    const QString name =
        target.file.isEmpty() ? freeName(target.folder, file.endsWith(QLatin1String("bmp"))) : target.file;
    if (!place(file, name)) {
        fail(Failed, QStringLiteral("%1 cannot be written").arg(name));
        return false;
    }
    QTextStream(stdout) << QDir::toNativeSeparators(name) << Qt::endl;
    return true;
}

void pause(qint64 milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(std::chrono::milliseconds(milliseconds), &loop, &QEventLoop::quit);
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &loop, [&loop] {
        if (interrupted()) {
            loop.quit();
        }
    });
    watch.start(100);
    loop.exec();
}

std::optional<Target> targetOf(const QString& output) {
    if (output.isEmpty()) {
        return Target{QDir::currentPath(), {}};
    }
    const QFileInfo info(output);
    if (info.isDir()) {
        return Target{QDir::cleanPath(info.absoluteFilePath()), {}};
    }
    return QFileInfo(info.absolutePath()).isDir() ? std::optional(Target{info.absolutePath(), info.absoluteFilePath()})
                                                  : std::nullopt;
}

} // namespace

int fetch(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Fetches captures from the instrument and prints the name of each file. Files appear whole or "
                       "not at all. Ctrl+C stops after the read in progress, a second one at once."));
    const QCommandLineOption serial(QStringLiteral("serial"),
                                    QStringLiteral("Fetch over a serial line: a number 1 to 16 or a terminal device."),
                                    QStringLiteral("port"));
    const QCommandLineOption usb(QStringLiteral("usb"),
                                 QStringLiteral("Fetch over USB, by the transfer library beside the program."));
    const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                                    QStringLiteral("Store to this file, or into this folder; by default into the "
                                                   "current folder under a name with date and time."),
                                    QStringLiteral("file"));
    const QCommandLineOption every(QStringLiteral("every"), QStringLiteral("Start a fetch every so many seconds."),
                                   QStringLiteral("seconds"), QStringLiteral("1"));
    const QCommandLineOption count(QStringLiteral("count"), QStringLiteral("Fetch so many captures, 1 by default."),
                                   QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption timeout(QStringLiteral("timeout"),
                                     QStringLiteral("Seconds until a read of the serial line counts as failed, 10 by "
                                                    "default."),
                                     QStringLiteral("seconds"), QStringLiteral("10"));
    parser.addOptions({serial, usb, output, every, count, timeout});
    if (const auto code = parse(parser, QStringLiteral("fetch"), arguments, {})) {
        return *code;
    }
    bool everyOk = false;
    bool countOk = false;
    bool timeoutOk = false;
    const double seconds = parser.value(every).toDouble(&everyOk);
    const int captures = parser.value(count).toInt(&countOk);
    const double patience = parser.value(timeout).toDouble(&timeoutOk);
    if (!everyOk || !countOk || !timeoutOk || !(seconds >= 0 && seconds <= 1e6) || captures < 1 ||
        !(patience >= 0.01 && patience <= kLongestTimeoutS)) {
        return fail(WrongUse,
                    QStringLiteral("--every takes seconds, --count a number from 1 up, --timeout 0.01 to 30 seconds"));
    }
    if (parser.isSet(serial) == parser.isSet(usb)) {
        return fail(WrongUse, QStringLiteral("give either --serial PORT or --usb"));
    }
    const auto target = targetOf(parser.value(output));
    if (!target) {
        return fail(Failed, QStringLiteral("%1: no such folder").arg(parser.value(output)));
    }
    if (captures > 1 && !target->file.isEmpty()) {
        return fail(WrongUse, QStringLiteral("several captures need a folder, not one file"));
    }
    const QString location = parser.isSet(serial) ? portLocation(parser.value(serial)) : QString();
    if (parser.isSet(serial) && location.isEmpty()) {
        return fail(Failed, QStringLiteral("there is no serial port %1").arg(parser.value(serial)));
    }
    catchInterrupt();
    const auto link = parser.isSet(serial) ? serialLink(location, static_cast<int>(patience * 1000))
                                           : usbLink(ttLibraryFolder(kqxProgramFolder()));
    int fetched = 0;
    QElapsedTimer clock;
    for (int i = 0; i < captures && !interrupted(); ++i) {
        clock.start();
        fetched += fetchOne(*link, *target) ? 1 : 0;
        const auto left = static_cast<qint64>(seconds * 1000) - clock.elapsed();
        if (i + 1 < captures && left > 0 && !interrupted()) {
            pause(left);
        }
    }
    if (captures > 1 && fetched < captures) {
        return fail(Failed, QStringLiteral("%1 of %2 captures fetched").arg(fetched).arg(captures));
    }
    return fetched == captures ? Done : Failed;
}

} // namespace sixtrace::kqx
