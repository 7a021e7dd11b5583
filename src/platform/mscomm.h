// SPDX-License-Identifier: MIT
#pragma once

#include "platform/byteport.h"
#include "platform/runtimeerror.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QString>

#include <functional>

namespace sixtrace {

/// The serial control: a numbered port that opens and closes, with line settings as text, over the platform's serial
/// port. Waiting sleeps in the event loop. Whoever sets the numbers says, by a function, where each is found.
///
/// A port that the program itself or another one holds answers an open with error 8005. A line that goes away while
/// open (an adapter pulled out) makes no error: nothing comes any more, and what is sent is lost.
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
    [[nodiscard]] bool PortOpen() const { return m_port.isOpen(); }
    Outcome setPortOpen(bool open);

    [[nodiscard]] int InBufferCount() override;
    void discard() override;
    [[nodiscard]] QByteArray Input(int count) override;
    void Output(const QByteArray& bytes) override;
    [[nodiscard]] Waited waitForBytes(int count, int timeoutMs) override;
    [[nodiscard]] qint64 clock() override { return m_clock.elapsed(); }

private:
    Outcome openAt(const QString& location);
    [[nodiscard]] RuntimeError openError(const QString& location) const;

    Locator m_locate;
    QSerialPort m_port;
    QElapsedTimer m_clock;
    QString m_location; ///< of the open port
    int m_number = 1;
    bool m_lost = false;
};

} // namespace sixtrace
