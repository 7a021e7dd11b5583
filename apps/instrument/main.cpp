// SPDX-License-Identifier: MIT
// The simulated instrument: writes capture files of every form, and serves captures over a serial line and a USB link.
#include "capture/scenes.h"
#include "instrument/capturefeed.h"
#include "instrument/linkserver.h"
#include "instrument/serialserver.h"
#include "instrument/usbserver.h"
#include "platform/files/wholefile.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

using namespace sixtrace;

enum ExitCode { Done = 0, Failed = 1, WrongUse = 2 };

int fail(ExitCode code, const QString& text) {
    QTextStream(stderr) << "sixtrace-instrument: " << text << Qt::endl;
    return code;
}

QString formNames() {
    QStringList names;
    for (const CaptureForm& form : captureForms()) {
        names << QString::fromLatin1(form.tag.data(), static_cast<qsizetype>(form.tag.size()));
    }
    return names.join(QStringLiteral(", "));
}

int listScenes() {
    QTextStream out(stdout);
    for (const Scene& scene : scenes()) {
        out << QString::fromLatin1(scene.name).leftJustified(10) << scene.description << '\n';
    }
    return Done;
}

int writeCapture(const QString& path, const QString& formName, const QString& sceneName, const QString& seedText) {
    const CaptureForm* form = captureForm(formName.toStdString());
    if (form == nullptr) {
        return fail(WrongUse, QStringLiteral("unknown form \"%1\" (there are %2)").arg(formName, formNames()));
    }
    bool isNumber = false;
    const std::uint32_t seed = seedText.toUInt(&isNumber);
    if (!isNumber) {
        return fail(WrongUse, QStringLiteral("the seed \"%1\" is no whole number from 0 up").arg(seedText));
    }
    const auto blocks = sceneBlocks(sceneName, seed);
    if (!blocks) {
        return fail(WrongUse, QStringLiteral("unknown scene \"%1\" (--list names them)").arg(sceneName));
    }
    const Outcome written = writeWhole(path, captureBytes(*form, *blocks));
    return written ? Done : fail(Failed, QStringLiteral("%1: %2").arg(path, written.error().description));
}

/// What the serving modes were asked for.
struct ServeRequest {
    QString serial;
    QString usb;
    QString form;
    QString scene;
    QString seed;
    QStringList faults;
    QString script;
    QString rate;
    QString idle;
};

int serveLinks(const ServeRequest& request) {
    bool seedOk = false;
    bool rateOk = false;
    bool idleOk = false;
    const std::uint32_t seed = request.seed.toUInt(&seedOk);
    const int rate = request.rate.toInt(&rateOk);
    const int idle = request.idle.toInt(&idleOk);
    if (!seedOk || !rateOk || !idleOk || rate < 0 || idle < 0) {
        return fail(WrongUse, QStringLiteral("--seed, --rate and --idle take whole numbers from 0 up"));
    }
    if (captureForm(request.form.toStdString()) == nullptr) {
        return fail(WrongUse, QStringLiteral("unknown form \"%1\" (there are %2)").arg(request.form, formNames()));
    }
    if (request.scene != u"all" && !sceneBlocks(request.scene, 1)) {
        return fail(WrongUse, QStringLiteral("unknown scene \"%1\" (--list names them)").arg(request.scene));
    }
    const auto standing = parsePlan(request.faults.join(u' '));
    if (!standing || !standing->scene.isEmpty()) {
        return fail(WrongUse, QStringLiteral("unknown fault (there are %1)").arg(faultNames()));
    }
    std::deque<FetchPlan> plans;
    if (!request.script.isEmpty()) {
        auto read = readScript(request.script);
        if (!read) {
            return fail(Failed, read.error().description);
        }
        plans = std::move(read.value());
    }
    catchEndSignals();
    CaptureFeed feed(request.form, request.scene, seed, *standing, std::move(plans));
    std::vector<std::unique_ptr<LinkServer>> links;
    QTextStream out(stdout);
    if (!request.serial.isEmpty()) {
        auto server = std::make_unique<SerialServer>(feed, request.serial, rate);
        if (const Outcome opened = server->open(); !opened) {
            return fail(Failed, QStringLiteral("%1: %2").arg(request.serial, opened.error().description));
        }
        links.push_back(std::move(server));
        out << "serial line at " << request.serial << Qt::endl;
    }
    if (!request.usb.isEmpty()) {
        auto server = std::make_unique<UsbServer>(feed, request.usb);
        if (const Outcome opened = server->open(); !opened) {
            return fail(Failed, QStringLiteral("%1: %2").arg(request.usb, opened.error().description));
        }
        links.push_back(std::move(server));
        out << "USB link at " << request.usb << Qt::endl;
    }
    serve(links, idle);
    return Done;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("sixtrace-instrument"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A simulated instrument: writes captures of every form, or serves them."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption write(QStringLiteral("write"), QStringLiteral("Write a capture to <file>."),
                                   QStringLiteral("file"));
    const QCommandLineOption form(QStringLiteral("form"), QStringLiteral("Form of the file: %1.").arg(formNames()),
                                  QStringLiteral("tag"), QStringLiteral("V11"));
    const QCommandLineOption scene(QStringLiteral("scene"), QStringLiteral("What the capture shows."),
                                   QStringLiteral("name"), QStringLiteral("six"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the noise, 1 by default."),
                                  QStringLiteral("number"), QStringLiteral("1"));
    const QCommandLineOption list(QStringLiteral("list"), QStringLiteral("List the scenes."));
    const QCommandLineOption serial(QStringLiteral("serial"),
                                    QStringLiteral("Serve a serial line, a terminal that <link> is made to lead to."),
                                    QStringLiteral("link"));
    const QCommandLineOption usb(QStringLiteral("usb"), QStringLiteral("Serve the USB link at a local <socket>."),
                                 QStringLiteral("socket"));
    const QCommandLineOption fault(
        QStringLiteral("fault"),
        QStringLiteral("Go wrong in every fetch: NAME, NAME@BLOCK or NAME@BLOCKxTIMES, block 1 and once by default. "
                       "May be given more than once. Names: %1.")
            .arg(faultNames()),
        QStringLiteral("fault"));
    const QCommandLineOption script(
        QStringLiteral("script"),
        QStringLiteral("One line a fetch: faults, \"scene=NAME\", or \"clean\"; after its end --fault holds."),
        QStringLiteral("file"));
    const QCommandLineOption rate(
        QStringLiteral("rate"), QStringLiteral("Bytes a second on the serial line, 11520 by default; 0 does not pace."),
        QStringLiteral("number"), QStringLiteral("11520"));
    const QCommandLineOption idle(
        QStringLiteral("idle"), QStringLiteral("End after so many seconds without a client, 600 by default; 0 never."),
        QStringLiteral("seconds"), QStringLiteral("600"));
    parser.addOptions({write, form, scene, seed, list, serial, usb, fault, script, rate, idle});
    if (!parser.parse(QCoreApplication::arguments())) {
        return fail(WrongUse, parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        QTextStream(stdout) << parser.helpText();
        return Done;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        QTextStream(stdout) << "sixtrace-instrument " << SIXTRACE_VERSION << '\n';
        return Done;
    }
    if (!parser.positionalArguments().isEmpty()) {
        return fail(WrongUse, QStringLiteral("unexpected \"%1\"").arg(parser.positionalArguments().constFirst()));
    }
    if (parser.isSet(list)) {
        return listScenes();
    }
    if (parser.isSet(serial) || parser.isSet(usb)) {
        return serveLinks({parser.value(serial), parser.value(usb), parser.value(form), parser.value(scene),
                           parser.value(seed), parser.values(fault), parser.value(script), parser.value(rate),
                           parser.value(idle)});
    }
    if (!parser.isSet(write)) {
        return fail(WrongUse,
                    QStringLiteral("nothing to do: give --serial, --usb, --write or --list (--help tells more)"));
    }
    return writeCapture(parser.value(write), parser.value(form), parser.value(scene), parser.value(seed));
}
