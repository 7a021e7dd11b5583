// SPDX-License-Identifier: MIT
#include "acquire/receivefixture.h"
#include "support/openfiles.h"
#include "support/strings.h"

#include <optional>

namespace sixtrace::test {
namespace {

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
    EXPECT_EQ(receive.report.path, path(u"got.bin"_s));
    EXPECT_FALSE(receive.report.bitmap);
    EXPECT_FALSE(receive.report.error);
}

TEST_F(BlockReceive, TheFirstHeadersSizeCountsAndARepeatedDataBlockIsNotInOrder) {
    // A data block that can be read as a header of 9999 bytes. Sent twice, it makes the receiver begin again with that
    // size.
    const QByteArray liar = QByteArray("x\0"
                                       "9999\0",
                                       7) +
                            QByteArray(1017, '.');
    const std::deque<QByteArray> answers{BlockSender::header("w.bin", "2461"),
                                         {},
                                         BlockSender::block(1, liar, 1024, '.'),
                                         BlockSender::block(1, liar, 1024, '.'),
                                         BlockSender::block(2, pattern(1024), 1024, '.'),
                                         "\x04"};
    answerInTurn(answers);
    const auto result = receive.YModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 2048) << "for the window the transfer has ended well";
    EXPECT_FALSE(receive.report.whole());
    EXPECT_FALSE(receive.report.inOrder);
    EXPECT_EQ(receive.report.announced, 2461);
    EXPECT_EQ(sentenceOf(receive.report, Language::English),
              u"the file is damaged, as data came twice or beyond its size; 1024 of 2461 bytes came"_s);
}

TEST_F(BlockReceive, ABlockThatEndsWithinItsDataOrItsCheckValueIsAskedForAgain) {
    const QByteArray block = BlockSender::block(1, "abc", 128, '.');
    const std::deque<QByteArray> answers{
        BlockSender::header("w.bin", "3"), {}, block.chopped(1), block.chopped(2), block.chopped(3), block, "\x04"};
    answerInTurn(answers);
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
        answers.push_back(BlockSender::header("w.bin", "3"));
        answers.emplace_back();
    }
    answers.push_back(BlockSender::block(1, "abc", 128, '.'));
    answers.emplace_back("\x04");
    answerInTurn(answers);
    // "C" is answered with the header, its acknowledge with nothing, and the second "C" with the header again.
    ASSERT_TRUE(receive.YModemReceive().ok());
    EXPECT_TRUE(receive.report.whole());
    EXPECT_EQ(stored(), "abc");
}

TEST_F(BlockReceive, AnEmptySizeAnEarlyEndAndASurplusBlockAreNotWhole) {
    const auto report = [this](const QByteArray& size, int blocks) {
        std::deque<QByteArray> answers{BlockSender::header("w.bin", size), {}};
        for (int i = 1; i <= blocks; ++i) {
            answers.push_back(BlockSender::block(i, "x", 128, '.'));
        }
        answers.emplace_back("\x04");
        port.waiting.clear();
        answerInTurn(answers);
        EXPECT_TRUE(receive.YModemReceive().ok());
        return receive.report;
    };
    const TransferReport empty = report("", 0);
    EXPECT_FALSE(empty.whole());
    EXPECT_EQ(sentenceOf(empty, Language::English),
              u"the file is not whole, as the instrument told no size; 0 of 0 bytes came"_s);
    EXPECT_EQ(sentenceOf(empty, Language::Chinese), u"文件不完整：仪器没有给出长度；收到 0 / 0 字节"_s);
    EXPECT_TRUE(report("128", 1).whole());
    EXPECT_TRUE(report("129", 2).whole());
    const TransferReport early = report("129", 1);
    EXPECT_FALSE(early.whole());
    EXPECT_TRUE(early.inOrder);
    EXPECT_EQ(early.stored, 128);
    const TransferReport surplus = report("128", 2);
    EXPECT_FALSE(surplus.whole());
    EXPECT_FALSE(surplus.inOrder);
    EXPECT_EQ(sentenceOf(surplus, Language::Chinese), u"文件损坏：数据重复或多余；收到 128 / 128 字节"_s);
}

TEST_F(BlockReceive, ReportsWhyItEnded) {
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_EQ(receive.report.end, TransferEnd::BrokenOff);
    EXPECT_EQ(sentenceOf(receive.report, Language::Chinese), u"传输中断：仪器没有正确应答；没有收到文件头"_s);
    form.onYield = [this] { model->XferCancel = 1; };
    EXPECT_EQ(receive.YModemReceive().value(), -1);
    EXPECT_EQ(receive.report.end, TransferEnd::Cancelled);
    EXPECT_EQ(sentenceOf(receive.report, Language::Chinese), u"用户中断；没有收到文件头"_s);
    form.onYield = nullptr;
    receive.ReadTimeoutMs = 0;
    EXPECT_FALSE(receive.YModemReceive().ok());
    EXPECT_EQ(receive.report.end, TransferEnd::Error);
    EXPECT_EQ(sentenceOf(receive.report, Language::Chinese), u"传输出错：Device I/O error；没有收到文件头"_s);
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
            released = !isOpenHere(path(u"got.bin"_s));
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
    EXPECT_EQ(sentenceOf(receive.report, Language::English),
              u"another transfer took its place; 2048 of 5000 bytes came"_s);
    next.reset();
    form.onYield = nullptr;
    expectCleanTransferWorks();
}

} // namespace
} // namespace sixtrace::test
