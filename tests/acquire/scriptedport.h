// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/serialreceive.h"
#include "platform/byteport.h"

#include <QStringList>

#include <algorithm>
#include <deque>
#include <functional>

namespace sixtrace {

/// A line without wire and time: every byte sent is answered by a function, waiting moves a clock of its own.
class ScriptedPort final : public BytePort {
public:
    /// The bytes that the other side sends upon one byte.
    std::function<QByteArray(unsigned char byte)> answer = [](unsigned char) { return QByteArray(); };
    QByteArray waiting; ///< in the receive buffer
    QByteArray sent;    ///< everything that went out
    std::deque<qint64> sentAt;
    qint64 now = 0;
    bool lost = false;                        ///< the line is gone: waits without limit end
    std::function<QByteArray()> whileWaiting; ///< bytes that come in time, asked once per wait that lacks some

    int InBufferCount() override { return static_cast<int>(waiting.size()); }
    void discard() override { waiting.clear(); }
    QByteArray Input(int count) override {
        QByteArray taken = waiting.left(count);
        waiting.remove(0, count);
        return taken;
    }
    void Output(const QByteArray& bytes) override {
        for (const char byte : bytes) {
            sent += byte;
            sentAt.push_back(now);
            waiting += answer(static_cast<unsigned char>(byte));
        }
    }
    Waited waitForBytes(int count, int timeoutMs) override {
        if (waiting.size() < count && whileWaiting) {
            waiting += whileWaiting();
        }
        if (waiting.size() >= count) {
            return Waited::Enough;
        }
        if (timeoutMs == 0) {
            // In life this wait would never end; a script that comes here has gone wrong unless it says so.
            return Waited::Lost;
        }
        now += timeoutMs;
        return Waited::TimedOut;
    }
    qint64 clock() override { return now; }
};

/// The receive window as a record of what it was told.
class RecordedForm final : public ReceiveForm {
public:
    QString text1;
    QString text2;
    int text3 = -1;
    int text4 = -1;
    QString text5;
    QString text6;
    std::int32_t barMaximum = -1;
    std::int32_t bar = -1;
    QStringList text4History;
    std::function<void()> onYield;

    QString Text2() override { return text2; }
    void setText1(const QString& name) override { text1 = name; }
    void setText2(const QString& path) override { text2 = path; }
    void setText3(int blockNo) override { text3 = blockNo; }
    void setText4(int retries) override {
        text4 = retries;
        text4History << QString::number(retries);
    }
    void setAmounts(const QString& received, const QString& size) override {
        text5 = received;
        text6 = size;
    }
    void setBarMaximum(std::int32_t maximum) override { barMaximum = maximum; }
    void setBar(std::int32_t value) override { bar = value; }
    void yield() override {
        if (onYield) {
            onYield();
        }
    }
};

} // namespace sixtrace
