// SPDX-License-Identifier: MIT
// What a timed fetch does over each of the two links.
#include "acquire/acquirefixture.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

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
