// SPDX-License-Identifier: MIT
// The simulated instrument: writes capture files of every form.
#include "capture/scenes.h"
#include "platform/wholefile.h"

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

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("sixtrace-instrument"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A simulated instrument: writes captures of every form."));
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
    parser.addOptions({write, form, scene, seed, list});
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
    if (!parser.isSet(write)) {
        return fail(WrongUse, QStringLiteral("nothing to do: give --write or --list (--help tells more)"));
    }
    return writeCapture(parser.value(write), parser.value(form), parser.value(scene), parser.value(seed));
}
