// SPDX-License-Identifier: MIT
#include "shell/desktopcalls.h"

#include "capture/scenes.h"
#include "platform/controls/ticklist.h"
#include "shell/frmcomfixture.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDialog>
#include <QLabel>
#include <QProcess>
#include <QTest>
#include <QUrl>

namespace sixtrace::test {
namespace {

const QString kId = QStringLiteral("org.sixtrace.Sixtrace");

/// A private session bus with the program on it and a desktop that calls the program.
class DesktopCallsOnABus : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        ASSERT_TRUE(m_daemon.waitForStarted()) << "dbus-daemon is not installed";
        while (!m_address.endsWith('\n')) {
            ASSERT_TRUE(m_daemon.waitForReadyRead());
            m_address += m_daemon.readAllStandardOutput();
        }
        write(QStringLiteral("six traces.bin"),
              captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("six"), 1)));
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }
    [[nodiscard]] QDBusConnection connection(const char* name) const {
        return QDBusConnection::connectToBus(QString::fromLatin1(m_address.trimmed()), QString::fromLatin1(name));
    }
    void reachWindow() {
        calls.reach({.raise = [this] { ++raised; },
                     .isBusy = [] { return QApplication::activeModalWidget() != nullptr; },
                     .open = [this](const QString& file) { form->openFromDesktop(file); }});
    }
    /// Whether the program answered the call without an error.
    bool call(const char* method, const QVariantList& arguments) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(kId, QStringLiteral("/org/sixtrace/Sixtrace"),
                                           QStringLiteral("org.freedesktop.Application"), QString::fromLatin1(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = connection("desktop").asyncCall(message);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }));
        return !pending.isError();
    }
    bool open(const QString& name) const {
        return call("Open", {QStringList{QUrl::fromLocalFile(path(name)).toString(QUrl::FullyEncoded)}, QVariantMap()});
    }
    [[nodiscard]] QString shown() const { return control<QLabel>("Label4").text(); }
    /// Whether the capture is opened after the call has been answered.
    [[nodiscard]] bool comes(const QString& name) const {
        return QTest::qWaitFor([&] { return shown() == path(name); }, kPatienceMs);
    }
    static constexpr int kPatienceMs = 120'000;

    DesktopCalls calls;
    int raised = 0;

private:
    QProcess m_daemon;
    QByteArray m_address;
};

TEST_F(DesktopCallsOnABus, ADoubleClickedCaptureOpensAsByTheOpenCommand) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    ASSERT_TRUE(open(QStringLiteral("six traces.bin")));
    EXPECT_TRUE(comes(QStringLiteral("six traces.bin")));
    EXPECT_TRUE(control<TickList>("List1").Selected(5));
    EXPECT_EQ(raised, 1);
}

TEST_F(DesktopCallsOnABus, ACallBeforeTheMainWindowStandsWaitsForIt) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    ASSERT_TRUE(open(QStringLiteral("six traces.bin")));
    load();
    EXPECT_EQ(shown(), QString());
    reachWindow();
    EXPECT_EQ(shown(), QString()) << "whoever shows the window is not held up";
    EXPECT_TRUE(comes(QStringLiteral("six traces.bin")));
}

TEST_F(DesktopCallsOnABus, TheCallIsAnsweredBeforeAnythingIsSaidAboutItsFile) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    QDBusMessage message =
        QDBusMessage::createMethodCall(kId, QStringLiteral("/org/sixtrace/Sixtrace"),
                                       QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
    message.setArguments(
        {QStringList{QUrl::fromLocalFile(path(QStringLiteral("missing.bin"))).toString()}, QVariantMap()});
    const QDBusPendingCall pending = connection("desktop").asyncCall(message);
    bool opened = false;
    calls.reach({.raise = {}, .isBusy = {}, .open = [&](const QString&) {
                     EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, kPatienceMs))
                         << "a message box is closed by the user, whenever he likes";
                     opened = true;
                 }});
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened; }, kPatienceMs));
    EXPECT_FALSE(pending.isError());
}

TEST_F(DesktopCallsOnABus, OfTwoCapturesThatWaitTheLaterOneOpens) {
    write(QStringLiteral("later.bin"), captureBytes(*captureForm("V11"), *sceneBlocks(QStringLiteral("sine"), 1)));
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    ASSERT_TRUE(open(QStringLiteral("six traces.bin")));
    ASSERT_TRUE(open(QStringLiteral("later.bin")));
    reachWindow();
    EXPECT_TRUE(comes(QStringLiteral("later.bin")));
}

TEST_F(DesktopCallsOnABus, ACaptureThatComesWhileADialogIsUpOpensWhenItHasGone) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    QDialog dialog(form.get());
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(open(QStringLiteral("six traces.bin")));
    QTest::qWait(300);
    EXPECT_EQ(shown(), QString());
    EXPECT_EQ(raised, 1);
    dialog.close();
    EXPECT_TRUE(comes(QStringLiteral("six traces.bin")));
}

TEST_F(DesktopCallsOnABus, AFileThatIsNotOnThisMachineIsLeftAlone) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    EXPECT_TRUE(
        call("Open", {QStringList{QStringLiteral("https://localhost/a.bin"), QStringLiteral("%%%")}, QVariantMap()}));
    EXPECT_TRUE(call("Open", {QStringList(), QVariantMap()}));
    EXPECT_EQ(shown(), QString());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(DesktopCallsOnABus, ActivatingBringsTheWindowToTheFront) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    EXPECT_TRUE(call("Activate", {QVariantMap()}));
    EXPECT_TRUE(call("ActivateAction", {QStringLiteral("any"), QVariantList(), QVariantMap()}));
    EXPECT_EQ(raised, 2);
}

TEST_F(DesktopCallsOnABus, ASecondCopyOfTheProgramRunsWithoutCalls) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    DesktopCalls second;
    EXPECT_FALSE(second.answerOn(connection("desktop")));
}

TEST(DesktopCallsWithoutABus, ThereAreNone) {
    DesktopCalls calls;
    EXPECT_FALSE(calls.answerOn(QDBusConnection(QStringLiteral("no such connection"))));
}

} // namespace
} // namespace sixtrace::test
