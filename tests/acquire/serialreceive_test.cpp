// SPDX-License-Identifier: MIT
#include "acquire/crc16.h"
#include "acquire/receivefixture.h"
#include "support/openfiles.h"
#include "support/strings.h"

#include <array>
#include <random>

namespace sixtrace::test {
namespace {

TEST(Crc16, CheckValueOfTheNineDigitsIs31C3) {
    EXPECT_EQ(crc16("123456789"), 0x31C3);
}

TEST(Crc16, NoDataAndZeroBytesGiveZero) {
    EXPECT_EQ(crc16({}), 0);
    EXPECT_EQ(crc16(QByteArray(1024, '\0')), 0);
}

TEST(Crc16, AByteAboveHalfIsTakenWithoutSign) {
    // Worked out by hand in eight steps; it is also the last entry of the published table.
    EXPECT_EQ(crc16(QByteArray(1, '\xFF')), 0x1EF0);
}

TEST(Crc16, EveryByteAfterAnotherGivesTheRemainderOfTheirDivision) {
    // Long division of the 16 bits, and 16 zeros after them, by 1 0001 0000 0010 0001.
    for (std::uint32_t bits = 0; bits < 0x10000; ++bits) {
        std::uint32_t rest = bits << 16;
        for (int place = 31; place >= 16; --place) {
            if (((rest >> place) & 1U) != 0) {
                rest ^= 0x11021U << (place - 16);
            }
        }
        const std::array bytes{static_cast<char>(bits >> 8), static_cast<char>(bits)};
        ASSERT_EQ(crc16(QByteArrayView(bytes)), rest) << "bytes " << bits;
    }
}

TEST_F(BlockReceive, ASilentInstrumentSeesARequestFourRefusalsAndTheAbortInFiftySeconds) {
    int yields = 0;
    form.onYield = [&yields] { ++yields; };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(port.sent, "C"
                         "\x0F\x0F\x0F\x0F"
                         "\x12\x12\x12\x12\x12"
                         "\x08\x08\x08\x08\x08");
    // 100 ms of flush before the request; ten seconds and a flush before each refusal; ten seconds before the abort.
    const std::deque<qint64> expected{100,   10200, 20300, 30400, 40500, 50500, 50500, 50500,
                                      50500, 50500, 50500, 50500, 50500, 50500, 50500};
    EXPECT_EQ(port.sentAt, expected);
    EXPECT_EQ(form.text4History, (QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s}));
    EXPECT_EQ(yields, 10) << "at the top of five passes, and at each of five retries";
}

TEST_F(BlockReceive, AByteThatStartsNoBlockIsRefusedWithoutCounting) {
    int answered = 0;
    port.answer = [&answered](unsigned char) { return ++answered <= 20 ? QByteArray("x") : QByteArray(); };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(port.sent, "C" + QByteArray(24, '\x0F') +
                             "\x12\x12\x12\x12\x12"
                             "\x08\x08\x08\x08\x08");
}

TEST_F(BlockReceive, TheBarReachesTheSizePlusOneAndIsNotMovedByTheLastBlock) {
    BlockSender sender("w.bin", pattern(2500), {});
    connect(sender);
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_EQ(form.barMaximum, 2501);
    EXPECT_EQ(form.bar, 2048);
    EXPECT_EQ(form.text3, 4);
    EXPECT_EQ(form.text4, 0);
}

TEST_F(BlockReceive, ABitmapGoesToItsBareNameWithoutAnyFolderPart) {
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    for (const char* name :
         {"screen.bmp", "../screen.bmp", "/etc/screen.bmp", "C:\\windows\\screen.bmp", "c:screen.bmp"}) {
        QFile::remove(path(u"screen.bmp"_s));
        form.text2 = path(u"got.bin"_s);
        BlockSender sender(name, "BM-picture", {});
        connect(sender);
        const auto result = receive.YModemReceive();
        EXPECT_TRUE(result.ok()) << name;
        EXPECT_EQ(form.text1, QString::fromUtf8(name));
        EXPECT_EQ(form.text2, u"screen.bmp"_s);
        EXPECT_EQ(model->ReceivedFile, u"screen.bmp"_s);
        EXPECT_EQ(stored(u"screen.bmp"_s), "BM-picture") << name;
    }
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(BlockReceive, ANameThatFillsItsBlockRunsOnIntoWhatTheBufferHoldsAndEndsWithError9WhereNoZeroComes) {
    answerOnce(BlockSender::block(0, QByteArray(1024, 'n'), 1024, 'n'));
    expectError(receive.YModemReceive(), ErrorNumber::SubscriptOutOfRange);
    EXPECT_EQ(port.sent, "C");
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, ASizeTextWithoutAZeroByteEndsWithError9) {
    answerOnce(BlockSender::block(0, QByteArray("w.bin\0", 6) + QByteArray(1018, '1'), 1024, '1'));
    expectError(receive.YModemReceive(), ErrorNumber::SubscriptOutOfRange);
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, ASizeOfTwentyDigitsEndsWithAnOverflow) {
    answerOnce(BlockSender::header("w.bin", "99999999999999999999"));
    expectError(receive.YModemReceive(), ErrorNumber::Overflow);
    EXPECT_FALSE(QFile::exists(path(u"got.bin"_s)));
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, TheGreatestSizeOverflowsTheBar) {
    answerOnce(BlockSender::header("w.bin", "2147483647"));
    expectError(receive.YModemReceive(), ErrorNumber::Overflow);
}

TEST_F(BlockReceive, FurtherFieldsAfterTheSizeAreReadAsPartOfTheNumber) {
    answerOnce(BlockSender::header("w.bin", "12 34"));
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_EQ(form.barMaximum, 1235);
}

TEST_F(BlockReceive, ANegativeSizeWritesNothing) {
    BlockSender sender("w.bin", "x", {});
    QByteArray block = BlockSender::header("w.bin", "-5");
    bool first = true;
    port.answer = [&](unsigned char byte) {
        const QByteArray answer = sender.answer(byte);
        return std::exchange(first, false) ? block : answer;
    };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(stored(), QByteArray());
}

TEST_F(BlockReceive, BlockNumber32767IsTheLastAndTheNextOverflows) {
    int sentBlocks = 0;
    port.answer = [&sentBlocks](unsigned char byte) {
        return byte == 'C' || byte == 6 ? BlockSender::block(++sentBlocks, {}, 128, '\0') : QByteArray();
    };
    expectError(receive.YModemReceive(), ErrorNumber::Overflow);
    EXPECT_EQ(sentBlocks, 32767);
    EXPECT_EQ(form.text3, 32767);
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, AFileThatCannotBeMadeIsARunTimeErrorAndTheNextTransferIsClean) {
    form.text2 = path(u"no/such/folder.bin"_s);
    BlockSender sender("w.bin", "x", {});
    connect(sender);
    expectError(receive.YModemReceive(), ErrorNumber::PathNotFound);
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, ADeviceInPlaceOfAFileIsNotWrittenTo) {
    form.text2 = u"/dev/null"_s;
    BlockSender sender("w.bin", "x", {});
    connect(sender);
    expectError(receive.YModemReceive(), ErrorNumber::PathAccess);
}

TEST_F(BlockReceive, AnEarlyEndLeavesTheFileAsFarAsItCame) {
    const QByteArray content = pattern(5000);
    BlockSender sender("w.bin", content, {{}, {{FaultKind::EarlyEnd, 3, 1}}});
    connect(sender);
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 2048);
    EXPECT_EQ(stored(), content.left(2048));
}

TEST_F(BlockReceive, TheFileIsOpenDuringATransferAndClosedHoweverItEnds) {
    const QString file = path(u"got.bin"_s);
    bool wasOpen = false;
    form.onYield = [&] { wasOpen = wasOpen || (QFile::exists(file) && isOpenHere(file)); };
    BlockSender whole("w.bin", pattern(5000), {});
    connect(whole);
    EXPECT_GT(receive.YModemReceive().value(), 0);
    EXPECT_TRUE(wasOpen);
    EXPECT_FALSE(isOpenHere(file)) << "after the end";

    BlockSender silent("w.bin", pattern(5000), {{}, {{FaultKind::Silence, 2, 1}}});
    connect(silent);
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_FALSE(isOpenHere(file)) << "after the abort";

    answerOnce(BlockSender::header("w.bin", "500"));
    form.onYield = [&] { model->XferCancel = isOpenHere(file) ? 1 : 0; };
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_FALSE(isOpenHere(file)) << "after a cancel";
}

TEST_F(BlockReceive, AnEndAtOnceGivesZeroBytes) {
    answerOnce("\x04");
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 0);
    EXPECT_EQ(port.sent, "C"
                         "\x06"
                         "C"
                         "\x06");
}

TEST_F(BlockReceive, TheEndWaitsForOneByteBeforeItsLastAcknowledge) {
    answerOnce("\x04");
    ASSERT_TRUE(receive.YModemReceive().ok());
    // No byte comes here: the last acknowledge goes out at the end of the wait.
    EXPECT_EQ(port.sentAt, (std::deque<qint64>{100, 100, 100, 10100}));
}

TEST_F(BlockReceive, WhatComesAfterABlockIsThrownAwayByItsAcknowledge) {
    const std::deque<QByteArray> answers{BlockSender::header("w.bin", "128") + "xy", QByteArray(),
                                         BlockSender::block(1, QByteArray(128, 'd'), 128, '\0') + "z", "\x04"};
    answerInTurn(answers);
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(port.sent, "C"
                         "\x06"
                         "C"
                         "\x06"
                         "\x06"
                         "C"
                         "\x06")
        << "nothing of it is taken for a start byte and refused";
}

TEST_F(BlockReceive, ACancelBeforeAnyAnswerSendsTheRequestFiveTimesAndTheTail) {
    form.onYield = [this] { model->XferCancel = 1; };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(port.sent, "C"
                         "CCCCC"
                         "\x08\x08\x08\x08\x08");
}

TEST_F(BlockReceive, ACancelRightAfterTheHeaderSendsTheRequestFiveTimesAndTheTail) {
    answerOnce(BlockSender::header("w.bin", "128"));
    form.onYield = [this] { model->XferCancel = form.text1.isEmpty() ? 0 : 1; };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(port.sent, "C"
                         "\x06"
                         "C"
                         "CCCCC"
                         "\x08\x08\x08\x08\x08");
}

TEST_F(BlockReceive, ACancelOfTheTransferBeforeIsForgottenAtTheStart) {
    model->XferCancel = 1;
    expectCleanTransferWorks();
    EXPECT_EQ(model->XferCancel, 0);
}

TEST_F(BlockReceive, TheSizeOfTheTransferBeforeIsForgottenAtTheStart) {
    expectCleanTransferWorks(); // 3000 bytes
    form.text2 = path(u"got.bin"_s);
    form.bar = 0;
    port.sent.clear();
    const std::deque<QByteArray> answers{BlockSender::block(1, "no header", 128, '\0'), "\x04"};
    answerInTurn(answers);
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(form.text6, u"0 b"_s);
    EXPECT_EQ(form.bar, 0);
    EXPECT_FALSE(QFile::exists(path(u"got.bin"_s)));
}

TEST_F(BlockReceive, ALineThatIsGoneDuringAWaitWithoutLimitIsARunTimeError) {
    receive.ReadTimeoutMs = 0;
    expectError(receive.YModemReceive(), ErrorNumber::DeviceIo);
}

TEST_F(BlockReceive, ASenderThatNeverPausesIsEndedByACancel) {
    port.whileWaiting = [this] {
        port.now += 7;
        return QByteArray(4096, '\x55');
    };
    int yields = 0;
    form.onYield = [this, &yields] {
        if (++yields > 20000) {
            model->XferCancel = 1;
        }
    };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_TRUE(port.sent.endsWith("\x08\x08\x08\x08\x08"));
}

TEST_F(BlockReceive, RandomBytesNeverHarmTheReceiver) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        int left = 40;
        port.waiting.clear();
        port.answer = [&random, &left](unsigned char) {
            QByteArray bytes;
            if (left-- > 0) {
                bytes += static_cast<char>(random() % 5);
                for (auto i = random() % 1400; i > 0; --i) {
                    bytes += static_cast<char>(random());
                }
            }
            return bytes;
        };
        const auto result = receive.YModemReceive();
        if (result.ok()) {
            EXPECT_GE(result.value(), -1);
        }
        EXPECT_FALSE(receive.running());
    }
    expectCleanTransferWorks();
}

} // namespace
} // namespace sixtrace::test
