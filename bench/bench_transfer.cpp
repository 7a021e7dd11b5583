// SPDX-License-Identifier: MIT
// A capture of 120 KiB over a pseudo terminal that is not paced, program against program: the companion and the
// simulated instrument beside the pair of lrzsz (without it the run ends with an error). And the same capture over the
// local socket, beside a plain loop that reads it 64 bytes at a time.
#include "capture/scenes.h"
#include "platform/ports/ttlink.h"
#include "ratios.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <array>
#include <csignal>
#include <pty.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

using namespace sixtrace;

QByteArray capture() {
    return captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("full"), 1));
}

/// A folder with the capture, and an instrument that serves both links there.
class Instrument {
public:
    Instrument() {
        QFile file(path("capture.bin"));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(capture());
        }
        for (const char* name : {"libttdll.so", "ttdll.ini"}) {
            QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + QString::fromLatin1(name), path(name));
        }
        m_process.start(QStringLiteral(SIXTRACE_BIN "/sixtrace-instrument"),
                        {QStringLiteral("--serial"), path("line"), QStringLiteral("--usb"), path("instrument.socket"),
                         QStringLiteral("--rate"), QStringLiteral("0"), QStringLiteral("--scene"),
                         QStringLiteral("full"), QStringLiteral("--idle"), QStringLiteral("120")});
        while (!m_said.contains("USB link") && m_process.waitForReadyRead(10000)) {
            m_said += m_process.readAllStandardOutput();
        }
    }
    ~Instrument() {
        ::kill(static_cast<pid_t>(m_process.processId()), SIGTERM);
        m_process.waitForFinished();
    }
    Instrument(const Instrument&) = delete;
    Instrument& operator=(const Instrument&) = delete;

    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QString::fromLatin1(name)); }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QByteArray m_said;
};

Instrument& instrument() {
    static Instrument running;
    return running;
}

/// Starts a program with a descriptor as its standard input and output.
pid_t start(const std::vector<std::string>& command, int line, const QString& folder) {
    const pid_t child = fork();
    if (child == 0) {
        dup2(line, STDIN_FILENO);
        dup2(line, STDOUT_FILENO);
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (const std::string& word : command) {
            arguments.push_back(const_cast<char*>(word.c_str()));
        }
        arguments.push_back(nullptr);
        if (chdir(folder.toLocal8Bit().constData()) == 0) {
            execvp(arguments[0], arguments.data());
        }
        _exit(127);
    }
    return child;
}

void lrzszPair(benchmark::State& state) {
    if (QStandardPaths::findExecutable(QStringLiteral("sb")).isEmpty()) {
        state.SkipWithError("lrzsz is not installed");
        return;
    }
    const QString target = instrument().path("lrzsz");
    QDir().mkpath(target);
    for ([[maybe_unused]] auto _ : state) {
        int master = -1;
        int slave = -1;
        termios raw{};
        cfmakeraw(&raw);
        if (openpty(&master, &slave, nullptr, &raw, nullptr) != 0) {
            state.SkipWithError("no pseudo terminal");
            return;
        }
        const pid_t receiver = start({"rb", "-q", "-y"}, slave, target);
        const pid_t sender = start({"sb", "-k", "-q", instrument().path("capture.bin").toStdString()}, master, target);
        int status = 0;
        waitpid(receiver, &status, 0);
        // The receiver is gone with the whole file; the sender would wait for its answer to the last, empty name.
        kill(sender, SIGTERM);
        waitpid(sender, nullptr, 0);
        close(master);
        close(slave);
        if (status != 0 || QFile(target + QStringLiteral("/capture.bin")).size() != capture().size()) {
            state.SkipWithError("the pair failed");
            return;
        }
    }
}

void ownPair(benchmark::State& state) {
    const QString target = instrument().path("got.bin");
    for ([[maybe_unused]] auto _ : state) {
        const int code =
            QProcess::execute(QStringLiteral(SIXTRACE_BIN "/kqx"),
                              {QStringLiteral("fetch"), QStringLiteral("--serial"), instrument().path("line"),
                               QStringLiteral("--force"), QStringLiteral("-o"), target});
        if (code != 0 || QFile(target).size() != capture().size()) {
            state.SkipWithError("the transfer failed");
            return;
        }
    }
}

int connectedSocket(const QString& path) {
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::copy(name.cbegin(), name.cend(), address.sun_path);
    if (connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(handle);
        return -1;
    }
    return handle;
}

bool readAll(int handle, char* buffer, std::size_t size) {
    for (std::size_t done = 0; done < size;) {
        const ssize_t part = read(handle, buffer + done, size - done);
        if (part <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(part);
    }
    return true;
}

/// What the exchange cannot do without: connect, command, header, blocks of 64 bytes.
void plainSocket(benchmark::State& state) {
    std::vector<char> data(static_cast<std::size_t>(capture().size()));
    for ([[maybe_unused]] auto _ : state) {
        const int handle = connectedSocket(instrument().path("instrument.socket"));
        std::array<char, 12> header{};
        bool good = write(handle, "START", 5) == 5 && readAll(handle, header.data(), header.size());
        for (std::size_t at = 0; good && at < data.size(); at += 64) {
            good = readAll(handle, data.data() + at, std::min<std::size_t>(64, data.size() - at));
        }
        close(handle);
        if (!good) {
            state.SkipWithError("the socket failed");
            return;
        }
    }
}

void ownSocket(benchmark::State& state) {
    TtLibrary link(instrument().path(".") + QLatin1Char('/'));
    std::vector<char> data(static_cast<std::size_t>(capture().size()));
    for ([[maybe_unused]] auto _ : state) {
        std::array<char, 12> header{};
        bool good =
            link.InitializeTt(0) != 0 && link.WriteThread("START", 5) == 5 && link.ReadThread(header.data(), 12) == 12;
        for (std::size_t at = 0; good && at < data.size(); at += 64) {
            const auto count = static_cast<std::int32_t>(std::min<std::size_t>(64, data.size() - at));
            good = link.ReadThread(data.data() + at, count) == count;
        }
        link.closeTt(0);
        if (!good) {
            state.SkipWithError("the link failed");
            return;
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::RegisterBenchmark("serial_own_pair", ownPair)->Iterations(1)->UseRealTime();
    benchmark::RegisterBenchmark("serial_lrzsz_pair", lrzszPair)->Iterations(1)->UseRealTime();
    benchmark::RegisterBenchmark("socket_own", ownSocket)->UseRealTime();
    benchmark::RegisterBenchmark("socket_plain_loop", plainSocket)->UseRealTime();
    return sixtrace::bench::runAndCompare(
        argc, argv,
        {{"serial transfer / lrzsz", "serial_own_pair", "serial_lrzsz_pair", 1.5},
         {"socket transfer / plain 64-byte reads", "socket_own", "socket_plain_loop", 2.0}});
}
