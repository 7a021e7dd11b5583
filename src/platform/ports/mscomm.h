// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ports/byteport.h"
#include "platform/text/runtimeerror.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QString>

#include <functional>

namespace sixtrace {

/// The serial control: a numbered port that opens and closes, with line settings as text, over the platform's serial
/// port. Waiting sleeps in the event loop. Whoever sets the numbers says, by a function, where each is found.
///
/// A port that the program itself or another one holds answers an open with error 8005. A line that goes away while
/// open (an adapter pulled out) makes no error: nothing more comes than what had come, and what is sent is lost. It
/// costs no processor time either, as the descriptor, which would be ready for ever, is closed at once.
class MSComm final : public BytePort {
public:
    using Locator = std::function<QString(int number)>;
    explicit MSComm(Locator locate);
    ~MSComm() override;

    /// Number of the port to use. Error 8005 while the port is open, as the number then belongs to an open line.
    Outcome setCommPort(int number);
    [[nodiscard]] int CommPort() const { return m_number; }
    /// Line settings, "115200,N,8,1": rate, parity letter, data bits, stop bits. Error 5
    /// for a text that says no such thing.
    Outcome setSettings(const QString& settings);
    [[nodiscard]] bool PortOpen() const { return !m_location.isEmpty(); }
    /// Opens or closes. Closing waits, at most half a second, until what was written has left.
    Outcome setPortOpen(bool open);
    /// Whether port `number` opens, with line settings unless these are empty. A control that is open stays as it is:
    /// its own port is proven by being open, and another one is tried by a second control.
    Outcome tryPort(int number, const QString& settings = {});
    /// Where port `number` is; empty where there is none.
    [[nodiscard]] QString locationOf(int number) const { return m_locate(number); }
    /// Whether the open line has gone.
    [[nodiscard]] bool lost() const { return m_lost; }

    [[nodiscard]] int InBufferCount() override;
    void discard() override;
    [[nodiscard]] QByteArray Input(int count) override;
    void Output(const QByteArray& bytes) override;
    [[nodiscard]] Waited waitForBytes(int count, int timeoutMs) override;
    [[nodiscard]] qint64 clock() override { return m_clock.elapsed(); }

private:
    Outcome openAt(const QString& location);
    void close();
    void noteLoss();
    void drain();
    [[nodiscard]] RuntimeError openError(const QString& location) const;

    Locator m_locate;
    QSerialPort m_port;
    QElapsedTimer m_clock;
    QString m_location; ///< of the open port; empty while closed
    QByteArray m_rest;  ///< what had come before the line went away
    int m_number = 1;
    bool m_lost = false;
};

} // namespace sixtrace
