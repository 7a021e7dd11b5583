// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "platform/controls/positionbar.h"
#include "platform/controls/toolbar.h"
#include "support/openfiles.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(AutoGet, DisablesTheCommandsAndStopEnablesThemAndTheTimerStopsItself) {
    load();
    ToolBar& tools = *form->findChild<ToolBar*>(u"Toolbar1"_s);
    auto& bar = control<PositionBar>(*form, "VScroll1");
    item("mnuautoget").trigger();
    EXPECT_TRUE(model->AutoRun);
    EXPECT_TRUE(item("mnuautoget").isChecked());
    EXPECT_FALSE(item("mnustop").isChecked());
    for (const char* name : {"mnuAcquire", "mnuautoget", "mnuComSet"}) {
        EXPECT_FALSE(item(name).isEnabled()) << name;
    }
    for (const int button : {11, 12, 13}) {
        EXPECT_FALSE(tools.button(button).isEnabled()) << button;
    }
    EXPECT_TRUE(tools.button(14).isEnabled());
    EXPECT_FALSE(bar.isEnabled());
    EXPECT_TRUE(timer().isActive());
    EXPECT_EQ(timer().interval(), 1000);
    EXPECT_TRUE(link.calls.isEmpty()); // the first fetch comes with the first tick

    item("mnustop").trigger();
    EXPECT_FALSE(model->AutoRun);
    EXPECT_FALSE(item("mnuautoget").isChecked());
    EXPECT_TRUE(item("mnustop").isChecked());
    for (const char* name : {"mnuAcquire", "mnuautoget", "mnuComSet"}) {
        EXPECT_TRUE(item(name).isEnabled()) << name;
    }
    for (const int button : {11, 12, 13}) {
        EXPECT_TRUE(tools.button(button).isEnabled()) << button;
    }
    EXPECT_TRUE(bar.isEnabled());
    EXPECT_TRUE(timer().isActive());
    acquisition().Timetime1_Timer();
    EXPECT_FALSE(timer().isActive());
    EXPECT_TRUE(link.calls.isEmpty());
}

TEST_F(AutoGet, StopDuringAWaitWithoutLimitLeavesTheFetchWaitingUntilAByteComesAndASecondFetchDoesNotStart) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    bool itemsEnabled = false;
    bool stillReceiving = false;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            form.get(),
            [&] {
                item("mnustop").trigger();
                itemsEnabled = item("mnuAcquire").isEnabled();
                acquisition().Timetime1_Timer();
                // A manual get shows its form; cancelled without a Start it leaves the read alone.
                whenShown(window, [&] {
                    stillReceiving = acquisition().gate().held() && window.isVisible();
                    click(window, "CancelButton");
                });
                item("mnuAcquire").trigger();
            },
            Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(1);  // refused,
        p.take(10); // and then the cancel takes effect
    });
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    peer.finish();
    EXPECT_TRUE(itemsEnabled);
    EXPECT_TRUE(stillReceiving);
    EXPECT_EQ(model->ReceiveResult, -1);
    EXPECT_EQ(peer.transcript(), (std::vector<QByteArray>{PtyPeer::came("C"), PtyPeer::sent("x"),
                                                          PtyPeer::came("\x0F"
                                                                        "\x0F\x0F\x0F\x0F\x0F"
                                                                        "\x08\x08\x08\x08\x08")}));
}

TEST_F(AutoGet, AStartByHandEndsAFetchThatWaitsAfterStopAndThenBeginsItsOwn) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const QByteArray content = capture("square");
    QString ownFile;
    bool opensWithin = false;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("old.bin", "9000"));
        p.take(2); // the fetch now waits for its first data block, with its file open
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            form.get(),
            [&] {
                item("mnustop").trigger();
                whenShown(window, [&] {
                    ownFile = path("own.bin");
                    const QString old = model->ReceivedFile;
                    opensWithin = isOpenHere(old);
                    control<QLineEdit>(window, "Text2").setText(ownFile);
                    QTimer::singleShot(0, &window, [&, old] { EXPECT_FALSE(isOpenHere(old)); });
                    click(window, "Command2");
                });
                QTimer::singleShot(0, form.get(), [&] { item("mnuAcquire").trigger(); });
            },
            Qt::BlockingQueuedConnection);
        sendAll(p, content);
    });
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    peer.finish();
    EXPECT_TRUE(opensWithin);
    EXPECT_EQ(read(ownFile), content);
    EXPECT_EQ(path4(), ownFile) << "the get by hand has loaded its own file, and the ended fetch nothing";
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(model->ReceivedFile, ownFile);
    EXPECT_FALSE(acquisition().gate().held());
    EXPECT_FALSE(window.MSComm1().PortOpen());
    const std::vector<QByteArray> seen = peer.transcript();
    ASSERT_GE(seen.size(), 4U);
    EXPECT_EQ(seen[2], PtyPeer::came("\x06"
                                     "CC"))
        << "after the answer to the header only the new request comes";
    EXPECT_EQ(seen.back(), PtyPeer::came("\x06")) << "no byte of the ended fetch comes afterwards";
}

TEST_F(AutoGet, ATickIsDroppedWhileACancelledReadRunsOutItsTime) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    bool held = false;
    peer.play([&](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            form.get(),
            [&] {
                click(window, "CancelButton");
                held = acquisition().gate().held();
                item("mnuautoget").trigger();
                for (int tick = 0; tick < 3; ++tick) {
                    acquisition().Timetime1_Timer();
                }
                item("mnustop").trigger();
            },
            Qt::BlockingQueuedConnection);
        p.send("x"); // ends the read
        p.take(11);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_TRUE(held);
    EXPECT_FALSE(acquisition().gate().held());
    EXPECT_EQ(model->XferCancel, 1) << "no tick has taken the cancel back";
    EXPECT_EQ(peer.transcript(), (std::vector<QByteArray>{PtyPeer::came("C"), PtyPeer::sent("x"),
                                                          PtyPeer::came("\x0F"
                                                                        "\x0F\x0F\x0F\x0F\x0F"
                                                                        "\x08\x08\x08\x08\x08")}));
}

TEST_F(AutoGet, ATickIsDroppedWhileTheMessageOfAFailedFetchStands) {
    setIni("ComPort", "2"); // there is no such port
    load();
    item("mnuautoget").trigger();
    int open = 0;
    int deepest = 0;
    dialogs.whileMessageStands = [&] {
        deepest = std::max(deepest, ++open);
        if (open < 5) {
            acquisition().Timetime1_Timer();
        }
        --open;
    };
    acquisition().Timetime1_Timer();
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(dialogs.messages.size(), 1);
}

TEST_F(AutoGet, ABitmapIsLoadedLikeAnyFileAndNothingIsSaidAboutIt) {
    setIni("ComPort", "1");
    load();
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("")));
    peer.play([](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("picture.bmp", "3"));
        p.take(2);
        p.send(BlockSender::block(1, "BM!", 128, '\x1A'));
        p.take(1);
        p.send("\x04");
        p.take(2);
        p.send("\x01");
        p.take(1);
    });
    model->AutoRun = true;
    acquisition().Timetime1_Timer();
    peer.finish();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(model->ReceivedFile, u"picture.bmp"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(AutoGet, ACaptureThatCallsItselfABitmapIsLoadedOverBothLinks) {
    load();
    link.stream = ScriptedLink::transfer(capture("sine"), 1);
    model->AutoRun = true;
    acquisition().Timetime1_Timer();
    EXPECT_EQ(model->ReceivedFile, path("AutoGet.bin"));
    EXPECT_EQ(model->FileKind, 4) << "the content byte is not looked at";

    model->FileKind = 0;
    setIni("ComPort", "1");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path(""))); // where a bitmap of the serial line goes
    peer.play([](PtyPeer& p) { sendAll(p, capture("sine"), {}, "picture.bmp"); });
    acquisition().Timetime1_Timer();
    peer.finish();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(model->ReceivedFile, u"picture.bmp"_s);
    EXPECT_EQ(model->FileKind, 4) << "and neither is the name";
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(AutoGet, AFirstTickWhoseHeaderFailsLoadsNothingOfAnEarlierRun) {
    load();
    QFile earlier(path("AutoGet.bin"));
    ASSERT_TRUE(earlier.open(QIODevice::WriteOnly));
    earlier.write(capture("sine"));
    earlier.close();
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    EXPECT_EQ(model->ReceivedFile, QString()) << "it is set once the header has come";
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_FALSE(model->AutoRun);
}

TEST_F(AutoGet, TheEndingOfTheLastTransferStandsInTheToolTipOfThePath) {
    setIni("Language", "1");
    load();
    link.stream = ScriptedLink::transfer(capture("sine"));
    acquisition().mnuautoget_Click();
    acquisition().Timetime1_Timer();
    const auto tip = [this] { return control<QLabel>(*form, "Label4").toolTip(); };
    EXPECT_EQ(tip(), u"Last transfer: all %1 bytes came"_s.arg(capture("sine").size()));
    link.stream = ScriptedLink::transfer(QByteArray(200, 'd')).chopped(100);
    acquisition().Timetime1_Timer();
    EXPECT_EQ(tip(), u"Last transfer: the transfer broke off, as the instrument did not answer as it should; "
                     "100 of 200 bytes came"_s);
    EXPECT_EQ(path4(), QString()) << "what is shown stays as it is";
}

TEST_F(AutoGet, TheIntervalMenuChangesItsTicksAndNotTheTickRate) {
    load();
    const std::array<const char*, 4> names{"mnuone", "mnutwo", "mnuthree", "mnufive"};
    const std::array<int, 4> intervals{1000, 2000, 3000, 5000};
    for (std::size_t chosen = 0; chosen < names.size(); ++chosen) {
        item(names[chosen]).trigger();
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_EQ(item(names[i]).isChecked(), i == chosen);
        }
        EXPECT_EQ(acquisition().AutoGetInterval(), intervals[chosen]);
        EXPECT_EQ(timer().interval(), 1000);
    }
}

TEST_F(AutoGet, RunTicksItselfStartsNothingAndStaysTickedThroughStop) {
    load();
    item("mnurun").trigger();
    EXPECT_TRUE(item("mnurun").isChecked());
    EXPECT_FALSE(item("mnustop").isChecked());
    EXPECT_FALSE(model->AutoRun);
    EXPECT_FALSE(timer().isActive());
    item("mnustop").trigger();
    EXPECT_TRUE(item("mnurun").isChecked());
}

TEST_F(AutoGet, WhateverTheOutcomeTheFileOfTheFetchBeforeIsLoaded) {
    load();
    link.stream = ScriptedLink::transfer(capture("sine"));
    acquisition().mnuautoget_Click();
    acquisition().Timetime1_Timer();
    ASSERT_EQ(model->FileKind, 4);
    model->FileKind = 0;
    setIni("ComPort", "2"); // there is no such port
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages, QStringList{u"Device unavailable"_s});
    EXPECT_EQ(model->FileKind, 4);
}

} // namespace
} // namespace sixtrace::test
