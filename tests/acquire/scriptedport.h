// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/serialreceive.h"
#include "capture/publicm.h"
#include "platform/ports/byteport.h"

#include <QStringList>

#include <algorithm>
#include <deque>
#include <functional>
#include <limits>

namespace sixtrace::test {

/// A line without hardware and real time. A function answers every byte that is sent, and a wait advances a clock.
class ScriptedPort final : public BytePort {
public:
    /// The bytes that the other side sends when one byte has come.
    std::function<QByteArray(unsigned char byte)> answer = [](unsigned char) { return QByteArray(); };
    QByteArray waiting; ///< in the receive buffer
    QByteArray sent;    ///< all bytes that the receiver has sent
    std::deque<qint64> sentAt;
    qint64 now = 0;
    bool lost = false; ///< whether the line has gone, which ends waits without limit
    std::function<QByteArray()>
        whileWaiting; ///< gives bytes that come during a wait; called once in each wait that lacks some

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
            // On a real line this wait would never end. A script gets here on purpose only.
            return Waited::Lost;
        }
        now += timeoutMs;
        return Waited::TimedOut;
    }
    qint64 clock() override { return now; }
};

/// Records the steps as the receive window shows them.
class RecordedForm {
public:
    QString text1;
    QString text2; ///< path to store to
    int text3 = -1;
    int text4 = -1;
    QString text5;
    QString text6;
    std::int32_t barMaximum = -1;
    std::int32_t bar = -1;
    QStringList text4History;
    std::function<void()> onYield;

    void show(const ReceiveStep& step) {
        if (const auto* header = std::get_if<HeaderRead>(&step)) {
            text1 = header->name;
            barMaximum = header->size == std::numeric_limits<std::int32_t>::max() ? barMaximum : header->size + 1;
        } else if (const auto* bitmap = std::get_if<StoresAs>(&step)) {
            text2 = bitmap->path;
        } else if (const auto* came = std::get_if<BytesCame>(&step)) {
            bar = came->total;
        } else if (const auto* block = std::get_if<BlockTaken>(&step)) {
            text3 = block->next;
            setText4(0);
            text5 = amountText(block->total, block->size);
            text6 = amountText(block->size, block->size);
        } else if (const auto* retried = std::get_if<Retried>(&step)) {
            setText4(retried->retries);
        }
    }

private:
    void setText4(int retries) {
        text4 = retries;
        text4History << QString::number(retries);
    }
};

/// A receiver with such a record instead of its window. It sets the model's fields as the window does.
class Receiver {
public:
    Receiver(BytePort& port, RecordedForm& form, publicM& model)
        : m_receive(port)
        , m_form(form)
        , m_model(model) {}

    [[nodiscard]] Result<std::int32_t> YModemReceive() {
        const auto pass = gate.enter();
        m_model.XferCancel = 0;
        m_model.ReceivedFile = m_form.text2;
        report = m_receive.YModemReceive(*pass, {.path = m_form.text2,
                                                 .bitmapFolder = {},
                                                 .cancelled = [this] { return m_model.XferCancel == 1; },
                                                 .show = [this](const ReceiveStep& step) { m_form.show(step); },
                                                 .yield =
                                                     [this] {
                                                         if (m_form.onYield) {
                                                             m_form.onYield();
                                                         }
                                                     }});
        m_model.ReceivedFile = report.path;
        return result();
    }
    [[nodiscard]] Result<std::int32_t> XModemReceive() {
        const auto pass = gate.enter();
        report = m_receive.XModemReceive(*pass);
        return result();
    }
    [[nodiscard]] bool running() const { return gate.held(); }

private:
    SerialReceive m_receive;
    RecordedForm& m_form;
    publicM& m_model;

public:
    TransferGate gate;
    TransferReport report;
    std::int16_t& ReadTimeoutMs = m_receive.ReadTimeoutMs;

private:
    [[nodiscard]] Result<std::int32_t> result() const {
        return report.error ? Result<std::int32_t>(*report.error) : Result<std::int32_t>(receiveResult(report));
    }
};

} // namespace sixtrace::test
