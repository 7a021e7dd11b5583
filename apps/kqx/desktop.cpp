// SPDX-License-Identifier: MIT
// The commands of kqx that need the desktop's libraries. kqx hands them on to this program.
#include "commands.h"

#include "capture/settings.h"
#include "platform/files/bytefile.h"
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
#include <unistd.h>

namespace sixtrace::kqx {

namespace {

enum class Writes { Text, Pages };

struct Command {
    std::string_view name;
    int (*run)(const std::vector<std::string>& arguments);
    Writes writes = Writes::Text;
};

/// The commands that take no file names need no bytes.
template<int (*run)(const QStringList&)>
int ofTexts(const std::vector<std::string>& arguments) {
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

/// Letters on a page come from the fonts of a platform that needs no display.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv, Writes writes) {
    if (writes == Writes::Text) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// Says nothing: a machine without a session or a locale is no concern of who converts a file.
void keepSilent(QtMsgType, const QMessageLogContext&, const QString&) {}

QString& folderOfKqx() {
    static QString folder;
    return folder;
}

/// A file that is kept open while the desktop's libraries read it, by a name that they can spell.
class Spelled {
public:
    explicit Spelled(const std::string& file) {
        const QByteArray bytes = QByteArray::fromStdString(file);
        m_path = QFile::decodeName(bytes);
        if (QFile::encodeName(m_path) != bytes) {
            m_descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
            m_path = QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
        }
    }
    Spelled(const Spelled&) = delete;
    Spelled& operator=(const Spelled&) = delete;
    ~Spelled() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
    }

    [[nodiscard]] const QString& path() const { return m_path; }

private:
    QString m_path;
    int m_descriptor = -1;
};

} // namespace

int fail(ExitCode code, const QString& text) {
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

bool openCapture(const std::string& file, const Scope& scope, OpenedFile& opened, Answer& answer) {
    readRecord(file, opened.file, opened.record);
    if (!opened.record.faults.empty()) {
        answer.err += faultLines(file, opened.record);
        answer.code = Failed;
    }
    if (!opened.record.isCapture()) {
        return false;
    }
    SimpleWav(Spelled(file).path(), scope);
    return scope.model.FileKind != 0;
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

namespace {

int run(int argc, char** argv) {
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
