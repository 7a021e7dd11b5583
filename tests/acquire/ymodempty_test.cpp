// SPDX-License-Identifier: MIT
// The block protocol over a real pseudo terminal against a scripted peer. Each test compares the whole transcript.
#include "acquire/ptypeer.h"
#include "acquire/receivefixture.h"
#include "acquire/scriptedport.h"
#include "acquire/ttycalls.h"
#include "platform/ports/mscomm.h"
#include "support/openfiles.h"
#include "support/strings.h"

#include <QCoreApplication>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace sixtrace::test {
namespace {

using ::testing::ElementsAre;

QByteArray data(int number, const QByteArray& bytes, int size) {
    return BlockSender::block(number, bytes, size, 0x1A);
}

const QByteArray kEot("\x04");
const QByteArray kAck("\x06");
const QByteArray kAckC("\x06"
                       "C");
const QByteArray kNak("\x0F");
const QByteArray kAbort("\x12\x12\x12\x12\x12\x08\x08\x08\x08\x08");

class YModemOverALine : public ::testing::Test {
protected:
    YModemOverALine() {
        form.text2 = path("got.bin");
        form.onYield = [] { QCoreApplication::processEvents(); };
        receive.ReadTimeoutMs = 400;
        EXPECT_TRUE(port.setSettings(u"115200,N,8,1"_s).ok());
        EXPECT_TRUE(port.setPortOpen(true).ok());
    }
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
    [[nodiscard]] QByteArray stored(const char* name = "got.bin") const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    Result<std::int32_t> run(std::function<void(PtyPeer&)> script) {
        peer.play(std::move(script));
        Result<std::int32_t> result = receive.YModemReceive();
        peer.finish();
        return result;
    }
    /// The end of every good transfer, from the peer's side.
    static void end(PtyPeer& p) {
        p.send(kEot);
        p.take(2);
        p.send("\x01");
        p.take(1);
    }

    QTemporaryDir folder;
    PtyPeer peer;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    MSComm port{[this](int) { return peer.location(); }};
    RecordedForm form;
    Receiver receive{port, form, *model};
};

TEST_F(YModemOverALine, AFileGoesThroughWithHeaderBlocksAndEnd) {
    const QByteArray content = QByteArray("\0\1\2\3\xFF\x11\x13\r\n", 9).repeated(150);
    const auto result = run([&content](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("wave.bin", "1350"));
        p.take(2);
        p.send(data(1, content.left(1024), 1024));
        p.take(1);
        p.send(data(2, content.mid(1024), 1024));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 2048);
    EXPECT_EQ(stored(), content);
    EXPECT_EQ(form.text1, u"wave.bin"_s);
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("wave.bin", "1350")),
                            PtyPeer::came(kAckC), PtyPeer::sent(data(1, content.left(1024), 1024)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(2, content.mid(1024), 1024)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, AFirstBlockWithoutAHeaderWritesNothingAndStillEndsWell) {
    const auto result = run([](PtyPeer& p) {
        p.take(1);
        p.send(data(1, "abc", 128));
        p.take(1);
        p.send(data(2, "def", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 256);
    EXPECT_FALSE(QFile::exists(path("got.bin")));
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(data(1, "abc", 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(2, "def", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ASizeOfWholeBlocksLeavesNoPaddingInTheFile) {
    const QByteArray content = QByteArray("0123456789abcdef").repeated(16);
    const auto result = run([&content](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "256"));
        p.take(2);
        p.send(data(1, content.left(128), 128));
        p.take(1);
        p.send(data(2, content.mid(128), 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 256);
    EXPECT_EQ(stored(), content);
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "256")),
                            PtyPeer::came(kAckC), PtyPeer::sent(data(1, content.left(128), 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(2, content.mid(128), 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ASizeOneAboveAMultipleOf128WritesOneByteOfTheLastBlock) {
    const QByteArray content = QByteArray(128, 'a') + 'z';
    const auto result = run([&content](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "129"));
        p.take(2);
        p.send(data(1, content.left(128), 128));
        p.take(1);
        p.send(data(2, content.mid(128), 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 256);
    EXPECT_EQ(stored(), content);
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "129")),
                            PtyPeer::came(kAckC), PtyPeer::sent(data(1, content.left(128), 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(2, "z", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, AmountsOf3072BytesShowInBytesAndOf3073InKilobytes) {
    for (const auto& [size, received, total] :
         {std::tuple("3072", "1024 b", "3072 b"), std::tuple("3073", "1 k", "3 k")}) {
        PtyPeer other;
        MSComm line([&other](int) { return other.location(); });
        ASSERT_TRUE(line.setPortOpen(true).ok());
        Receiver receiver(line, form, *model);
        receiver.ReadTimeoutMs = 400;
        const QByteArray sizeText(size);
        other.play([&sizeText](PtyPeer& p) {
            p.take(1);
            p.send(BlockSender::header("w.bin", sizeText));
            p.take(2);
            p.send(data(1, "x", 1024));
            p.take(1);
            end(p);
        });
        const auto result = receiver.YModemReceive();
        other.finish();
        ASSERT_TRUE(result.ok());
        EXPECT_EQ(form.text5, QString::fromUtf8(received));
        EXPECT_EQ(form.text6, QString::fromUtf8(total));
        EXPECT_THAT(other.transcript(),
                    ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", sizeText)),
                                PtyPeer::came(kAckC), PtyPeer::sent(data(1, "x", 1024)), PtyPeer::came(kAck),
                                PtyPeer::sent(kEot), PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
    }
}

TEST_F(YModemOverALine, WithNoTimeLimitTheFirstReadWaitsForTheInstrument) {
    receive.ReadTimeoutMs = 0;
    const auto result = run([](PtyPeer& p) {
        p.take(1);
        p.pause(700);
        p.send(BlockSender::header("w.bin", "1"));
        p.take(2);
        p.send(data(1, "x", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(stored(), "x");
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "1")), PtyPeer::came(kAckC),
                            PtyPeer::sent(data(1, "x", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, WithTheTenMillisecondsOfACancelAShortPauseCountsAsAFailedRead) {
    receive.ReadTimeoutMs = 10;
    const QByteArray block = BlockSender::header("w.bin", "1");
    const auto result = run([&block](PtyPeer& p) {
        p.take(1);
        p.take(1); // ten milliseconds of silence later
        p.send(block.left(1));
        p.pause(40);
        p.take(9);
        p.take(3);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    // After the first byte each wait of ten milliseconds and its flush cost one retry, up to the fifth.
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C\x0F"), PtyPeer::sent("\x01"), PtyPeer::came("\x0F\x0F\x0F" + kAbort)));
}

TEST_F(YModemOverALine, ANameInUpperCaseBmpGoesToThePathOfText2) {
    const auto result = run([](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("PICTURE.BMP", "3"));
        p.take(2);
        p.send(data(1, "BM!", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(stored(), "BM!");
    EXPECT_EQ(model->ReceivedFile, path("got.bin"));
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("PICTURE.BMP", "3")),
                            PtyPeer::came(kAckC), PtyPeer::sent(data(1, "BM!", 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(kEot), PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ARepeatedHeaderReopensTheFileAndGetsASecondRequest) {
    const auto result = run([](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "2"));
        p.take(2);
        p.send(BlockSender::header("w.bin", "2"));
        p.take(2);
        p.send(data(1, "ok", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(stored(), "ok");
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "2")), PtyPeer::came(kAckC),
                            PtyPeer::sent(BlockSender::header("w.bin", "2")), PtyPeer::came(kAckC),
                            PtyPeer::sent(data(1, "ok", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, AnExistingLongerFileKeepsItsTail) {
    {
        QFile file(path("got.bin"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write("old content"), 11);
    }
    const auto result = run([](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "3"));
        p.take(2);
        p.send(data(1, "new", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(stored(), "new content");
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "3")), PtyPeer::came(kAckC),
                            PtyPeer::sent(data(1, "new", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ARepeatedDataBlockIsReadAsAHeaderAndStartsTheFileAnew) {
    // The repeat can be read as a header with an empty name and the size 5. The file begins again, and more than five
    // bytes have already come.
    const QByteArray first = QByteArray("\0"
                                        "5\0",
                                        3) +
                             QByteArray(125, 'q');
    const auto result = run([&first](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "200"));
        p.take(2);
        p.send(data(1, first, 128));
        p.take(1);
        p.send(data(1, first, 128));
        p.take(1);
        p.send(data(2, "rest", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 256);
    EXPECT_EQ(stored(), first);
    EXPECT_EQ(form.text1, QString());
    EXPECT_EQ(form.text6, u"5 b"_s);
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "200")),
                            PtyPeer::came(kAckC), PtyPeer::sent(data(1, first, 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(1, first, 128)), PtyPeer::came(kAck),
                            PtyPeer::sent(data(2, "rest", 128)), PtyPeer::came(kAck), PtyPeer::sent(kEot),
                            PtyPeer::came(kAckC), PtyPeer::sent("\x01"), PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ABadCheckValueIsRefusedAndTheBlockTakenWhenItComesRight) {
    QByteArray bad = data(1, "x", 128);
    bad[131] = static_cast<char>(bad[131] ^ 1);
    const auto result = run([&bad](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "1"));
        p.take(2);
        p.send(bad);
        p.take(1);
        p.send(data(1, "x", 128));
        p.take(1);
        end(p);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(stored(), "x");
    EXPECT_THAT(peer.transcript(),
                ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "1")), PtyPeer::came(kAckC),
                            PtyPeer::sent(bad), PtyPeer::came(kNak), PtyPeer::sent(data(1, "x", 128)),
                            PtyPeer::came(kAck), PtyPeer::sent(kEot), PtyPeer::came(kAckC), PtyPeer::sent("\x01"),
                            PtyPeer::came(kAck)));
}

TEST_F(YModemOverALine, ACancelSendsTheLastAnswerFiveTimesAndTheTail) {
    receive.ReadTimeoutMs = 10000; // no read may fail here, however busy the machine is
    const auto result = run([this](PtyPeer& p) {
        p.take(1);
        p.send(BlockSender::header("w.bin", "500"));
        p.take(2);
        // What the button does. The receiver has had time to begin its read of the first data block.
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        model->XferCancel = 1;
        p.send(data(1, "x", 128));
        p.take(1);
        p.take(10);
    });
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(stored().size(), 128);
    EXPECT_THAT(peer.transcript(), ElementsAre(PtyPeer::came("C"), PtyPeer::sent(BlockSender::header("w.bin", "500")),
                                               PtyPeer::came(kAckC), PtyPeer::sent(data(1, "x", 128)),
                                               PtyPeer::came(kAck + "\x06\x06\x06\x06\x06\x08\x08\x08\x08\x08")));
}

TEST_F(YModemOverALine, ASecondOpenOfThePortIsAnsweredWith8005) {
    MSComm second([this](int) { return peer.location(); });
    const Outcome opened = second.setPortOpen(true);
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().number, ErrorNumber::PortAlreadyOpen);
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_TRUE(second.setPortOpen(true).ok());
}

TEST_F(YModemOverALine, APulledPlugEndsAWaitWithoutLimit) {
    auto other = std::make_unique<PtyPeer>();
    MSComm line([&other](int) { return other->location(); });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    std::thread pull([&other] {
        PtyPeer::pause(100);
        other.reset();
    });
    EXPECT_EQ(line.waitForBytes(1, 0), Waited::Lost);
    pull.join();
    line.Output("lost");
    EXPECT_EQ(line.waitForBytes(1, 20), Waited::TimedOut);
}

TEST_F(YModemOverALine, ALineThatHasGoneIsLeftAtOnceAndWhatHadComeCanStillBeRead) {
    auto other = std::make_unique<PtyPeer>();
    const QString location = other->location();
    MSComm line([&location](int) { return location; });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    other->send("abc");
    ASSERT_EQ(line.waitForBytes(3, 60000), Waited::Enough);
    ASSERT_TRUE(isOpenHere(location));
    other.reset();
    while (!line.lost()) {
        QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
    // The descriptor of a line that has gone is always ready, so an open one would keep the event loop busy.
    EXPECT_EQ(deadHandles(u"/dev/pts/"_s), 0);
    EXPECT_TRUE(line.PortOpen()) << "it was not closed";
    EXPECT_EQ(line.InBufferCount(), 3);
    EXPECT_EQ(line.waitForBytes(3, 20), Waited::Enough);
    EXPECT_EQ(line.Input(2), "ab");
    EXPECT_EQ(line.waitForBytes(2, 20), Waited::TimedOut);
    EXPECT_EQ(line.waitForBytes(2, 0), Waited::Lost);
    line.Output("lost");
    line.discard();
    EXPECT_EQ(line.InBufferCount(), 0);
    EXPECT_EQ(line.Input(5), "");
    EXPECT_EQ(line.setCommPort(2).error().number, ErrorNumber::PortAlreadyOpen);
    ASSERT_TRUE(line.setPortOpen(false).ok());
    EXPECT_FALSE(line.PortOpen());
    EXPECT_FALSE(line.lost());
}

TEST_F(YModemOverALine, ALineThatGoesDuringAWaitLetsItsLimitRunOut) {
    auto other = std::make_unique<PtyPeer>();
    MSComm line([&other](int) { return other->location(); });
    ASSERT_TRUE(line.setPortOpen(true).ok());
    const qint64 start = line.clock();
    QTimer::singleShot(20, [&other] { other.reset(); });
    EXPECT_EQ(line.waitForBytes(1, 400), Waited::TimedOut);
    EXPECT_GE(line.clock() - start, 395);
    EXPECT_TRUE(line.lost());
}

TEST_F(YModemOverALine, APortClosedByOthersEndsTheWaitForIt) {
    QTimer::singleShot(20, [this] { static_cast<void>(port.setPortOpen(false)); });
    EXPECT_EQ(port.waitForBytes(1, 600000), Waited::TimedOut);
    QTimer::singleShot(20, [this] { static_cast<void>(port.setPortOpen(false)); });
    ASSERT_TRUE(port.setPortOpen(true).ok());
    EXPECT_EQ(port.waitForBytes(1, 0), Waited::Lost);
}

TEST_F(YModemOverALine, TryingAPortTellsOnesOwnFromAnothersAndLeavesAnOpenOneAlone) {
    PtyPeer other;
    MSComm line([this, &other](int number) {
        return number == 1 ? peer.location() : number == 2 ? other.location() : QString();
    });
    EXPECT_EQ(line.tryPort(1).error().number, ErrorNumber::PortAlreadyOpen) << "the fixture holds it";
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_TRUE(line.tryPort(1).ok());
    EXPECT_FALSE(line.PortOpen());
    EXPECT_EQ(line.tryPort(3).error().number, ErrorNumber::DeviceUnavailable);
    EXPECT_EQ(line.tryPort(1, u"nonsense"_s).error().number, ErrorNumber::InvalidCall);
    ASSERT_TRUE(line.setCommPort(1).ok());
    ASSERT_TRUE(line.setPortOpen(true).ok());
    EXPECT_TRUE(line.tryPort(1).ok()) << "its own";
    EXPECT_TRUE(line.tryPort(2).ok());
    EXPECT_EQ(line.tryPort(3).error().number, ErrorNumber::DeviceUnavailable);
    EXPECT_TRUE(line.PortOpen());
    EXPECT_EQ(line.CommPort(), 1);
}

TEST_F(YModemOverALine, WhatWasWrittenHasLeftBeforeTheLineGetsItsOldSettingsBack) {
    ttycalls::begin();
    port.Output("the last acknowledge");
    ASSERT_TRUE(port.setPortOpen(false).ok());
    EXPECT_EQ(ttycalls::end(), (std::vector<std::string>{"drain", "settings"}));
}

TEST_F(YModemOverALine, TheSettingsTextSetsRateParityDataAndStopBits) {
    struct Case {
        const char* settings;
        tcflag_t flags;
        speed_t speed;
    };
    for (const Case& each :
         {Case{"9600,N,8,1", CS8, B9600}, Case{"19200,E,7,2", CS7 | PARENB | CSTOPB, B19200},
          Case{"57600,o,6,1", CS6 | PARENB | PARODD, B57600}, Case{"115200,e,5,1", CS5 | PARENB, B115200}}) {
        ttycalls::begin();
        ASSERT_TRUE(port.setSettings(QString::fromUtf8(each.settings)).ok()) << each.settings;
        static_cast<void>(ttycalls::end());
        const std::vector<termios> asked = ttycalls::settingsAsked();
        // The port makes one setting after the other, and the terminal does not keep them in between.
        for (const tcflag_t part : {tcflag_t{CSIZE}, tcflag_t{PARENB | PARODD}, tcflag_t{CSTOPB}}) {
            EXPECT_TRUE(std::any_of(
                asked.begin(), asked.end(),
                [&each, part](const termios& line) { return (line.c_cflag & part) == (each.flags & part); }))
                << each.settings << ' ' << part;
        }
        ASSERT_FALSE(asked.empty());
        EXPECT_EQ(cfgetospeed(&asked.back()), each.speed) << each.settings;
    }
    for (const char* wrong : {"", "9600,N,8", "0,N,8,1", "x,N,8,1", "9600,X,8,1", "9600,N,4,1", "9600,N,9,1",
                              "9600,N,8,3", "9600,N,8,1,1"}) {
        const Outcome set = port.setSettings(QString::fromUtf8(wrong));
        ASSERT_FALSE(set.ok()) << wrong;
        EXPECT_EQ(set.error().number, ErrorNumber::InvalidCall) << wrong;
    }
}

} // namespace
} // namespace sixtrace::test
