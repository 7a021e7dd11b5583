// SPDX-License-Identifier: MIT
#include "output/privatequeue.h"

#include "support/strings.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace sixtrace::test {

namespace {

constexpr int kPatience = 30'000; // milliseconds

/// A port of the loopback interface on which no server listens at the moment.
quint16 freePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const bool bound = socket >= 0 && ::bind(socket, reinterpret_cast<sockaddr*>(&address), size) == 0 &&
                       ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    if (socket >= 0) {
        ::close(socket);
    }
    return bound ? ntohs(address.sin_port) : quint16{0};
}

/// The server is in a folder that the search path of ordinary users does not name.
QString systemProgram(const QString& name) {
    return QStandardPaths::findExecutable(name, {u"/usr/sbin"_s, u"/usr/bin"_s});
}

bool writeFile(const QString& path, const QString& content) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content.toUtf8()) > 0;
}

} // namespace

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(kPatience) && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                         : QByteArray();
}

PrivateQueue::~PrivateQueue() {
    if (m_server.state() != QProcess::NotRunning) {
        m_server.terminate();
        if (!m_server.waitForFinished(kPatience)) {
            m_server.kill();
            m_server.waitForFinished(kPatience);
        }
    }
}

bool PrivateQueue::run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(systemProgram(program), arguments);
    const bool done = process.waitForFinished(kPatience) && process.exitCode() == 0;
    if (!done) {
        error = program + u": "_s + QString::fromUtf8(process.readAll());
    }
    return done;
}

bool PrivateQueue::writeSettings() {
    // If root runs the server, its filters run as another user, who needs access to these folders.
    using Permission = QFileDevice::Permission;
    const QFileDevice::Permissions readable = Permission::ReadOwner | Permission::WriteOwner | Permission::ExeOwner |
                                              Permission::ReadGroup | Permission::ExeGroup | Permission::ReadOther |
                                              Permission::ExeOther;
    if (!m_folder.isValid() || !QFile::setPermissions(m_folder.path(), readable)) {
        return false;
    }
    for (const QString& name : {u"root"_s, u"spool"_s, u"cache"_s, u"state"_s, u"tmp"_s}) {
        if (!QDir(m_folder.path()).mkdir(name)) {
            return false;
        }
    }
    if (!QFile::setPermissions(m_folder.filePath(u"tmp"_s),
                               readable | Permission::WriteGroup | Permission::WriteOther)) {
        return false;
    }
    const QString files = u"ServerRoot %1/root\nRequestRoot %1/spool\nCacheDir %1/cache\n"
                          "StateDir %1/state\nTempDir %1/tmp\nAccessLog %1/access_log\n"
                          "ErrorLog %1/error_log\nPageLog %1/page_log\nFileDevice Yes\n"_s.arg(m_folder.path());
    const QString server = u"Listen 127.0.0.1:%1\nBrowsing Off\nWebInterface No\n"
                           "DefaultAuthType None\nLogLevel warn\n"
                           "<Location />\nOrder allow,deny\nAllow 127.0.0.1\n</Location>\n"
                           "<Location /admin>\nOrder allow,deny\nAllow 127.0.0.1\n</Location>\n"
                           "<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n"_s.arg(m_port);
    return writeFile(m_folder.filePath(u"cups-files.conf"_s), files) &&
           writeFile(m_folder.filePath(u"cupsd.conf"_s), server);
}

bool PrivateQueue::start() {
    m_port = freePort();
    if (m_port == 0 || !writeSettings()) {
        error = u"no port or no folder"_s;
        return false;
    }
    // The printing library of this program and the commands below read this variable.
    qputenv("CUPS_SERVER", QByteArray("127.0.0.1:") + QByteArray::number(m_port));
    m_server.setStandardOutputFile(QProcess::nullDevice());
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // The server ends when the test program crashes.
    m_server.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_server.start(systemProgram(u"cupsd"_s), {u"-f"_s, u"-c"_s, m_folder.filePath(u"cupsd.conf"_s), u"-s"_s,
                                               m_folder.filePath(u"cups-files.conf"_s)});
    if (!m_server.waitForStarted(kPatience)) {
        error = u"cupsd: "_s + m_server.errorString();
        return false;
    }
    QElapsedTimer clock;
    clock.start();
    while (!outputOf(u"lpstat"_s, {u"-r"_s}).contains("is running")) {
        if (clock.hasExpired(kPatience) || m_server.state() == QProcess::NotRunning) {
            error = u"the print server does not answer"_s;
            return false;
        }
        QThread::msleep(100);
    }
    return add(u"Test"_s, u"PageSize=A4"_s) && run(u"lpadmin"_s, {u"-d"_s, u"Test"_s});
}

bool PrivateQueue::add(const QString& name, const QString& option) {
    return run(u"lpadmin"_s,
               {u"-p"_s, name, u"-E"_s, u"-v"_s, u"file:"_s + jobFile(), u"-m"_s,
                u"lsb/usr/cupsfilters/Generic-PDF_Printer-PDF.ppd"_s, u"-o"_s, u"PageSize=A4"_s, u"-o"_s, option});
}

QByteArray PrivateQueue::waitForJob() {
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(kPatience)) {
        QFile file(jobFile());
        if (file.open(QIODevice::ReadOnly)) {
            // The queue puts the document between lines of the printer's job language.
            const QByteArray content = file.readAll();
            const QByteArray end("%%EOF");
            const qsizetype first = content.indexOf("%PDF");
            const qsizetype last = content.lastIndexOf(end);
            if (first >= 0 && last > first && content.trimmed().endsWith("%-12345X")) {
                return content.mid(first, last - first + end.size()) + '\n';
            }
        }
        QThread::msleep(100);
    }
    return {};
}

} // namespace sixtrace::test
