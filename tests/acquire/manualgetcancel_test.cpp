// SPDX-License-Identifier: MIT
// Cancel during a fetch by hand, and a start while another transfer runs.
#include "acquire/acquirefixture.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(ManualGet, ACancelInMidTransferOverUsbEndsQuietlyAndKeepsTheCapture) {
    load();
    link.stream = ScriptedLink::transfer(QByteArray(64 * 100, 'x'));
    FrmUSB& window = acquisition().usbWindow();
    link.onRead = [&](int read) {
        if (read == 20) {
            QTimer::singleShot(0, &window, [&window] { click(window, "CancelButton"); });
        }
    };
    whenShown(window, [&] { click(window, "Command4"); });
    item("mnuAcquire").trigger();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_TRUE(link.calls.contains(u"InitializeTt 1"_s));
}

TEST_F(ManualGet, ACancelInMidTransferOverSerialHidesAtOnceLowersTheTimeOutAndEndsWithTheTail) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    peer.play([&window](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "9000"));
        p.take(2);
        PtyPeer::untilItWaits(); // until the read of the first data block is under way
        QMetaObject::invokeMethod(
            &window,
            [&window] {
                const QPushButton& start = control<QPushButton>(window, "Command2");
                EXPECT_FALSE(start.isEnabled()) << "it stays out of reach while a transfer runs";
                click(window, "CancelButton");
                EXPECT_TRUE(start.isEnabled());
                EXPECT_TRUE(window.isLoaded());
            },
            Qt::BlockingQueuedConnection);
        p.send("x"); // ends the read that was under way when the button was pressed
        p.take(1);
        p.take(10);
    });
    bool hiddenBeforeTheEnd = false;
    whenShown(window, [&] {
        click(window, "Command2");
        hiddenBeforeTheEnd = !window.isVisible();
    });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_TRUE(hiddenBeforeTheEnd);
    EXPECT_EQ(window.ReadTimeoutMs(), 10);
    EXPECT_EQ(model->ReceiveResult, -1);
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_EQ(peer.transcript().back(), PtyPeer::came("\x0F"
                                                      "\x0F\x0F\x0F\x0F\x0F"
                                                      "\x08\x08\x08\x08\x08"));
}

TEST_F(ManualGet, ACancelWithoutAStartLeavesReadsWithoutATimeLimit) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    whenShown(window, [&] { click(window, "CancelButton"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(window.ReadTimeoutMs(), 0) << "Cancel lowers the time-out and never raises it";
    EXPECT_TRUE(window.isLoaded());
    EXPECT_EQ(model->XferCancel, 1);
}

TEST_F(ManualGet, TheFormComesUpAgainWhileACancelledReadRunsOutItsTime) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    bool cameUp = false;
    bool stayed = false;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            &window,
            [&] {
                click(window, "CancelButton");
                EXPECT_FALSE(window.isVisible());
                QTimer::singleShot(0, form.get(), [&] {
                    whenShown(window, [&] { cameUp = true; });
                    item("mnuAcquire").trigger();
                });
            },
            Qt::BlockingQueuedConnection);
        p.pause(100);
        p.send("x"); // ends the cancelled read
        p.pause(300);
        QMetaObject::invokeMethod(
            &window,
            [&] {
                stayed = window.isVisible() && control<QPushButton>(window, "Command2").isEnabled();
                click(window, "CancelButton");
            },
            Qt::BlockingQueuedConnection);
        p.take(11); // once the form is closed, the cancelled transfer ends
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_TRUE(cameUp);
    EXPECT_TRUE(stayed);
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(acquisition().gate().held());
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_EQ(peer.transcript().back(), PtyPeer::came("\x0F"
                                                      "\x0F\x0F\x0F\x0F\x0F"
                                                      "\x08\x08\x08\x08\x08"));
}

TEST_F(ManualGet, AStartEndsTheCancelledReadAndFetchesItsOwnFile) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const QByteArray content = capture("square");
    bool freed = false;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            &window,
            [&] {
                click(window, "CancelButton");
                QTimer::singleShot(0, form.get(), [&] {
                    whenShown(window, [&] {
                        control<QLineEdit>(window, "Text2").setText(path("own.bin"));
                        freed = acquisition().gate().held();
                        click(window, "Command2");
                    });
                    item("mnuAcquire").trigger();
                });
            },
            Qt::BlockingQueuedConnection);
        sendAll(p, content);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_TRUE(freed) << "the cancelled read was still under way";
    EXPECT_EQ(read(path("own.bin")), content);
    EXPECT_EQ(path4(), path("own.bin"));
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ReceiveResult, 0) << "the ended transfer has not written its own";
    EXPECT_EQ(window.ReadTimeoutMs(), 10000);
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_FALSE(window.isLoaded());
    const std::vector<QByteArray> seen = peer.transcript();
    EXPECT_EQ(seen.front(), PtyPeer::came("CC")) << "the request of each, and nothing of an abort";
    EXPECT_EQ(seen.back(), PtyPeer::came("\x06"));
}

TEST_F(ManualGet, AStartWhileAnotherTransferRunsDoesNothing) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const auto running = acquisition().gate().enter();
    whenShown(window, [&] {
        click(window, "Command2");
        EXPECT_TRUE(window.isVisible());
        EXPECT_FALSE(window.MSComm1().PortOpen());
        EXPECT_TRUE(control<QPushButton>(window, "Command2").isEnabled());
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    EXPECT_EQ(window.ReadTimeoutMs(), 0);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(ManualGet, TheTimeOutOfReadsOutlivesTheUnloadingOfTheForm) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    serve({capture("square")});
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    ASSERT_FALSE(window.isLoaded());
    window.load();
    EXPECT_EQ(window.ReadTimeoutMs(), 10000);
}

} // namespace
} // namespace sixtrace::test
