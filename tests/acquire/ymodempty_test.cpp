// SPDX-License-Identifier: MIT
// The block protocol over a real pseudo terminal against a scripted peer. Each test compares the whole transcript.
#include "acquire/ptypeer.h"
#include "acquire/ymodemptyfixture.h"
#include "support/strings.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace sixtrace::test {
namespace {

using ::testing::ElementsAre;

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

} // namespace
} // namespace sixtrace::test
