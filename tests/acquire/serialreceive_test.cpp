// SPDX-License-Identifier: MIT
#include "acquire/crc16.h"
#include "acquire/receivefixture.h"
#include "support/openfiles.h"
#include "support/strings.h"

#include <array>
#include <deque>
#include <random>

using namespace sixtrace;

namespace {

QByteArray header(const QByteArray& field, int size = 128) {
    return BlockSender::block(0, field, size, '\0');
}

class BlockReceive : public ReceiveFixture {
protected:
    /// Answers the first request with the given bytes and stays silent from then on.
    void answerOnce(const QByteArray& bytes) {
        port.answer = [this, bytes](unsigned char) {
            QByteArray all = m_answered ? QByteArray() : bytes;
            m_answered = true;
            return all;
        };
    }
    void expectError(const Result<std::int32_t>& result, ErrorNumber number) {
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().number, number);
    }

private:
    bool m_answered = false;
};

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
    EXPECT_EQ(form.text4History, (QStringList{text("1"), text("2"), text("3"), text("4"), text("5")}));
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
        QFile::remove(path(QStringLiteral("screen.bmp")));
        form.text2 = path(QStringLiteral("got.bin"));
        BlockSender sender(name, "BM-picture", {});
        connect(sender);
        const auto result = receive.YModemReceive();
        EXPECT_TRUE(result.ok()) << name;
        EXPECT_EQ(form.text1, text(name));
        EXPECT_EQ(form.text2, text("screen.bmp"));
        EXPECT_EQ(model->ReceivedFile, text("screen.bmp"));
        EXPECT_EQ(stored(QStringLiteral("screen.bmp")), "BM-picture") << name;
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
    answerOnce(header(QByteArray("w.bin\0"
                                 "99999999999999999999\0",
                                 27)));
    expectError(receive.YModemReceive(), ErrorNumber::Overflow);
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("got.bin"))));
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, TheGreatestSizeOverflowsTheBar) {
    answerOnce(header(QByteArray("w.bin\0"
                                 "2147483647\0",
                                 17)));
    expectError(receive.YModemReceive(), ErrorNumber::Overflow);
}

TEST_F(BlockReceive, FurtherFieldsBehindTheSizeAreReadAsPartOfTheNumber) {
    answerOnce(header(QByteArray("w.bin\0"
                                 "12 34\0",
                                 12)));
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_EQ(form.barMaximum, 1235);
}

TEST_F(BlockReceive, ANegativeSizeWritesNothing) {
    BlockSender sender("w.bin", "x", {});
    QByteArray block = header(QByteArray("w.bin\0"
                                         "-5\0",
                                         9));
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
    form.text2 = path(QStringLiteral("no/such/folder.bin"));
    BlockSender sender("w.bin", "x", {});
    connect(sender);
    expectError(receive.YModemReceive(), ErrorNumber::PathNotFound);
    expectCleanTransferWorks();
}

TEST_F(BlockReceive, ADeviceInPlaceOfAFileIsNotWrittenTo) {
    form.text2 = QStringLiteral("/dev/null");
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
    const QString file = path(QStringLiteral("got.bin"));
    bool wasOpen = false;
    form.onYield = [&] { wasOpen = wasOpen || (QFile::exists(file) && isOpenHere(file)); };
    BlockSender whole("w.bin", pattern(5000), {});
    connect(whole);
    EXPECT_GT(receive.YModemReceive().value(), 0);
    EXPECT_TRUE(wasOpen);
    EXPECT_FALSE(isOpenHere(file)) << "behind the end";

    BlockSender silent("w.bin", pattern(5000), {{}, {{FaultKind::Silence, 2, 1}}});
    connect(silent);
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_FALSE(isOpenHere(file)) << "behind the abort";

    answerOnce(header(QByteArray("w.bin\0"
                                 "500\0",
                                 10)));
    form.onYield = [&] { model->XferCancel = isOpenHere(file) ? 1 : 0; };
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_FALSE(isOpenHere(file)) << "behind a cancel";
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

TEST_F(BlockReceive, WhatComesBehindABlockIsThrownAwayByItsAcknowledge) {
    const std::array<QByteArray, 4> answers{header(QByteArray("w.bin\0"
                                                              "128\0",
                                                              10)) +
                                                "xy",
                                            QByteArray(), BlockSender::block(1, QByteArray(128, 'd'), 128, '\0') + "z",
                                            "\x04"};
    std::size_t next = 0;
    port.answer = [&](unsigned char) { return next < answers.size() ? answers[next++] : QByteArray(); };
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

TEST_F(BlockReceive, ACancelRightBehindTheHeaderSendsTheRequestFiveTimesAndTheTail) {
    answerOnce(header(QByteArray("w.bin\0"
                                 "128\0",
                                 10)));
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
    form.text2 = path(QStringLiteral("got.bin"));
    form.bar = 0;
    port.sent.clear();
    std::deque<QByteArray> answers{BlockSender::block(1, "no header", 128, '\0'), "\x04"};
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(form.text6, text("0 b"));
    EXPECT_EQ(form.bar, 0);
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("got.bin"))));
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

TEST_F(BlockReceive, ReportsAWholeFileAndWhatBelongsToIt) {
    const QByteArray content = pattern(2461);
    BlockSender sender("w.bin", content, {});
    connect(sender);
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_TRUE(receive.report.whole());
    EXPECT_EQ(receive.report.end, TransferEnd::Finished);
    EXPECT_EQ(receive.report.announced, 2461);
    EXPECT_EQ(receive.report.stored, 2461);
    EXPECT_EQ(receive.report.total, 1024 + 1024 + 1024) << "a rest of 413 bytes fills a long block";
    EXPECT_EQ(receive.report.path, path(text("got.bin")));
    EXPECT_FALSE(receive.report.bitmap);
    EXPECT_FALSE(receive.report.error);
}

TEST_F(BlockReceive, TheFirstHeadersSizeCountsAndARepeatedDataBlockIsNotInOrder) {
    // A data block that reads as a header of 9999 bytes: its repeat makes the receiver begin anew with that size.
    const QByteArray liar = QByteArray("x\0"
                                       "9999\0",
                                       7) +
                            QByteArray(1017, '.');
    std::deque<QByteArray> answers{header(QByteArray("w.bin\0"
                                                     "2461\0",
                                                     11)),
                                   {},
                                   BlockSender::block(1, liar, 1024, '.'),
                                   BlockSender::block(1, liar, 1024, '.'),
                                   BlockSender::block(2, pattern(1024), 1024, '.'),
                                   "\x04"};
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 2048) << "for the window the transfer has ended well";
    EXPECT_FALSE(receive.report.whole());
    EXPECT_FALSE(receive.report.inOrder);
    EXPECT_EQ(receive.report.announced, 2461);
    EXPECT_EQ(sentenceOf(receive.report, 1),
              text("the file is damaged, as data came twice or beyond its size; 1024 of 2461 bytes came"));
}

TEST_F(BlockReceive, ABlockThatEndsWithinItsDataOrItsCheckValueIsAskedForAgain) {
    const QByteArray block = BlockSender::block(1, "abc", 128, '.');
    std::deque<QByteArray> answers{header(QByteArray("w.bin\0"
                                                     "3\0",
                                                     8)),
                                   {},
                                   block.chopped(1),
                                   block.chopped(2),
                                   block.chopped(3),
                                   block,
                                   "\x04"};
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_TRUE(receive.report.whole());
    EXPECT_EQ(stored(), "abc");
    // The header's acknowledge and request, three refusals, the block's acknowledge and the three bytes of the end.
    EXPECT_EQ(port.sent.left(7), "C"
                                 "\x06"
                                 "C"
                                 "\x0F\x0F\x0F"
                                 "\x06");
}

TEST_F(BlockReceive, ARepeatedHeaderBeforeAnyDataIsInOrder) {
    std::deque<QByteArray> answers;
    for (int i = 0; i < 2; ++i) {
        answers.push_back(header(QByteArray("w.bin\0"
                                            "3\0",
                                            8)));
        answers.push_back({});
    }
    answers.push_back(BlockSender::block(1, "abc", 128, '.'));
    answers.push_back("\x04");
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    // "C" brings the header, its acknowledge nothing, the second "C" the header again.
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_TRUE(receive.report.whole());
    EXPECT_EQ(stored(), "abc");
}

TEST_F(BlockReceive, AnEmptySizeAnEarlyEndAndASurplusBlockAreNotWhole) {
    const auto report = [this](const QByteArray& size, int blocks) {
        std::deque<QByteArray> answers{header("w.bin" + QByteArray(1, '\0') + size + '\0'), {}};
        for (int i = 1; i <= blocks; ++i) {
            answers.push_back(BlockSender::block(i, "x", 128, '.'));
        }
        answers.push_back("\x04");
        port.waiting.clear();
        port.answer = [answers](unsigned char) mutable {
            const QByteArray next = answers.empty() ? QByteArray() : answers.front();
            if (!answers.empty()) {
                answers.pop_front();
            }
            return next;
        };
        EXPECT_TRUE(receive.YModemReceive().ok());
        return receive.report;
    };
    const TransferReport empty = report("", 0);
    EXPECT_FALSE(empty.whole());
    EXPECT_EQ(sentenceOf(empty, 1), text("the file is not whole, as the instrument told no size; 0 of 0 bytes came"));
    EXPECT_EQ(sentenceOf(empty, 0), text("文件不完整：仪器没有给出长度；收到 0 / 0 字节"));
    EXPECT_TRUE(report("128", 1).whole());
    EXPECT_TRUE(report("129", 2).whole());
    const TransferReport early = report("129", 1);
    EXPECT_FALSE(early.whole());
    EXPECT_TRUE(early.inOrder);
    EXPECT_EQ(early.stored, 128);
    const TransferReport surplus = report("128", 2);
    EXPECT_FALSE(surplus.whole());
    EXPECT_FALSE(surplus.inOrder);
    EXPECT_EQ(sentenceOf(surplus, 0), text("文件损坏：数据重复或多余；收到 128 / 128 字节"));
}

TEST_F(BlockReceive, ReportsWhyItEnded) {
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_EQ(receive.report.end, TransferEnd::BrokenOff);
    EXPECT_EQ(sentenceOf(receive.report, 0), text("传输中断：仪器没有正确应答；没有收到文件头"));
    form.onYield = [this] { model->XferCancel = 1; };
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_EQ(receive.report.end, TransferEnd::Cancelled);
    EXPECT_EQ(sentenceOf(receive.report, 0), text("用户中断；没有收到文件头"));
    form.onYield = nullptr;
    receive.ReadTimeoutMs = 0;
    EXPECT_FALSE(receive.YModemReceive().ok());
    EXPECT_EQ(receive.report.end, TransferEnd::Error);
    EXPECT_EQ(sentenceOf(receive.report, 0), text("传输出错：Device I/O error；没有收到文件头"));
}

TEST_F(BlockReceive, ATransferThatWasEndedFromOutsideReadsSendsAndShowsNothingMore) {
    const QByteArray content = pattern(5000);
    BlockSender sender("w.bin", content, {});
    connect(sender);
    std::optional<TransferPass> next;
    QByteArray sentBefore;
    bool released = false;
    form.onYield = [&] {
        if (form.bar == 2048 && !next) {
            receive.gate.giveUp();
            auto pass = receive.gate.enterForStart();
            ASSERT_TRUE(pass);
            next.emplace(std::move(*pass));
            sentBefore = port.sent;
            form.text4History.clear();
            port.waiting = "bytes of the next transfer";
            released = !isOpenHere(path(text("got.bin")));
        }
    };
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_EQ(receive.report.end, TransferEnd::Superseded);
    EXPECT_EQ(receiveResult(receive.report), -1);
    EXPECT_TRUE(released) << "its file was closed at once";
    EXPECT_EQ(port.sent, sentBefore);
    EXPECT_EQ(port.waiting, "bytes of the next transfer");
    EXPECT_TRUE(form.text4History.isEmpty());
    EXPECT_EQ(form.bar, 2048);
    EXPECT_EQ(stored(), content.left(2048));
    EXPECT_TRUE(receive.gate.held()) << "the next one's pass is not given away";
    EXPECT_EQ(sentenceOf(receive.report, 1), text("another transfer took its place; 2048 of 5000 bytes came"));
    next.reset();
    form.onYield = nullptr;
    expectCleanTransferWorks();
}

TEST(NameFromTheLine, LosesEveryFolderPart) {
    EXPECT_EQ(withoutFolder(text("a/b\\c:d.bmp")), text("d.bmp"));
    EXPECT_EQ(withoutFolder(text("plain.bmp")), text("plain.bmp"));
    EXPECT_EQ(withoutFolder(text("folder/")), QString());
}

class PlainReceive : public BlockReceive {
protected:
    PlainReceive() { QDir::setCurrent(folder.path()); }
    ~PlainReceive() override { QDir::setCurrent(m_before); }

    /// Silence, a block for the sixth byte that comes, and the end.
    void answerTheSixthByteWith(const QByteArray& block) {
        port.answer = [this, block](unsigned char) {
            ++m_sentBytes;
            return m_sentBytes == 6 ? block : m_sentBytes == 7 ? QByteArray("\x04") : QByteArray();
        };
    }

private:
    int m_sentBytes = 0;
    QString m_before = QDir::currentPath();
};

TEST_F(PlainReceive, TakesEveryBlockAsDataIntoAFixedFile) {
    std::deque<QByteArray> blocks{BlockSender::block(1, "one", 128, '.'), BlockSender::block(1, "one", 128, '.'),
                                  BlockSender::block(2, "two", 1024, '.'), "\x04"};
    port.answer = [&blocks](unsigned char) {
        QByteArray next;
        if (!blocks.empty()) {
            next = blocks.front();
            blocks.pop_front();
        }
        return next;
    };
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128 + 1024); // the repeat of block 1 was acknowledged and dropped
    EXPECT_EQ(stored(QStringLiteral("test.bmp")), "one" + QByteArray(125, '.') + "two" + QByteArray(1021, '.'));
    EXPECT_EQ(port.sent, "C"
                         "\x06\x06\x06\x06");
    EXPECT_TRUE(form.text1.isNull());
    EXPECT_EQ(form.text3, -1) << "it shows nothing";
    EXPECT_TRUE(form.text4History.isEmpty());
    EXPECT_EQ(form.barMaximum, -1);
    EXPECT_EQ(form.bar, -1);
}

TEST_F(PlainReceive, AnAcceptedBlockSetsTheRetriesBackToZero) {
    int sentBytes = 0;
    port.answer = [&sentBytes](unsigned char) {
        ++sentBytes;
        return sentBytes == 5    ? BlockSender::block(1, "one", 128, '.')
               : sentBytes == 10 ? QByteArray("\x04")
                                 : QByteArray();
    };
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    // Four silences in front of the block and four behind it: never five in a row. What was sent last is repeated.
    EXPECT_EQ(port.sent, "CCCCC"
                         "\x06\x06\x06\x06\x06"
                         "\x06");
}

TEST_F(PlainReceive, RepeatsTheRequestAndFallsBackToAChecksumAtTheFifthRetry) {
    // A block of 128 bytes with a sum of 200, and its one-byte checksum: 127 ones and a 73.
    QByteArray data = QByteArray(127, '\x01') + '\x49';
    QByteArray block = QByteArray("\x01\x01\xFE") + data + '\xC8';
    answerTheSixthByteWith(block);
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(port.sent, "CCCCC"
                         "\x0F"
                         "\x06\x06");
    // Ten seconds of waiting and a flush of 100 ms before each of them.
    EXPECT_EQ(port.sentAt, (std::deque<qint64>{100, 10200, 20300, 30400, 40500, 50600, 50600, 50600}));
}

TEST_F(PlainReceive, ComparesTheWholeSumWithItsOneByteSoThatASumBeyond255NeverMatches) {
    // 128 bytes of 2 sum up to 256, whose low byte is 0.
    const QByteArray block = QByteArray("\x01\x01\xFE") + QByteArray(128, '\x02') + '\0';
    answerTheSixthByteWith(block);
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 0);
    EXPECT_EQ(port.sent, "CCCCC"
                         "\x0F"
                         "\x0F"
                         "\x06");
}

TEST_F(PlainReceive, AWrongCheckValueIsRefusedAndTheBlockTakenWhenItComesRight) {
    QByteArray damaged = BlockSender::block(1, "one", 128, '\0');
    damaged[damaged.size() - 1] = static_cast<char>(damaged[damaged.size() - 1] ^ 0x55);
    std::deque<QByteArray> answers{damaged, BlockSender::block(1, "one", 128, '\0'), "\x04"};
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    ASSERT_TRUE(receive.XModemReceive().ok());
    EXPECT_EQ(port.sent, "C"
                         "\x0F"
                         "\x06\x06");
    EXPECT_EQ(stored(QStringLiteral("test.bmp")), "one" + QByteArray(125, '\0'));
}

TEST_F(PlainReceive, ABlockThatEndsWithinItsDataOrItsCheckValueIsRefused) {
    const QByteArray block = BlockSender::block(1, "one", 128, '.');
    std::deque<QByteArray> answers{block.chopped(1), block.chopped(2), block.chopped(3), block, "\x04"};
    port.answer = [&answers](unsigned char) {
        const QByteArray next = answers.empty() ? QByteArray() : answers.front();
        if (!answers.empty()) {
            answers.pop_front();
        }
        return next;
    };
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(port.sent, "C"
                         "\x0F\x0F\x0F"
                         "\x06\x06");
}

TEST_F(PlainReceive, AbortsAtTheFifthRetryBehindAStartByte) {
    port.answer = [](unsigned char byte) { return byte == 0x12 || byte == 8 ? QByteArray() : QByteArray("\x01\x01"); };
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), -1);
    EXPECT_EQ(port.sent, "C"
                         "\x0F\x0F\x0F\x0F"
                         "\x12\x12\x12\x12\x12"
                         "\x08\x08\x08\x08\x08");
}

} // namespace
