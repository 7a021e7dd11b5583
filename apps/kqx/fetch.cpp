// SPDX-License-Identifier: MIT
// kqx fetch: captures from the instrument into files, over the receivers that the application uses.
#include "commands.h"
#include "fetchlinks.h"
#include "fetchtarget.h"

#include "platform/files/programfolder.h"
#include "platform/files/workshop.h"
#include "platform/ports/serialports.h"
#include "platform/ports/ttlink.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>

#include <optional>

namespace sixtrace::kqx {

namespace {

constexpr double kShortestTimeoutS = 0.01;
constexpr double kLongestTimeoutS = 30;
constexpr double kLongestIntervalS = 1e6;

/// The number that a text is, from `least` to `greatest`.
std::optional<double> numberIn(const QString& text, double least, double greatest) {
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && number >= least && number <= greatest ? std::optional(number) : std::nullopt;
}

/// The whole number from 1 up that a text is.
std::optional<int> countIn(const QString& text) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 1 ? std::optional(number) : std::nullopt;
}

/// The device for --serial: that of a number of the port table, or a given path. Empty for a number without a port.
QString portLocation(const QString& port) {
    bool isNumber = false;
    const int number = port.toInt(&isNumber);
    return isNumber ? serialPortLocation(kqxProgramFolder(), number) : QFileInfo(port).absoluteFilePath();
}

/// The folders that fetches receive into. A bitmap has the name that the instrument gives it.
WorkshopKind fetching() {
    return {QStringLiteral(".kqx-fetch"), QRegularExpression(QStringLiteral("capture\\.bin|.*bmp"))};
}

/// Fetches into a private folder next to the target, so that no incomplete file gets the final name.
ExitCode fetchOne(FetchLink& link, const FetchTarget& target) {
    const Workshop workshop(target.folder(), fetching());
    if (!workshop.isValid()) {
        return fail(NotStored, QStringLiteral("%1 cannot be written").arg(target.folder()));
    }
    const Fetched fetched = link.fetch(workshop.path());
    if (fetched.how != Fetched::How::Whole) {
        return fail(fetched.how == Fetched::How::NoInstrument ? NoInstrument : Failed, fetched.sentence);
    }
    const Result<QString> name = target.place(fetched.file, fetched.bitmap);
    if (!name) {
        return fail(NotStored, QStringLiteral("the file cannot be stored: %1").arg(name.error().description));
    }
    QTextStream(stdout) << QDir::toNativeSeparators(name.value()) << Qt::endl;
    if (fetched.bitmap) {
        return fail(IsBitmap, QStringLiteral("the file is a bitmap and no capture"));
    }
    return Done;
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

} // namespace

ExitCode fetch(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Fetches captures from the instrument and prints the name of each file. Files appear whole or "
                       "not at all. Ctrl+C stops after the read in progress, a second Ctrl+C at once.\n\n"
                       "Exit codes: 0 done, 1 a transfer broke off or its file is not whole, 2 wrong use, 3 no "
                       "instrument or no port, 4 the file is a bitmap and no capture (stored with the extension .bmp), "
                       "5 the file cannot be stored. If several captures were to be fetched, the first failure sets "
                       "the code."));
    const QCommandLineOption serial(QStringLiteral("serial"),
                                    QStringLiteral("Fetch over a serial line: a number 1 to 16 or a terminal device."),
                                    QStringLiteral("port"));
    const QCommandLineOption usb(QStringLiteral("usb"),
                                 QStringLiteral("Fetch over USB, with the transfer library beside the program."));
    const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                                    QStringLiteral("Store to this file, or into this folder; by default into the "
                                                   "current folder under a name with date and time."),
                                    QStringLiteral("file"));
    const QCommandLineOption every(QStringLiteral("every"), QStringLiteral("Start a fetch every this many seconds."),
                                   QStringLiteral("seconds"), QStringLiteral("1"));
    const QCommandLineOption count(QStringLiteral("count"),
                                   QStringLiteral("Number of captures to fetch, 1 by default."),
                                   QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption timeout(QStringLiteral("timeout"),
                                     QStringLiteral("Seconds until a read of the serial line counts as failed, 10 by "
                                                    "default."),
                                     QStringLiteral("seconds"), QStringLiteral("10"));
    const QCommandLineOption force(QStringLiteral("force"), QStringLiteral("Let --output overwrite an existing file."));
    parser.addOptions({serial, usb, output, every, count, timeout, force});
    if (const auto code = parse(parser, QStringLiteral("fetch"), arguments, {})) {
        return *code;
    }
    const auto seconds = numberIn(parser.value(every), 0, kLongestIntervalS);
    const auto captures = countIn(parser.value(count));
    const auto patience = numberIn(parser.value(timeout), kShortestTimeoutS, kLongestTimeoutS);
    if (!seconds || !captures || !patience) {
        return fail(WrongUse,
                    QStringLiteral("--every takes seconds, --count a number from 1 up, --timeout 0.01 to 30 seconds"));
    }
    if (parser.isSet(serial) == parser.isSet(usb)) {
        return fail(WrongUse, QStringLiteral("give either --serial PORT or --usb"));
    }
    const auto target =
        FetchTarget::of(parser.value(output), parser.isSet(force) ? Existing::Replaced : Existing::Kept);
    if (!target) {
        return fail(NotStored, target.error().description);
    }
    if (*captures > 1 && !target.value().isFolder()) {
        return fail(WrongUse, QStringLiteral("several captures need a folder, not one file"));
    }
    const QString location = parser.isSet(serial) ? portLocation(parser.value(serial)) : QString();
    if (parser.isSet(serial) && location.isEmpty()) {
        return fail(
            NoInstrument,
            QStringLiteral("there is no serial port %1 (kqx ports tells what there is)").arg(parser.value(serial)));
    }
    catchInterrupt();
    const auto link = parser.isSet(serial) ? serialLink(location, static_cast<int>(*patience * 1000))
                                           : usbLink(ttLibraryFolder(kqxProgramFolder()));
    int fetched = 0;
    ExitCode firstFailure = Done;
    QElapsedTimer clock;
    for (int i = 0; i < *captures && !interrupted(); ++i) {
        clock.start();
        const ExitCode code = fetchOne(*link, target.value());
        fetched += code == Done ? 1 : 0;
        firstFailure = firstFailure == Done ? code : firstFailure;
        const auto left = static_cast<qint64>(*seconds * 1000) - clock.elapsed();
        if (i + 1 < *captures && left > 0 && !interrupted()) {
            pause(left);
        }
    }
    if (*captures > 1 && fetched < *captures) {
        return fail(firstFailure == Done ? Failed : firstFailure,
                    QStringLiteral("%1 of %2 captures fetched").arg(fetched).arg(*captures));
    }
    return fetched == *captures ? Done : firstFailure == Done ? Failed : firstFailure;
}

} // namespace sixtrace::kqx
