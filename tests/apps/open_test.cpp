// SPDX-License-Identifier: MIT
// kqx open with a private session bus, on which the test has the name of the program.
#include "apps/program.h"

#include "support/strings.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>

#include <memory>

namespace sixtrace::test {
namespace {

/// Stands in for the program on the bus: records calls, and accepts or refuses them.
class StandIn : public QDBusVirtualObject {
public:
    QString refusal; ///< empty: every call is accepted
    QStringList calls;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        calls << message.member() + u' ' + message.arguments().value(0).toStringList().join(u',');
        return bus.send(refusal.isEmpty() ? message.createReply()
                                          : message.createErrorReply(u"org.sixtrace.Busy"_s, refusal));
    }
};

class KqxOpen : public ::testing::Test {
protected:
    void SetUp() override {
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        ASSERT_TRUE(m_daemon.waitForStarted()) << "dbus-daemon is not installed";
        while (!m_address.endsWith('\n')) {
            ASSERT_TRUE(m_daemon.waitForReadyRead());
            m_address += m_daemon.readAllStandardOutput();
        }
        m_address = m_address.trimmed();
        QDBusConnection bus = QDBusConnection::connectToBus(QString::fromLatin1(m_address), u"stand-in"_s);
        ASSERT_TRUE(bus.registerVirtualObject(u"/org/sixtrace/Sixtrace"_s, &program));
        ASSERT_TRUE(bus.registerService(u"org.sixtrace.Sixtrace"_s));
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(u"stand-in"_s);
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    /// Runs kqx open in a shell, which can pass any name, and answers its calls until it ends.
    [[nodiscard]] Ran open(const QString& arguments, const QString& programs = QStringLiteral(SIXTRACE_BIN)) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromLatin1(m_address));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder.path());
        process.start(u"sh"_s, {u"-c"_s, u"exec "_s + programs + u"/kqx open "_s + arguments});
        for (const QDeadlineTimer end(60000); process.state() != QProcess::NotRunning && !end.hasExpired();) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        }
        const bool ended = process.state() == QProcess::NotRunning && process.exitStatus() == QProcess::NormalExit;
        return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
    }
    void put(const QByteArray& name) const {
        const QByteArray path = m_folder.path().toUtf8().append('/').append(name);
        std::FILE* const file = std::fopen(path.constData(), "w");
        ASSERT_NE(file, nullptr);
        std::fclose(file);
    }
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString address(const QString& name) const { return u"file://"_s + m_folder.path() + u'/' + name; }

    StandIn program;

private:
    QProcess m_daemon;
    QByteArray m_address;
    QTemporaryDir m_folder;
};

TEST_F(KqxOpen, AFileThatTheProgramTakesEndsWith0) {
    put("six traces.bin");
    const Ran ran = open(u"'six traces.bin'"_s);
    EXPECT_EQ(ran.exitCode, 0) << ran.err.toStdString();
    EXPECT_EQ(program.calls, QStringList{u"Open "_s + address(u"six%20traces.bin"_s)});
    EXPECT_EQ(ran.err, QByteArray());
}

TEST_F(KqxOpen, AFileThatTheProgramRefusesEndsWith1AndItsSentence) {
    put("a.bin");
    program.refusal = u"a dialog is open"_s;
    const Ran ran = open(u"a.bin"_s);
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(ran.err, "kqx: a dialog is open\n");
}

TEST_F(KqxOpen, WithoutAFileTheProgramIsRaised) {
    EXPECT_EQ(open(QString()).exitCode, 0);
    EXPECT_EQ(program.calls, QStringList{u"Activate "_s});
}

TEST_F(KqxOpen, NamesAreHandedOnByteByByte) {
    put("-dash.bin");
    put("b\xFF%.bin");
    EXPECT_EQ(open(u"-- -dash.bin"_s).exitCode, 0);
    EXPECT_EQ(open(u"b*.bin"_s).exitCode, 0);
    EXPECT_EQ(program.calls,
              (QStringList{u"Open "_s + address(u"-dash.bin"_s), u"Open "_s + address(u"b%FF%25.bin"_s)}));
}

TEST_F(KqxOpen, AProgramThatCannotBeStartedIsTold) {
    QDBusConnection(u"stand-in"_s).unregisterService(u"org.sixtrace.Sixtrace"_s);
    // A folder with kqx and without the program.
    put("a.bin");
    for (const QString& name : {u"kqx"_s, u"kqx-desktop"_s}) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(SIXTRACE_BIN "/") + name, folder() + u'/' + name));
    }
    const Ran ran = open(u"a.bin"_s, folder());
    EXPECT_EQ(ran.exitCode, 1);
    EXPECT_EQ(ran.err, "kqx: sixtrace could not be started\n");
}

TEST_F(KqxOpen, WhatIsNoFileIsNotHandedOn) {
    EXPECT_EQ(open(u"gone.bin"_s).exitCode, 1);
    EXPECT_EQ(open(u"/"_s).exitCode, 1);
    EXPECT_TRUE(program.calls.isEmpty());
}

} // namespace
} // namespace sixtrace::test

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
