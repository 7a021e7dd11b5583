// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ports/byteport.h"
#include "platform/text/runtimeerror.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QString>

#include <functional>

namespace sixtrace {

/// The serial control: a port that is chosen by number, has its line settings as text, and opens and closes. A function
/// tells which device has a number. Waits sleep in the event loop.
///
/// Opening a port that this program or another one holds is error 8005. When the line of an open port goes away (the
/// adapter is pulled out), no error is raised: bytes that had come can still be read, and bytes that are sent are lost.
/// The descriptor is closed at once, as it would always be ready and keep the event loop busy.
class MSComm final : public BytePort {
public:
    /// Gives the device of a port number, and an empty text when there is none.
    using Locator = std::function<QString(int number)>;
    explicit MSComm(Locator locate);
    ~MSComm() override;

    /// Sets the number of the port to use. Error 8005 while the port is open.
    Outcome setCommPort(int number);
    [[nodiscard]] int CommPort() const { return m_number; }
    /// Sets the line settings from a text such as "115200,N,8,1": baud rate, parity (N, E, O, M or S), data bits (5 to
    /// 8), stop bits (1, 1.5 or 2). Error 5 for any other text.
    Outcome setSettings(const QString& settings);
    [[nodiscard]] bool PortOpen() const { return !m_location.isEmpty(); }
    /// Opens or closes the port. Error 68 when there is no such port, 8005 when it is taken, 70 without the rights, 57
    /// for any other reason. Closing waits until what was written has been sent, at most half a second, and never
    /// fails.
    Outcome setPortOpen(bool open);
    /// Opens and closes port `number`, with line settings unless they are empty, and returns the error of that. An open
    /// control stays open: its own port counts as one that opens, and a second control tries any other.
    Outcome tryPort(int number, const QString& settings = {});
    /// The device of port `number`; empty when there is none.
    [[nodiscard]] QString locationOf(int number) const { return m_locate(number); }
    /// Whether the line has gone since the port was opened.
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
    QByteArray m_rest;  ///< bytes that had come before the line went away
    int m_number = 1;
    bool m_lost = false;
};

} // namespace sixtrace
