// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "platform/controls/positionbar.h"
#include "platform/controls/toolbar.h"
#include "support/openfiles.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class AutoGet : public AcquireTest {
protected:
    [[nodiscard]] QTimer& timer() const { return acquisition().timer(); }
};

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

TEST_F(AutoGet, OverUsbFetchesTwentyCapturesIntoTheFixedFileUntilStop) {
    load();
    item("mnuautoget").trigger();
    for (std::uint32_t i = 0; i < 20; ++i) {
        const QByteArray content = capture("noise", i + 1);
        link.stream = ScriptedLink::transfer(content);
        acquisition().Timetime1_Timer();
        ASSERT_EQ(read(path("AutoGet.bin")), content + '\0') << i;
        EXPECT_EQ(model->ReceivedFile, path("AutoGet.bin"));
        EXPECT_EQ(model->FileKind, 4);
        EXPECT_EQ(path4(), QString()); // the path is not shown in timed acquisition
    }
    item("mnustop").trigger();
    acquisition().Timetime1_Timer();
    EXPECT_FALSE(timer().isActive());

    // A manual get over USB then overwrites the path with the dialog's own.
    link.stream = ScriptedLink::transfer(capture("sine"));
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] { click(window, "Command4"); });
    item("mnuAcquire").trigger();
    EXPECT_TRUE(model->ReceivedFile.startsWith(path("data/D")));
}

TEST_F(AutoGet, OverUsbNoEventRunsDuringTheExchange) {
    load();
    item("mnuautoget").trigger();
    link.stream = ScriptedLink::transfer(QByteArray(64 * 10, 'x'));
    int events = 0;
    int reads = 0;
    link.onRead = [&](int) {
        ++reads;
        QTimer::singleShot(0, form.get(), [&events] { ++events; });
        EXPECT_EQ(events, 0);
    };
    acquisition().Timetime1_Timer();
    EXPECT_EQ(reads, 12); // header, ten blocks, and the read of the rest
}

TEST_F(AutoGet, AUsbFailureIsToldAndStopsTheTimedFetches) {
    load();
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_FALSE(model->AutoRun);
    EXPECT_TRUE(item("mnuAcquire").isEnabled());
}

TEST_F(AutoGet, AfterAUsbFailureTheFileOfTheFetchBeforeIsLoadedToo) {
    load();
    item("mnuautoget").trigger();
    link.stream = ScriptedLink::transfer(capture("sine"));
    acquisition().Timetime1_Timer();
    ASSERT_EQ(model->FileKind, 4);
    model->FileKind = 0;
    acquisition().Timetime1_Timer(); // the instrument sends nothing more
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_EQ(model->FileKind, 4);
}

TEST_F(AutoGet, OverSerialEveryFetchWritesTheSameFileAndThePortIsClosedAfterEach) {
    setIni("ComPort", "1");
    load();
    serve({capture("noise", 1), capture("noise", 2), capture("noise", 3)});
    item("mnuautoget").trigger();
    for (int i = 1; i <= 3; ++i) {
        acquisition().Timetime1_Timer();
        EXPECT_EQ(read(model->ReceivedFile), capture("noise", static_cast<std::uint32_t>(i)));
        EXPECT_FALSE(acquisition().receiver().MSComm1().PortOpen());
        EXPECT_TRUE(acquisition().receiver().isLoaded());
    }
    peer.finish();
    EXPECT_EQ(namesIn(path("dat")).size(), 1);
    EXPECT_EQ(acquisition().receiver().ReadTimeoutMs(), 0); // no read has a time limit until a Start by hand
    EXPECT_GT(model->ReceiveResult, 0);
    EXPECT_TRUE(model->AutoRun);
}

TEST_F(AutoGet, ASerialFailureIsToldAndDoesNotEndTheTimedFetches) {
    setIni("ComPort", "2");
    load();
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages, QStringList{u"Device unavailable"_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
    EXPECT_TRUE(model->AutoRun);
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

class UsbByItself : public AutoGet {
protected:
    void tick() {
        setIni("Language", "1");
        load();
        item("mnuautoget").trigger();
        acquisition().Timetime1_Timer();
    }
};

TEST_F(UsbByItself, TheResultOfTheOpenIsNotTestedAndTheContentByteNotLookedAt) {
    link.stream = ScriptedLink::transfer("BM", 1);
    tick();
    EXPECT_EQ(read(path("AutoGet.bin")), QByteArray("BM\0", 3));
    EXPECT_EQ(model->ReceivedFile, path("AutoGet.bin"));
    EXPECT_EQ(model->ReceiveResult, 1);
    EXPECT_EQ(link.calls.last(), u"closeTt 0"_s);
    EXPECT_TRUE(dialogs.messages.isEmpty());

    link.opens = false;
    link.calls.clear();
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_EQ(link.calls, (QStringList{u"InitializeTt 0"_s, u"WriteThread START"_s, u"closeTt 1"_s}));
}

TEST_F(UsbByItself, AFailureIsToldAndClosesTheLink) {
    link.stream = ScriptedLink::transfer(QByteArray(200, 'c'));
    link.failingRead = 1;
    tick();
    EXPECT_EQ(dialogs.messages,
              QStringList{u"The data received is error.Check the USB cable then restart to receive."_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_EQ(link.calls.last(), u"closeTt 1"_s);
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(read(path("AutoGet.bin")), "");
}

TEST_F(UsbByItself, AnOverflowOfTheLengthIsShownWithItsNumber) {
    link.stream = ScriptedLink::transfer({});
    link.stream[2] = '\xFF';
    tick();
    EXPECT_EQ(dialogs.messages, QStringList{u"错误代码:6    Overflow"_s});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Plain);
    EXPECT_EQ(link.calls.last(), u"closeTt 1"_s);
    EXPECT_FALSE(model->AutoRun);
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

TEST_F(AutoGet, AComPortChangedBetweenTwoFetchesTakesEffectAtTheNext) {
    load();
    item("mnuautoget").trigger();
    link.stream = ScriptedLink::transfer(capture("sine"));
    acquisition().Timetime1_Timer();
    EXPECT_EQ(model->ReceivedFile, path("AutoGet.bin"));
    setIni("ComPort", "1");
    serve({capture("square")});
    acquisition().Timetime1_Timer();
    peer.finish();
    EXPECT_TRUE(model->ReceivedFile.startsWith(path("dat/D")));
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

TEST_F(AutoGet, TheReceiverAloneTakesPort1WhereTheSettingsNameNone) {
    load();
    EXPECT_EQ(readProfile(u"Common"_s, u"ComPort"_s, u"(none)"_s, path("vkq.ini")), u"(none)"_s);
    recFrm& receiver = acquisition().receiver();
    ASSERT_TRUE(receiver.OpenCom().ok());
    EXPECT_EQ(model->ComPort, 1);
    EXPECT_EQ(receiver.MSComm1().CommPort(), 3) << "the first port found";
    EXPECT_TRUE(receiver.MSComm1().PortOpen());
    ASSERT_TRUE(receiver.OpenCom().ok());
    EXPECT_FALSE(receiver.MSComm1().PortOpen()) << "an open port is closed";
}

TEST_F(AutoGet, TheLineAlwaysRunsAt115200EightBitsWithoutParityWhateverTheSettingsSay) {
    setIni("ComPort", "1");
    setIni("MSCommSettings", "9600,E,7,2");
    load();
    ASSERT_TRUE(acquisition().receiver().OpenCom().ok());
    const termios line = peer.settings();
    EXPECT_EQ(cfgetospeed(&line), static_cast<speed_t>(B115200));
    EXPECT_EQ(cfgetispeed(&line), static_cast<speed_t>(B115200));
    EXPECT_EQ(line.c_cflag & static_cast<tcflag_t>(CSIZE), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(line.c_cflag & static_cast<tcflag_t>(PARENB | CSTOPB), 0U);
}

TEST_F(AutoGet, AStoredPortOutsideTheTableIsASubscriptError) {
    setIni("ComPort", "18");
    load();
    const Outcome opened = acquisition().receiver().OpenCom();
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().number, ErrorNumber::SubscriptOutOfRange);
}

} // namespace
} // namespace sixtrace::test
