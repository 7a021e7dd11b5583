// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "platform/listcombo.h"
#include "platform/positionbar.h"
#include "platform/toolbar.h"
#include "shell/frmmessageout.h"

#include <QRegularExpression>

using namespace sixtrace;

namespace {

/// Names of files below the program folder's `folder`.
QStringList namesIn(const QString& folder) { return QDir(folder).entryList(QDir::Files); }

class ManualGet : public AcquireTest {};

TEST_F(ManualGet, OverUsbShowsTheDialogFetchesAndLoadsTheCapture) {
    load();
    link.stream = ScriptedLink::transfer(capture("six"));
    FrmUSB& window = acquisition().usbWindow();
    QString shownName;
    whenShown(window, [&] {
        EXPECT_TRUE(window.isModal());
        shownName = control<QLineEdit>(window, "Text1").text();
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("data/") + shownName);
        click(window, "Command4");
    });
    item("mnuAcquire").trigger();
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(QRegularExpression(text("^D\\d{10}\\.bin$")).match(shownName).hasMatch());
    EXPECT_EQ(read(path("data/") + shownName), capture("six") + '\0');
    EXPECT_EQ(path4(), path("data/") + shownName);
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ChannelPresent[0], 1);
    EXPECT_EQ(model->ReceiveResult, 0);
    EXPECT_EQ(control<QLineEdit>(window, "Text6").text().toInt(), capture("six").size());
}

TEST_F(ManualGet, OverSerialShowsTheOtherDialogFetchesAndLoadsTheCapture) {
    setIni("ComPort", "1");
    load();
    serve({capture("square")});
    recFrm& window = acquisition().receiver();
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(window.isLoaded());
    EXPECT_FALSE(window.MSComm1().PortOpen());
    const QStringList files = namesIn(path("dat"));
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(read(path("dat/") + files.front()), capture("square"));
    EXPECT_EQ(path4(), path("dat/") + files.front());
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), text("WAVE.bin"));
    EXPECT_EQ(window.ReadTimeoutMs(), 10000);
}

TEST_F(ManualGet, ABitmapIsToldAndTheCaptureOnTheScreenStays) {
    load();
    link.stream = ScriptedLink::transfer("BM", 1);
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] { click(window, "Command4"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(dialogs.messages,
              QStringList{text("Receive file is Bmp file ,please use other software open it !")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Information);
    EXPECT_EQ(model->FileKind, 0);
    EXPECT_EQ(path4(), QString());
}

TEST_F(ManualGet, AFailureOverUsbKeepsTheDialogForAnotherTry) {
    load();
    const QByteArray content = capture("sine");
    link.stream = ScriptedLink::transfer(content);
    link.failingRead = 3;
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] {
        click(window, "Command4");
        EXPECT_TRUE(window.isVisible());
        EXPECT_EQ(dialogs.messages.size(), 1);
        link.failingRead = -1;
        link.stream = ScriptedLink::transfer(content);
        click(window, "Command4");
    });
    item("mnuAcquire").trigger();
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ChannelPresent[0], 1);
}

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
    EXPECT_TRUE(link.calls.contains(text("InitializeTt 1")));
}

TEST_F(ManualGet, ACancelInMidTransferOverSerialHidesAtOnceLowersTheTimeOutAndEndsWithTheTail) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    peer.play([&window](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::block(0, QByteArray("w.bin\0" "9000\0", 11), 128, '\0'));
        p.take(2);
        p.pause(150); // until the read of the first data block is under way
        QMetaObject::invokeMethod(&window, [&window] { click(window, "CancelButton"); }, Qt::BlockingQueuedConnection);
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
    EXPECT_EQ(peer.transcript().back(), PtyPeer::came("\x0F" "\x0F\x0F\x0F\x0F\x0F" "\x08\x08\x08\x08\x08"));
}

TEST_F(ManualGet, APortThatDoesNotOpenIsToldAndTheDialogStays) {
    setIni("ComPort", "2");
    load();
    recFrm& window = acquisition().receiver();
    bool stayed = false;
    whenShown(window, [&] {
        click(window, "Command2");
        stayed = window.isVisible();
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    EXPECT_TRUE(stayed);
    EXPECT_EQ(dialogs.messages, QStringList{text("Device unavailable")});
}

TEST_F(ManualGet, TheWindowsFollowTheLanguageWhenTheyAreLoaded) {
    for (const auto& [language, browse, start] :
         {std::tuple("0", "浏览...", "开始"), std::tuple("1", "Browse...", "Start")}) {
        setIni("Language", language);
        setIni("ComPort", "1");
        load();
        recFrm& window = acquisition().receiver();
        whenShown(window, [&, browseText = browse, startText = start] {
            EXPECT_EQ(control<QPushButton>(window, "Command1").text(), text(browseText));
            EXPECT_EQ(control<QPushButton>(window, "Command2").text(), text(startText));
            window.close();
        });
        item("mnuAcquire").trigger();
    }
}

TEST_F(ManualGet, WithoutLanguageFilesTheWindowsKeepTheCaptionsOfTheirDesign) {
    removeLanguages();
    load();
    const auto captions = [](QWidget& window, const QStringList& names) {
        QStringList found;
        for (const QString& name : names) {
            if (const auto* label = window.findChild<QLabel*>(name)) {
                found << label->text();
            } else {
                found << control<QPushButton>(window, qPrintable(name)).text();
            }
        }
        return found;
    };
    recFrm& serial = acquisition().receiver();
    serial.load();
    EXPECT_EQ(serial.windowTitle(), text("正在接收数据"));
    EXPECT_EQ(captions(serial, {text("Label1"), text("Label2"), text("Command1"), text("Label3"), text("Label5"),
                                text("Label4"), text("Command2"), text("CancelButton")}),
              (QStringList{text("正在接收文件："), text("存储为："), text("浏览..."), text("数据包："), text("重试次数"),
                           text("传输进度："), text("开始"), text("Cancel")}));
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        EXPECT_EQ(usb.windowTitle(), text("USB Transmission "));
        EXPECT_EQ(captions(usb, {text("Label1"), text("Label2"), text("Command1"), text("Label4"), text("Command4"),
                                 text("CancelButton")}),
                  (QStringList{text("正在接收文件："), text("存储为："), text("浏览..."), text("传输进度："), text("开 始"),
                               text("Cancel")}));
        click(usb, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, BrowsingTakesAnExistingFileOnlyWhenTheUserAgrees) {
    load();
    FrmUSB& window = acquisition().usbWindow();
    const QString chosen = path("vkq.ini");
    whenShown(window, [&] {
        const QString before = control<QLineEdit>(window, "Text2").text();
        dialogs.files = {FileChoice{chosen, 1}, std::nullopt, FileChoice{path("new.bin"), 1}};
        click(window, "Command1"); // the file exists, and the scripted answer is No
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        EXPECT_EQ(dialogs.messages, QStringList{text("File Exist!  Do you want to continue ?")});
        EXPECT_EQ(dialogs.fileRequests.front().filter, text("bin (*.bin)|*.bin"));
        click(window, "Command1"); // cancelled
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        click(window, "Command1");
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("new.bin"));
        EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), text("new.bin"));
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    EXPECT_EQ(window.LastSaveDir(), QFileInfo(chosen).path());
}

TEST_F(ManualGet, TheUsbDialogStartsInTheFolderChosenLast) {
    load();
    ASSERT_TRUE(QDir().mkpath(path("mine")));
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] {
        dialogs.files = {FileChoice{path("mine/a.bin"), 1}};
        click(window, "Command1");
        EXPECT_EQ(dialogs.fileRequests.back().initialFolder, path("data"));
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    whenShown(window, [&] {
        const QString name = control<QLineEdit>(window, "Text1").text();
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("mine/") + name);
        click(window, "Command1");
        EXPECT_EQ(dialogs.fileRequests.back().initialFolder, path("mine"));
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, BrowsingForASerialFileSetsThePathOnlyWithTheUsersConsent) {
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const QString existing = path("vkq.ini");
    whenShown(window, [&] {
        const QLineEdit& field = control<QLineEdit>(window, "Text2");
        const QString before = field.text();
        dialogs.files = {std::nullopt, FileChoice{existing, 1}, FileChoice{existing, 1}, FileChoice{path("new.bin"), 1}};
        dialogs.answers = {Answer::No, Answer::Yes};
        click(window, "Command1"); // cancelled
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(dialogs.fileRequests.front().fileName, before);
        EXPECT_EQ(dialogs.fileRequests.front().filter, text("bin (*.bin)|*.bin"));
        click(window, "Command1"); // answered with No
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(model->ReceivedFile, existing);
        EXPECT_EQ(dialogs.messages, QStringList{text("File Exist!  Do you want to continue ?")});
        EXPECT_EQ(dialogs.titles, QStringList{text("Message")});
        EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
        click(window, "Command1"); // answered with Yes
        EXPECT_EQ(field.text(), existing);
        click(window, "Command1"); // nothing to ask
        EXPECT_EQ(field.text(), path("new.bin"));
        EXPECT_EQ(dialogs.messages.size(), 2);
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, TheEndOfASerialTransferIsWrittenToTheMessageWindowWhichStaysOutOfSight) {
    setIni("ComPort", "1");
    load();
    const auto told = [this] { return form->messageOut().Label1().text(); };
    recFrm& window = acquisition().receiver();
    serve({capture("square")});
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(told(), text("接收成功!"));

    peer.play([](PtyPeer& p) { // an end at once: no data, no success
        p.take(1);
        p.send("\x04");
        p.take(2);
        p.send("\x01");
        p.take(1);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(told(), text("接收失败!"));

    peer.play([&window](PtyPeer& p) {
        p.take(1);
        QMetaObject::invokeMethod(&window, [&window] { click(window, "CancelButton"); }, Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(11);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(told(), text("用户中断"));
    EXPECT_FALSE(form->messageOut().isVisible());
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(ManualGet, AResultThatTimedFetchesLeftIsTakenUpByTheSerialWindowAndNotByTheUsbOne) {
    setIni("ComPort", "1");
    load();
    const QString fetched = path("fetched.bin");
    QFile file(fetched);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(capture("sine"));
    file.close();
    model->ReceivedFile = fetched;
    model->ReceiveResult = 1024;
    recFrm& window = acquisition().receiver();
    whenShown(window, [&] { click(window, "CancelButton"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(path4(), fetched);
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ReceiveResult, 0);

    setIni("ComPort", "0");
    model->FileKind = 0;
    model->ReceiveResult = 1024;
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] { click(usb, "CancelButton"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(model->FileKind, 0);
}

TEST_F(ManualGet, AGetThatBroughtNothingLoadsNothing) {
    setIni("ComPort", "1");
    load();
    model->ReceiveResult = 0;
    model->ReceivedFile = path("older.bin");
    recFrm& window = acquisition().receiver();
    whenShown(window, [&] { click(window, "CancelButton"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(path4(), QString());
    EXPECT_FALSE(QFile::exists(path("older.bin")));
}

class AutoGet : public AcquireTest {
protected:
    [[nodiscard]] QTimer& timer() const { return acquisition().timer(); }
};

TEST_F(AutoGet, DisablesTheCommandsAndStopEnablesThemAndTheTimerStopsItself) {
    load();
    ToolBar& tools = *form->findChild<ToolBar*>(text("Toolbar1"));
    PositionBar& bar = control<PositionBar>(*form, "VScroll1");
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

TEST_F(AutoGet, AUsbFailureIsToldAndStopsTheTimedFetches) {
    load();
    item("mnuautoget").trigger();
    acquisition().Timetime1_Timer();
    EXPECT_EQ(dialogs.messages.size(), 1);
    EXPECT_FALSE(model->AutoRun);
    EXPECT_TRUE(item("mnuAcquire").isEnabled());
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
    EXPECT_EQ(peer.transcript(),
              (std::vector<QByteArray>{PtyPeer::came("C"), PtyPeer::sent("x"),
                                       PtyPeer::came("\x0F" "\x0F\x0F\x0F\x0F\x0F" "\x08\x08\x08\x08\x08")}));
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

class PortSettings : public AcquireTest {
protected:
    /// Opens the settings and works on them.
    void show(std::function<void(frmComSet&)> work) {
        QTimer::singleShot(30, form.get(), [work] {
            auto* window = dynamic_cast<frmComSet*>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            work(*window);
            window->hide();
        });
        item("mnuComSet").trigger();
    }
    [[nodiscard]] QString stored(const char* key) const {
        return readProfile(text("Common"), text(key), text("(none)"), path("vkq.ini"));
    }
};

TEST_F(PortSettings, ListUsbAndThePortsFoundAndAlwaysOpenOnTheLineDefaults) {
    setIni("MSCommSettings", "9600,O,7,2");
    setIni("ComPort", "1");
    load();
    show([](frmComSet& window) {
        const ListCombo& ports = control<ListCombo>(window, "Combo1");
        EXPECT_EQ(ports.ListCount(), 2);
        EXPECT_EQ(ports.List(0), text("USB"));
        EXPECT_EQ(ports.List(1), text("COM3"));
        EXPECT_EQ(ports.ListIndex(), 1);
        EXPECT_TRUE(control<QWidget>(window, "Frame1").isEnabled());
        EXPECT_EQ(control<ListCombo>(window, "Combo2").Text(), text("115200"));
        EXPECT_EQ(control<ListCombo>(window, "Combo3").Text(), text("8"));
        EXPECT_EQ(control<ListCombo>(window, "Combo4").Text(), text("无"));
        EXPECT_EQ(control<ListCombo>(window, "Combo5").Text(), text("1"));
    });
    EXPECT_EQ(model->ComSetText, text("9600,O,7,2"));
}

TEST_F(PortSettings, HasItsListsAndTheCaptionsOfItsDesignWhereNoLanguageFileSaysOtherwise) {
    removeLanguages();
    load();
    show([](frmComSet& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.windowTitle(), text("端口设置"));
        const auto entries = [&window](const char* name) {
            const ListCombo& list = control<ListCombo>(window, name);
            QStringList found;
            for (int i = 0; i < list.ListCount(); ++i) {
                found << list.List(i);
            }
            return found;
        };
        EXPECT_EQ(entries("Combo2"), (QStringList{text("9600"), text("19200"), text("38400"), text("57600"), text("115200")}));
        EXPECT_EQ(entries("Combo3"), (QStringList{text("5"), text("6"), text("7"), text("8")}));
        EXPECT_EQ(entries("Combo4"), (QStringList{text("奇"), text("偶"), text("无")}));
        EXPECT_EQ(entries("Combo5"), (QStringList{text("1"), text("2")}));
        const std::array<std::pair<const char*, const char*>, 5> labels{{{"Label1", "选择通讯口："},
                                                                         {"Label2", "数据位(D):"},
                                                                         {"Label3", "奇偶校验(P):"},
                                                                         {"Label4", "每秒位数(B):"},
                                                                         {"Label5", "停止位(S):"}}};
        for (const auto& [name, caption] : labels) {
            EXPECT_EQ(control<QLabel>(window, name).text(), text(caption)) << name;
        }
        EXPECT_EQ(control<QPushButton>(window, "CmdSet").text(), text("确定"));
        EXPECT_EQ(control<QPushButton>(window, "CmdCancel").text(), text("取消"));
        EXPECT_EQ(control<QPushButton>(window, "Command1").text(), text("默认"));
    });
}

TEST_F(PortSettings, TheParityLettersStandOnePlaceOffTheWords) {
    load();
    const std::array<const char*, 3> letters{"115200,N,8,1", "115200,O,8,1", "115200,E,8,1"};
    for (int parity = 0; parity < 3; ++parity) {
        show([parity](frmComSet& window) {
            control<ListCombo>(window, "Combo4").setListIndex(parity);
            click(window, "CmdSet");
        });
        EXPECT_EQ(stored("MSCommSettings"), text(letters[static_cast<std::size_t>(parity)]));
    }
}

TEST_F(PortSettings, WithUsbNoPortIsOpenedAndTheTextIsStillBuiltAndStored) {
    load();
    show([](frmComSet& window) {
        EXPECT_FALSE(control<QWidget>(window, "Frame1").isEnabled());
        click(window, "CmdSet");
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(stored("MSCommSettings"), text("115200,E,8,1"));
    EXPECT_EQ(stored("ComPort"), text("0"));
}

TEST_F(PortSettings, APortThatOpensIsStoredByItsIndex) {
    load();
    show([](frmComSet& window) {
        control<ListCombo>(window, "Combo1").setListIndex(1);
        EXPECT_TRUE(control<QWidget>(window, "Frame1").isEnabled());
        click(window, "CmdSet");
    });
    EXPECT_EQ(stored("ComPort"), text("1"));
    EXPECT_TRUE(dialogs.messages.isEmpty());
    EXPECT_FALSE(acquisition().receiver().MSComm1().PortOpen());
}

TEST_F(PortSettings, APortThatDoesNotOpenIsToldTheDialogStaysAndNothingIsWritten) {
    load();
    show([this](frmComSet& window) {
        control<ListCombo>(window, "Combo1").setListIndex(1);
        hasPort = false;
        click(window, "CmdSet");
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_EQ(dialogs.messages, QStringList{text("Device unavailable")});
    EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
    EXPECT_EQ(stored("MSCommSettings"), text("(none)"));
    EXPECT_EQ(stored("ComPort"), text("(none)"));
}

TEST_F(PortSettings, WithoutAnySerialPortTheListHoldsUsbAloneAndAStoredPortFallsToAnIndexThatDoesNotExist) {
    hasPort = false;
    setIni("ComPort", "4");
    load();
    show([this](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 1);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListIndex(), -1);
        EXPECT_EQ(model->ComPort, 1);
    });
    EXPECT_EQ(stored("ComPort"), text("4"));
}

TEST_F(PortSettings, AStoredValueAboveTheNumberOfPortsIsReplacedInMemoryAndWrittenOnlyOnConfirming) {
    setIni("ComPort", "9");
    load();
    show([this](frmComSet& window) {
        EXPECT_EQ(model->ComPort, 1);
        click(window, "CmdCancel");
    });
    EXPECT_EQ(stored("ComPort"), text("9"));
    show([](frmComSet& window) { click(window, "CmdSet"); });
    EXPECT_EQ(stored("ComPort"), text("1"));
}

TEST_F(PortSettings, APortThatDisappearsShiftsTheMeaningOfAStoredIndex) {
    setIni("ComPort", "1");
    hasOther = true;
    load();
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 3);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").Text(), text("COM3"));
        EXPECT_EQ(control<ListCombo>(window, "Combo1").List(2), text("COM5"));
    });
    hasPort = false;
    show([](frmComSet& window) {
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListCount(), 2);
        EXPECT_EQ(control<ListCombo>(window, "Combo1").Text(), text("COM5"));
    });
}

TEST_F(PortSettings, DefaultChoosesUsbAndTheLineDefaults) {
    setIni("ComPort", "1");
    load();
    show([](frmComSet& window) {
        control<ListCombo>(window, "Combo2").setListIndex(0);
        click(window, "Command1");
        EXPECT_EQ(control<ListCombo>(window, "Combo1").ListIndex(), 0);
        EXPECT_EQ(control<ListCombo>(window, "Combo2").ListIndex(), 4);
        EXPECT_FALSE(control<QWidget>(window, "Frame1").isEnabled());
    });
}

} // namespace
