// SPDX-License-Identifier: MIT
#include "acquire/acquirefixture.h"
#include "shell/frmmessageout.h"

#include "support/strings.h"

#include <QRegularExpression>

namespace sixtrace::test {
namespace {

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
