// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"

#include "shell/frmmessageout.h"
#include "support/strings.h"

#include <QRegularExpression>

namespace sixtrace::test {
namespace {

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
    EXPECT_TRUE(QRegularExpression(u"^D\\d{10}\\.bin$"_s).match(shownName).hasMatch());
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
    EXPECT_TRUE(QRegularExpression(u"^D\\d{10}\\.bin$"_s).match(files.front()).hasMatch());
    EXPECT_EQ(read(path("dat/") + files.front()), capture("square"));
    EXPECT_EQ(path4(), path("dat/") + files.front());
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), u"WAVE.bin"_s);
    EXPECT_EQ(window.ReadTimeoutMs(), 10000);
}

TEST_F(ManualGet, ABitmapIsToldAndTheCaptureOnTheScreenStays) {
    load();
    link.stream = ScriptedLink::transfer("BM", 1);
    FrmUSB& window = acquisition().usbWindow();
    whenShown(window, [&] { click(window, "Command4"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(dialogs.messages, QStringList{u"Receive file is Bmp file ,please use other software open it !"_s});
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
        link.failingRead.reset();
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
    EXPECT_EQ(dialogs.messages, QStringList{u"Device unavailable"_s});
}

TEST_F(ManualGet, TheWindowsFollowTheLanguageWhenTheyAreLoaded) {
    for (const auto& [language, browse, start] :
         {std::tuple("0", "浏览...", "开始"), std::tuple("1", "Browse...", "Start")}) {
        setIni("Language", language);
        setIni("ComPort", "1");
        load();
        recFrm& window = acquisition().receiver();
        whenShown(window, [&, browseText = browse, startText = start] {
            EXPECT_EQ(control<QPushButton>(window, "Command1").text(), QString::fromUtf8(browseText));
            EXPECT_EQ(control<QPushButton>(window, "Command2").text(), QString::fromUtf8(startText));
            window.close();
        });
        item("mnuAcquire").trigger();
    }
}

TEST_F(ManualGet, TheFieldsOfBothWindowsStandClearOfEachOtherAndInsideTheirWindow) {
    load();
    QWidget& serial = acquisition().receiver();
    QWidget& usb = acquisition().usbWindow();
    for (QWidget* window : {&serial, &usb}) {
        const auto controls = window->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_GT(controls.size(), 8);
        for (int i = 0; i < controls.size(); ++i) {
            EXPECT_TRUE(window->rect().contains(controls[i]->geometry()))
                << window->objectName().toStdString() << ": " << controls[i]->objectName().toStdString();
            for (int k = i + 1; k < controls.size(); ++k) {
                EXPECT_FALSE(controls[i]->geometry().intersects(controls[k]->geometry()))
                    << window->objectName().toStdString() << ": " << controls[i]->objectName().toStdString() << " and "
                    << controls[k]->objectName().toStdString();
            }
        }
        EXPECT_FALSE(control<QProgressBar>(*window, "ProgressBar1").isTextVisible());
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
    EXPECT_EQ(serial.windowTitle(), u"正在接收数据"_s);
    EXPECT_EQ(captions(serial, {u"Label1"_s, u"Label2"_s, u"Command1"_s, u"Label3"_s, u"Label5"_s, u"Label4"_s,
                                u"Command2"_s, u"CancelButton"_s}),
              (QStringList{u"正在接收文件："_s, u"存储为："_s, u"浏览..."_s, u"数据包："_s, u"重试次数"_s,
                           u"传输进度："_s, u"开始"_s, u"Cancel"_s}));
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        EXPECT_EQ(usb.windowTitle(), u"USB Transmission "_s);
        EXPECT_EQ(
            captions(usb, {u"Label1"_s, u"Label2"_s, u"Command1"_s, u"Label4"_s, u"Command4"_s, u"CancelButton"_s}),
            (QStringList{u"正在接收文件："_s, u"存储为："_s, u"浏览..."_s, u"传输进度："_s, u"开 始"_s, u"Cancel"_s}));
        click(usb, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, BrowsingTakesAnExistingFileOnlyWhenTheUserAgrees) {
    load();
    FrmUSB& window = acquisition().usbWindow();
    const QString chosen = path("vkq.ini");
    ASSERT_TRUE(QDir().mkpath(path("mine")));
    whenShown(window, [&] {
        const QString before = control<QLineEdit>(window, "Text2").text();
        dialogs.files = {FileChoice{chosen, 1}, std::nullopt, FileChoice{chosen, 1},
                         FileChoice{path("mine/new.bin"), 1}};
        dialogs.answers = {Answer::No, Answer::Yes};
        click(window, "Command1"); // the file exists, and the answer is No
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        EXPECT_EQ(model->ReceivedFile, chosen);
        EXPECT_EQ(window.LastSaveDir(), QFileInfo(chosen).path()) << "the folder counts whatever the answer";
        EXPECT_EQ(dialogs.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
        EXPECT_EQ(dialogs.titles, QStringList{u"Message"_s});
        EXPECT_EQ(dialogs.messageIcons.front(), MessageIcon::Exclamation);
        EXPECT_EQ(dialogs.fileRequests.front().fileName, before);
        EXPECT_EQ(dialogs.fileRequests.front().filter, u"bin (*.bin)|*.bin"_s);
        click(window, "Command1"); // cancelled
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), before);
        click(window, "Command1"); // answered with Yes
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), chosen);
        EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), u"vkq.ini"_s);
        click(window, "Command1"); // nothing to ask
        EXPECT_EQ(control<QLineEdit>(window, "Text2").text(), path("mine/new.bin"));
        EXPECT_EQ(control<QLineEdit>(window, "Text1").text(), u"new.bin"_s);
        EXPECT_EQ(dialogs.messages.size(), 2);
        click(window, "CancelButton");
    });
    item("mnuAcquire").trigger();
    EXPECT_EQ(window.LastSaveDir(), path("mine"));
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
        dialogs.files = {std::nullopt, FileChoice{existing, 1}, FileChoice{existing, 1},
                         FileChoice{path("new.bin"), 1}};
        dialogs.answers = {Answer::No, Answer::Yes};
        click(window, "Command1"); // cancelled
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(dialogs.fileRequests.front().fileName, before);
        EXPECT_EQ(dialogs.fileRequests.front().filter, u"bin (*.bin)|*.bin"_s);
        click(window, "Command1"); // answered with No
        EXPECT_EQ(field.text(), before);
        EXPECT_EQ(model->ReceivedFile, existing);
        EXPECT_EQ(dialogs.messages, QStringList{u"File Exist!  Do you want to continue ?"_s});
        EXPECT_EQ(dialogs.titles, QStringList{u"Message"_s});
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
    EXPECT_EQ(told(), u"接收成功!"_s);

    peer.play([](PtyPeer& p) { // an end at once brings no data and is no success
        p.take(1);
        p.send("\x04");
        p.take(2);
        p.send("\x01");
        p.take(1);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(told(), u"接收失败!"_s);

    peer.play([&window](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            &window, [&window] { click(window, "CancelButton"); }, Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(11);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(told(), u"用户中断"_s);
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

TEST_F(ManualGet, APathThatEndsInBmpInCapitalsIsLoadedLikeAnyOther) {
    setIni("ComPort", "1");
    load();
    QFile file(path("fetched.BMP"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(capture("sine"));
    file.close();
    model->ReceivedFile = path("fetched.BMP");
    model->ReceiveResult = 1024;
    recFrm& window = acquisition().receiver();
    whenShown(window, [&] { click(window, "CancelButton"); });
    item("mnuAcquire").trigger();
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(path4(), path("fetched.BMP"));
    EXPECT_TRUE(dialogs.messages.isEmpty());
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

TEST_F(ManualGet, TheFoldersExistAsSoonAsADialogNamesThem) {
    load();
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        EXPECT_TRUE(QFileInfo(path("data")).isDir());
        EXPECT_FALSE(QFileInfo::exists(path("dat")));
        click(usb, "CancelButton");
    });
    item("mnuAcquire").trigger();
    setIni("ComPort", "1");
    recFrm& serial = acquisition().receiver();
    whenShown(serial, [&] {
        EXPECT_TRUE(QFileInfo(path("dat")).isDir());
        click(serial, "CancelButton");
    });
    item("mnuAcquire").trigger();
}

TEST_F(ManualGet, AFolderOfTheUsersIsNotMade) {
    load();
    FrmUSB& usb = acquisition().usbWindow();
    whenShown(usb, [&] {
        control<QLineEdit>(usb, "Text2").setText(path("other/got.bin"));
        link.stream = ScriptedLink::transfer(capture("sine"));
        click(usb, "Command4");
    });
    item("mnuAcquire").trigger();
    EXPECT_FALSE(QFileInfo::exists(path("other")));
    EXPECT_EQ(dialogs.messages, QStringList{u"错误代码:76    Path not found"_s});
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

TEST_F(ManualGet, APortThatWasFoundBeforeStaysInTheTableAfterTheCount) {
    hasOther = true;
    load();
    recFrm& window = acquisition().receiver();
    window.load();
    EXPECT_EQ(window.ports().count(), 2);
    EXPECT_EQ(window.ports().at(2).value(), 5);
    hasOther = false;
    setIni("ComPort", "1");
    serve({capture("square")});
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger(); // at its end the form is unloaded
    peer.finish();
    window.load();
    EXPECT_EQ(window.ports().count(), 1);
    EXPECT_EQ(window.ports().at(1).value(), 3);
    EXPECT_EQ(window.ports().at(2).value(), 5) << "only the count is reset";
}

TEST_F(ManualGet, TheEndingOfATransferByHandStandsInTheToolTipOfThePath) {
    setIni("Language", "1");
    setIni("ComPort", "1");
    load();
    recFrm& window = acquisition().receiver();
    const QByteArray content = capture("square");
    serve({content});
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    const QString ending = u"Last transfer: all %1 bytes came"_s.arg(content.size());
    EXPECT_EQ(control<QLabel>(*form, "Label4").toolTip(), path4() + u'\n' + ending);

    peer.play([&window](PtyPeer& p) {
        p.take(1);
        PtyPeer::untilItWaits();
        QMetaObject::invokeMethod(
            &window, [&window] { click(window, "CancelButton"); }, Qt::BlockingQueuedConnection);
        p.send("x");
        p.take(11);
    });
    whenShown(window, [&] { click(window, "Command2"); });
    item("mnuAcquire").trigger();
    peer.finish();
    EXPECT_EQ(control<QLabel>(*form, "Label4").toolTip(),
              path4() + u"\nLast transfer: the transfer was cancelled; no header came"_s);
}

} // namespace
} // namespace sixtrace::test
