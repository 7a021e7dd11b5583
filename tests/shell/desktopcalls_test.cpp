// SPDX-License-Identifier: MIT
#include "shell/desktopcalls.h"

#include "capture/scenes.h"
#include "platform/controls/ticklist.h"
#include "shell/frmcomfixture.h"
#include "support/strings.h"

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

const QString kId = u"org.sixtrace.Sixtrace"_s;

/// A private session bus with the program on it and a desktop that calls the program.
class DesktopCallsOnABus : public FrmComTest {
protected:
    void SetUp() override {
        FrmComTest::SetUp();
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        ASSERT_TRUE(m_daemon.waitForStarted()) << "dbus-daemon is not installed";
        while (!m_address.endsWith('\n')) {
            ASSERT_TRUE(m_daemon.waitForReadyRead());
            m_address += m_daemon.readAllStandardOutput();
        }
        write(u"six traces.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"six"_s, 1)));
    }
    void TearDown() override {
        QDBusConnection::disconnectFromBus(u"program"_s);
        QDBusConnection::disconnectFromBus(u"desktop"_s);
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
        QDBusMessage message = QDBusMessage::createMethodCall(
            kId, u"/org/sixtrace/Sixtrace"_s, u"org.freedesktop.Application"_s, QString::fromLatin1(method));
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
    ASSERT_TRUE(open(u"six traces.bin"_s));
    EXPECT_TRUE(comes(u"six traces.bin"_s));
    EXPECT_TRUE(control<TickList>("List1").Selected(5));
    EXPECT_EQ(raised, 1);
}

TEST_F(DesktopCallsOnABus, ACallBeforeTheMainWindowStandsWaitsForIt) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    ASSERT_TRUE(open(u"six traces.bin"_s));
    load();
    EXPECT_EQ(shown(), QString());
    reachWindow();
    EXPECT_EQ(shown(), QString()) << "whoever shows the window is not held up";
    EXPECT_TRUE(comes(u"six traces.bin"_s));
}

TEST_F(DesktopCallsOnABus, TheCallIsAnsweredBeforeAnythingIsSaidAboutItsFile) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    QDBusMessage message =
        QDBusMessage::createMethodCall(kId, u"/org/sixtrace/Sixtrace"_s, u"org.freedesktop.Application"_s, u"Open"_s);
    message.setArguments({QStringList{QUrl::fromLocalFile(path(u"missing.bin"_s)).toString()}, QVariantMap()});
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
    write(u"later.bin"_s, captureBytes(*captureForm("V11"), *sceneBlocks(u"sine"_s, 1)));
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    ASSERT_TRUE(open(u"six traces.bin"_s));
    ASSERT_TRUE(open(u"later.bin"_s));
    reachWindow();
    EXPECT_TRUE(comes(u"later.bin"_s));
}

TEST_F(DesktopCallsOnABus, ACaptureThatComesWhileADialogIsUpOpensWhenItHasGone) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    QDialog dialog(form.get());
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(open(u"six traces.bin"_s));
    QTest::qWait(300);
    EXPECT_EQ(shown(), QString());
    EXPECT_EQ(raised, 1);
    dialog.close();
    EXPECT_TRUE(comes(u"six traces.bin"_s));
}

TEST_F(DesktopCallsOnABus, AFileThatIsNotOnThisMachineIsLeftAlone) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    EXPECT_TRUE(call("Open", {QStringList{u"https://localhost/a.bin"_s, u"%%%"_s}, QVariantMap()}));
    EXPECT_TRUE(call("Open", {QStringList(), QVariantMap()}));
    EXPECT_EQ(shown(), QString());
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(DesktopCallsOnABus, ActivatingBringsTheWindowToTheFront) {
    load();
    ASSERT_TRUE(calls.answerOn(connection("program")));
    reachWindow();
    EXPECT_TRUE(call("Activate", {QVariantMap()}));
    EXPECT_TRUE(call("ActivateAction", {u"any"_s, QVariantList(), QVariantMap()}));
    EXPECT_EQ(raised, 2);
}

TEST_F(DesktopCallsOnABus, ASecondCopyOfTheProgramRunsWithoutCalls) {
    ASSERT_TRUE(calls.answerOn(connection("program")));
    DesktopCalls second;
    EXPECT_FALSE(second.answerOn(connection("desktop")));
}

TEST(DesktopCallsWithoutABus, ThereAreNone) {
    DesktopCalls calls;
    EXPECT_FALSE(calls.answerOn(QDBusConnection(u"no such connection"_s)));
}

} // namespace
} // namespace sixtrace::test
