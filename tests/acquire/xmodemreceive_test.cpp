// SPDX-License-Identifier: MIT
#include "acquire/receivefixture.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

class PlainReceive : public BlockReceive {
protected:
    PlainReceive() { QDir::setCurrent(folder.path()); }
    ~PlainReceive() override { QDir::setCurrent(m_before); }

    /// Answers the sixth byte with a block, the seventh with the end, and no other byte.
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
    const std::deque<QByteArray> blocks{BlockSender::block(1, "one", 128, '.'), BlockSender::block(1, "one", 128, '.'),
                                        BlockSender::block(2, "two", 1024, '.'), "\x04"};
    answerInTurn(blocks);
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128 + 1024); // the repeat of block 1 was acknowledged and dropped
    EXPECT_EQ(stored(u"test.bmp"_s), "one" + QByteArray(125, '.') + "two" + QByteArray(1021, '.'));
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
    // The line is silent four times before the block and four times after it, never five times in a row. What was sent
    // last is repeated.
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
    const std::deque<QByteArray> answers{damaged, BlockSender::block(1, "one", 128, '\0'), "\x04"};
    answerInTurn(answers);
    ASSERT_TRUE(receive.XModemReceive().ok());
    EXPECT_EQ(port.sent, "C"
                         "\x0F"
                         "\x06\x06");
    EXPECT_EQ(stored(u"test.bmp"_s), "one" + QByteArray(125, '\0'));
}

TEST_F(PlainReceive, ABlockThatEndsWithinItsDataOrItsCheckValueIsRefused) {
    const QByteArray block = BlockSender::block(1, "one", 128, '.');
    const std::deque<QByteArray> answers{block.chopped(1), block.chopped(2), block.chopped(3), block, "\x04"};
    answerInTurn(answers);
    const auto result = receive.XModemReceive();
    ASSERT_TRUE(result.ok());
    EXPECT_EQ(result.value(), 128);
    EXPECT_EQ(port.sent, "C"
                         "\x0F\x0F\x0F"
                         "\x06\x06");
}

TEST_F(PlainReceive, AbortsAtTheFifthRetryAfterAStartByte) {
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
} // namespace sixtrace::test
