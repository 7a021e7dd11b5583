// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "platform/positionbar.h"
#include "platform/toolbar.h"

using namespace sixtrace;

namespace {

/// Names of files below the program folder's `folder`.
QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files);
}

class AutoGet : public AcquireTest {
protected:
    [[nodiscard]] QTimer& timer() const { return acquisition().timer(); }
};

TEST_F(AutoGet, DisablesTheCommandsAndStopEnablesThemAndTheTimerStopsItself) {
    load();
    ToolBar& tools = *form->findChild<ToolBar*>(text("Toolbar1"));
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
    acquisition().Timetime1_Timer(); // nothing comes any more
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
    EXPECT_EQ(dialogs.messages, QStringList{text("Device unavailable")});
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
        p.pause(150);
        QMetaObject::invokeMethod(
            form.get(),
            [&] {
                item("mnustop").trigger();
                itemsEnabled = item("mnuAcquire").isEnabled();
                acquisition().Timetime1_Timer();
                // A manual get meets the open port and the read in progress: its Start does nothing.
                whenShown(window, [&] {
                    click(window, "Command2");
                    stillReceiving = window.receiving() && window.isVisible();
                    click(window, "CancelButton");
                });
                item("mnuAcquire").trigger();
            },
            Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(1);  // refused,
        p.take(10); // and then the cancel is seen
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
    setIni("ComPort", "2"); // a port that is not there
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages, QStringList{text("Device unavailable")});
    EXPECT_EQ(model->FileKind, 4);
}

TEST_F(AutoGet, TheReceiverAloneTakesPort1WhereTheSettingsNameNone) {
    load();
    EXPECT_EQ(readProfile(text("Common"), text("ComPort"), text("(none)"), path("vkq.ini")), text("(none)"));
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
