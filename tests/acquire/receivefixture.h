// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/scriptedport.h"
#include "instrument/blocksender.h"
#include "support/strings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <deque>
#include <memory>

namespace sixtrace::test {

/// A receiver on a scripted line, which stores to a folder of its own.
class ReceiveFixture : public ::testing::Test {
protected:
    ReceiveFixture() {
        form.text2 = path(u"got.bin"_s);
        receive.ReadTimeoutMs = 10000;
    }

    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    [[nodiscard]] QByteArray stored(const QString& name = u"got.bin"_s) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    void store(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    /// Bytes that differ from block to block and hold every value.
    [[nodiscard]] static QByteArray pattern(int size, int seed = 1) {
        QByteArray bytes;
        unsigned state = static_cast<unsigned>(seed) * 2654435761U + 1;
        for (int i = 0; i < size; ++i) {
            state = state * 1664525U + 1013904223U;
            bytes += static_cast<char>(state >> 24);
        }
        return bytes;
    }
    void connect(BlockSender& sender) {
        port.answer = [&sender](unsigned char byte) { return sender.answer(byte); };
    }
    /// Receives a clean file over the same line and receiver.
    void expectCleanTransferWorks() {
        const QByteArray content = pattern(3000, 77);
        BlockSender sender("again.bin", content, {});
        connect(sender);
        port.waiting.clear();
        receive.ReadTimeoutMs = 10000;
        form.text2 = path(u"again.bin"_s);
        const Result<std::int32_t> result = receive.YModemReceive();
        ASSERT_TRUE(result.ok());
        EXPECT_EQ(result.value(), 2 * 1024 + 1024);
        EXPECT_EQ(stored(u"again.bin"_s), content);
        EXPECT_TRUE(sender.state() == BlockSender::State::Done);
    }

    QTemporaryDir folder;
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    ScriptedPort port;
    RecordedForm form;
    Receiver receive{port, form, *model};
};

/// The same with answers from a list.
class BlockReceive : public ReceiveFixture {
protected:
    /// Answers the first byte with the given bytes and stays silent from then on.
    void answerOnce(const QByteArray& bytes) { answerInTurn({bytes}); }
    /// Answers each byte with the next of the answers, and stays silent after the last.
    void answerInTurn(std::deque<QByteArray> answers) {
        port.answer = [left = std::move(answers)](unsigned char) mutable {
            if (left.empty()) {
                return QByteArray();
            }
            QByteArray next = left.front();
            left.pop_front();
            return next;
        };
    }
    static void expectError(const Result<std::int32_t>& result, ErrorNumber number) {
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.error().number, number);
    }
};

} // namespace sixtrace::test
