// SPDX-License-Identifier: MIT
// The commands of kqx that need the desktop's libraries. kqx hands them on to this program.
#include "commands.h"

#include "capture/settings.h"
#include "platform/files/descriptor.h"
#include "platform/files/programfolder.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string_view>

namespace sixtrace::kqx {

namespace {

enum class Writes { Text, Pages };

struct Command {
    std::string_view name;
    ExitCode (*run)(const std::vector<std::string>& arguments);
    Writes writes = Writes::Text;
};

/// Runs a command whose arguments are texts, as it takes no names of captures.
template<ExitCode (*run)(const QStringList&)>
ExitCode ofTexts(const std::vector<std::string>& arguments) {
    QStringList texts;
    for (const std::string& argument : arguments) {
        texts << QString::fromStdString(argument);
    }
    return run(texts);
}

constexpr std::array kDesktopCommands{
    Command{"fetch", ofTexts<fetch>}, Command{"open", open},     Command{"page", page, Writes::Pages},
    Command{"ports", ofTexts<ports>}, Command{"screen", screen}, Command{"table", table},
};

/// A page needs fonts. They come from a platform that needs no display.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, Writes writes) {
    if (writes == Writes::Text) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// Drops the messages of the libraries: a missing session or locale does not matter for files.
void keepSilent(QtMsgType, const QMessageLogContext&, const QString&) {}

QString& folderOfKqx() {
    static QString folder;
    return folder;
}

/// A path that the desktop's libraries can open, for a file name of any bytes. It is valid as long as this object.
class ReadablePath {
public:
    explicit ReadablePath(const std::string& file) {
        const QByteArray bytes = QByteArray::fromStdString(file);
        m_path = QFile::decodeName(bytes);
        if (QFile::encodeName(m_path) != bytes) {
            m_file = Descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
            m_path = QStringLiteral("/proc/self/fd/%1").arg(m_file.number());
        }
    }

    [[nodiscard]] const QString& path() const { return m_path; }

private:
    QString m_path;
    Descriptor m_file; ///< of a name that is no text
};

} // namespace

ExitCode fail(ExitCode code, const QString& text) {
    return failWith(code, text.toStdString());
}

std::unique_ptr<publicM> defaultModel() {
    auto model = std::make_unique<publicM>();
    model->fillTables();
    applyDefaultColours(*model);
    return model;
}

QString kqxFolder() {
    return folderOfKqx();
}

QString kqxProgramFolder() {
    return programFolderOf(kqxFolder());
}

bool openCapture(const std::string& file, const Scope& scope, CaptureReader& reader, Answer& answer) {
    reader.read(file, answer);
    if (!reader.record.isCapture()) {
        return false;
    }
    SimpleWav(ReadablePath(file).path(), scope);
    return scope.model.FileKind != 0;
}

void deliver(const Task& task, const QByteArray& content, Existing existing, Answer& answer) {
    deliver(task, std::string_view(content.constData(), static_cast<std::size_t>(content.size())), existing, answer);
}

std::optional<ExitCode> parse(QCommandLineParser& parser, const QString& command, const QStringList& arguments,
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

namespace {

ExitCode run(int argc, char** argv) {
    const std::string_view name = argc > 1 ? argv[1] : "";
    const auto command = std::find_if(kDesktopCommands.begin(), kDesktopCommands.end(),
                                      [name](const Command& entry) { return entry.name == name; });
    if (command == kDesktopCommands.end()) {
        return failWith(WrongUse, "this program does a part of the commands of kqx; call that");
    }
    const std::vector<std::string> arguments(argv + 2, argv + argc);
    folderOfKqx() = QFileInfo(QFile::decodeName(argv[0])).absolutePath();
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES")) {
        qInstallMessageHandler(keepSilent);
    }
    const auto application = makeApplication(argc, argv, command->writes);
    QCoreApplication::setApplicationVersion(QStringLiteral(SIXTRACE_VERSION));
    return command->run(arguments);
}

} // namespace

} // namespace sixtrace::kqx

int main(int argc, char** argv) {
    using namespace sixtrace::kqx;
    return afterPrinting(run(argc, argv));
}
