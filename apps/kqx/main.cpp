// SPDX-License-Identifier: MIT
// The command-line companion: the program's libraries for scripts and machines without a display.
#include "commands.h"

#include "capture/capturefile.h"
#include "view/defaults.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

namespace sixtrace::kqx {

namespace {

enum class Writes { Text, Pages };

struct Command {
    const char* name;
    const char* summary;
    int (*run)(const QStringList& arguments);
    Writes writes = Writes::Text;
};

constexpr std::array<Command, 7> kCommands{{
    {"fetch", "fetch captures from the instrument", fetch},
    {"info", "tell what a capture file holds, and what is wrong with it", info},
    {"open", "open a capture in the running program, or start it", open},
    {"page", "write the printed page of a capture as a PDF file", page, Writes::Pages},
    {"ports", "tell which ways to an instrument there are, and why one does not open", ports},
    {"screen", "write the screen of a capture as a PNG file", screen},
    {"table", "write the samples of a capture as text, CSV or workbook", table},
}};

/// Letters on a page come from the fonts of a platform that needs no display.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv) {
    const bool pages = argc > 1 && std::any_of(kCommands.begin(), kCommands.end(), [&](const Command& command) {
                           return command.writes == Writes::Pages && std::string_view(argv[1]) == command.name;
                       });
    if (!pages) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

QString overview() {
    QString text = QStringLiteral("Usage: kqx COMMAND ...\n\nCommands:\n");
    for (const Command& command : kCommands) {
        text += QStringLiteral("  ") + QString::fromLatin1(command.name).leftJustified(8) +
                QString::fromLatin1(command.summary) + u'\n';
    }
    return text + QStringLiteral("\nkqx COMMAND --help tells more. Exit codes: 0 done, 1 failed or a fault was found, "
                                 "2 wrong use.\n");
}

} // namespace

int fail(ExitCode code, const QString& text) {
    QTextStream(stderr) << "kqx: " << text << Qt::endl;
    return code;
}

void nameFaults(const QString& file, const std::vector<CaptureFault>& faults) {
    QTextStream err(stderr);
    for (const CaptureFault& fault : faults) {
        err << "kqx: " << file << ": at byte " << fault.offset << ": " << fault.text << '\n';
    }
}

std::unique_ptr<publicM> defaultModel() {
    auto model = std::make_unique<publicM>();
    model->fillTables();
    applyDefaultColours(*model);
    return model;
}

std::optional<ExitCode> openCapture(const QString& file, publicM& model, CaptureView& view) {
    const std::vector<CaptureFault> faults = checkCapture(file);
    nameFaults(file, faults);
    if (QFileInfo(file).isFile()) {
        SimpleWav(file, model, view);
    }
    if (model.FileKind == 0) {
        return std::nullopt;
    }
    return faults.empty() ? Done : Failed;
}

std::optional<int> parse(QCommandLineParser& parser, const QString& command, const QStringList& arguments,
                         const QStringList& positional) {
    parser.addHelpOption();
    for (const QString& name : positional) {
        parser.addPositionalArgument(name, QString());
    }
    if (!parser.parse(QStringList{QStringLiteral("kqx ") + command} + arguments)) {
        return fail(WrongUse, parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        QString text = parser.helpText();
        text.replace(QCoreApplication::arguments().constFirst(), QStringLiteral("kqx ") + command);
        QTextStream(stdout) << text;
        return Done;
    }
    if (parser.positionalArguments().size() != positional.size()) {
        return fail(WrongUse, QStringLiteral("kqx %1 takes %2").arg(command, positional.join(u' ')));
    }
    return std::nullopt;
}

} // namespace sixtrace::kqx

namespace sixtrace::kqx {

namespace {

int run(QStringList arguments) {
    if (arguments.isEmpty()) {
        return fail(WrongUse, QStringLiteral("no command given\n") + overview());
    }
    const QString name = arguments.takeFirst();
    if (name == u"--help" || name == u"-h" || name == u"help") {
        QTextStream(stdout) << overview();
        return Done;
    }
    if (name == u"--version") {
        QTextStream(stdout) << "kqx " << SIXTRACE_VERSION << '\n';
        return Done;
    }
    for (const Command& command : kCommands) {
        if (name == QLatin1String(command.name)) {
            return command.run(arguments);
        }
    }
    return fail(WrongUse, QStringLiteral("unknown command \"%1\"\n").arg(name) + overview());
}

/// The code to end with, once it is known whether all that was printed has gone out.
int afterPrinting(int code) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        return fail(Failed, QStringLiteral("the output cannot be written"));
    }
    return code;
}

} // namespace

} // namespace sixtrace::kqx

int main(int argc, char** argv) {
    using namespace sixtrace::kqx;
    const auto application = makeApplication(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));
    return afterPrinting(run(QCoreApplication::arguments().mid(1)));
}
