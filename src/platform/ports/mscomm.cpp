// SPDX-License-Identifier: MIT
#include "platform/ports/mscomm.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QSet>
#include <QStringList>
#include <QThread>
#include <QTimer>

#include <optional>

#ifdef Q_OS_UNIX
#include <sys/ioctl.h>
#include <termios.h>
#endif

namespace sixtrace {

namespace {

/// In bytes. Far more than any block, and a limit for a hostile sender.
constexpr qint64 kReceiveBuffer = 65536;

/// Long enough for the ten bytes of an abort on the slowest line, which takes 200 ms for them.
constexpr qint64 kLongestDrainMs = 500;

/// Devices that this process has open. The system's own lock does not keep a privileged user from opening them again.
QSet<QString>& heldPorts() {
    static QSet<QString> held;
    return held;
}

std::optional<QSerialPort::Parity> parityOf(const QString& letter) {
    const QString upper = letter.toUpper();
    if (upper == u"N") {
        return QSerialPort::NoParity;
    }
    if (upper == u"E") {
        return QSerialPort::EvenParity;
    }
    if (upper == u"O") {
        return QSerialPort::OddParity;
    }
    if (upper == u"M") {
        return QSerialPort::MarkParity;
    }
    return upper == u"S" ? std::optional(QSerialPort::SpaceParity) : std::nullopt;
}

std::optional<QSerialPort::StopBits> stopBitsOf(const QString& text) {
    if (text == u"1") {
        return QSerialPort::OneStop;
    }
    if (text == u"1.5") {
        return QSerialPort::OneAndHalfStop;
    }
    return text == u"2" ? std::optional(QSerialPort::TwoStop) : std::nullopt;
}

} // namespace

MSComm::MSComm(Locator locate)
    : m_locate(std::move(locate)) {
    m_clock.start();
    m_port.setReadBufferSize(kReceiveBuffer);
    QObject::connect(&m_port, &QSerialPort::errorOccurred, &m_port, [this](QSerialPort::SerialPortError error) {
        if (error == QSerialPort::ResourceError || error == QSerialPort::ReadError) {
            noteLoss();
        }
    });
}

MSComm::~MSComm() {
    close();
}

void MSComm::noteLoss() {
    if (m_lost || !PortOpen()) {
        return;
    }
    m_lost = true;
    // Later, since the port must not be closed while it handles its error.
    QMetaObject::invokeMethod(
        &m_port,
        [this] {
            if (m_lost && m_port.isOpen()) {
                m_rest += m_port.readAll();
                m_port.close();
            }
        },
        Qt::QueuedConnection);
}

Outcome MSComm::setCommPort(int number) {
    if (PortOpen()) {
        return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
    }
    m_number = number;
    return success();
}

Outcome MSComm::setSettings(const QString& settings) {
    const QStringList fields = settings.split(u',');
    if (fields.size() != 4) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    const qint32 rate = fields.at(0).toInt();
    const auto parity = parityOf(fields.at(1));
    const int dataBits = fields.at(2).toInt();
    const auto stopBits = stopBitsOf(fields.at(3));
    if (rate <= 0 || !parity || dataBits < QSerialPort::Data5 || dataBits > QSerialPort::Data8 || !stopBits) {
        return RuntimeError::of(ErrorNumber::InvalidCall);
    }
    const bool taken = m_port.setBaudRate(rate) && m_port.setParity(*parity) &&
                       m_port.setDataBits(static_cast<QSerialPort::DataBits>(dataBits)) &&
                       m_port.setStopBits(*stopBits);
    return taken ? success() : Outcome(RuntimeError::of(ErrorNumber::DeviceIo));
}

Outcome MSComm::setPortOpen(bool open) {
    if (!open && !PortOpen()) {
        return success();
    }
    if (!open) {
        close();
        return success();
    }
    if (PortOpen()) {
        return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
    }
    const QString location = m_locate(m_number);
    if (location.isEmpty()) {
        return RuntimeError::of(ErrorNumber::DeviceUnavailable);
    }
    return openAt(location);
}

Outcome MSComm::tryPort(int number, const QString& settings) {
    if (PortOpen()) {
        if (m_locate(number) == m_location) {
            return success();
        }
        MSComm second(m_locate);
        return second.tryPort(number, settings);
    }
    Outcome done = setCommPort(number);
    if (done && !settings.isEmpty()) {
        done = setSettings(settings);
    }
    if (done) {
        done = setPortOpen(true);
    }
    return done ? setPortOpen(false) : done;
}

void MSComm::close() {
    if (!PortOpen()) {
        return;
    }
    if (m_port.isOpen()) {
        drain();
        m_port.close();
    }
    heldPorts().remove(m_location);
    m_location.clear();
    m_rest.clear();
    m_lost = false;
}

/// Waits until what was written has been sent. Closing restores the line's old settings, so bytes that are sent later
/// would go out at another rate.
void MSComm::drain() {
    if (m_lost) {
        return;
    }
    QElapsedTimer waited;
    waited.start();
    while (m_port.bytesToWrite() > 0 && waited.elapsed() < kLongestDrainMs &&
           m_port.waitForBytesWritten(static_cast<int>(kLongestDrainMs - waited.elapsed()))) {
    }
#ifdef Q_OS_UNIX
    int queued = 0;
    while (::ioctl(m_port.handle(), TIOCOUTQ, &queued) == 0 && queued > 0 && waited.elapsed() < kLongestDrainMs) {
        QThread::msleep(1);
    }
    if (queued == 0) {
        static_cast<void>(::tcdrain(
            m_port.handle())); // the adapter's own buffer. A line that is stuck has not emptied the queue above
    }
#endif
}

Outcome MSComm::openAt(const QString& location) {
    if (heldPorts().contains(location)) {
        return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
    }
    m_port.setPortName(location);
    if (!m_port.open(QIODevice::ReadWrite)) {
        const RuntimeError error = openError(location);
        m_port.clearError();
        return error;
    }
    // Instruments watch these lines. A pseudo terminal has none: setting them fails, which does not matter.
    static_cast<void>(m_port.setDataTerminalReady(true));
    static_cast<void>(m_port.setRequestToSend(true));
    m_port.clearError();
    m_location = location;
    heldPorts().insert(location);
    return success();
}

RuntimeError MSComm::openError(const QString& location) const {
    const QFileInfo device(location);
    switch (m_port.error()) {
    case QSerialPort::PermissionError:
        // The port has one error for a port that is taken and one that is forbidden. The file's rights tell which it
        // is.
        return RuntimeError::of(device.isReadable() && device.isWritable() ? ErrorNumber::PortAlreadyOpen
                                                                           : ErrorNumber::PermissionDenied);
    case QSerialPort::DeviceNotFoundError:
        return RuntimeError::of(ErrorNumber::DeviceUnavailable);
    case QSerialPort::OpenError:
        return RuntimeError::of(ErrorNumber::PortAlreadyOpen);
    default:
        return RuntimeError::of(ErrorNumber::DeviceIo);
    }
}

int MSComm::InBufferCount() {
    return static_cast<int>(m_rest.size() + m_port.bytesAvailable());
}

void MSComm::discard() {
    m_rest.clear();
    if (m_port.isOpen()) {
        m_port.clear(QSerialPort::Input);
    }
}

QByteArray MSComm::Input(int count) {
    QByteArray taken = m_rest.left(count);
    m_rest.remove(0, taken.size());
    if (m_port.isOpen()) {
        taken += m_port.read(count - taken.size());
    }
    return taken;
}

void MSComm::Output(const QByteArray& bytes) {
    if (m_port.isOpen() && !m_lost) {
        m_port.write(bytes);
        m_port.flush();
    }
}

Waited MSComm::waitForBytes(int count, int timeoutMs) {
    if (InBufferCount() >= count) {
        return Waited::Enough;
    }
    QEventLoop loop;
    QTimer timeOut;
    timeOut.setSingleShot(true);
    timeOut.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timeOut, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&m_port, &QSerialPort::readyRead, &loop, [this, &loop, count] {
        if (InBufferCount() >= count) {
            loop.quit();
        }
    });
    // A port that is closed during the wait ends it. A line that goes away also closes the port, but then a wait with a
    // limit runs to its end.
    QObject::connect(&m_port, &QSerialPort::aboutToClose, &loop, [this, &loop, timeoutMs] {
        if (!m_lost || timeoutMs <= 0) {
            loop.quit();
        }
    });
    if (timeoutMs > 0) {
        timeOut.start(timeoutMs);
    } else if (!PortOpen() || m_lost) {
        return Waited::Lost;
    }
    loop.exec();
    if (InBufferCount() >= count) {
        return Waited::Enough;
    }
    return timeoutMs > 0 ? Waited::TimedOut : Waited::Lost;
}

} // namespace sixtrace
