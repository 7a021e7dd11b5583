// SPDX-License-Identifier: MIT
#include "acquire/ptypeer.h"

#include <QCoreApplication>

#include <array>
#include <chrono>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <unistd.h>

namespace sixtrace::test {

namespace {

constexpr int kPatienceMs = 5000;
constexpr int kLastBytesMs = 50;

} // namespace

PtyPeer::PtyPeer() {
    std::array<char, 128> name{};
    termios raw{};
    cfmakeraw(&raw);
    if (openpty(&m_master, &m_slave, name.data(), &raw, nullptr) != 0) {
        throw std::runtime_error("no pseudo terminal");
    }
    m_location = QString::fromLatin1(name.data());
}

PtyPeer::~PtyPeer() {
    if (m_thread.joinable()) {
        m_thread.join();
    }
    close(m_master);
    close(m_slave);
}

termios PtyPeer::settings() const {
    termios found{};
    if (tcgetattr(m_slave, &found) != 0) {
        throw std::runtime_error("no line settings");
    }
    return found;
}

void PtyPeer::play(std::function<void(PtyPeer&)> script) {
    m_over = false;
    m_thread = std::thread([this, work = std::move(script)] {
        work(*this);
        m_over = true;
    });
}

void PtyPeer::finish() {
    while (!m_over) { // the script may still ask this thread for something
        QCoreApplication::processEvents(QEventLoop::AllEvents, kLastBytesMs);
        pause(1);
    }
    m_thread.join();
    pollfd waiting{m_master, POLLIN, 0};
    while (poll(&waiting, 1, kLastBytesMs) == 1) {
        take(1);
    }
}

void PtyPeer::send(const QByteArray& bytes) {
    note('>', bytes);
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t part = write(m_master, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (part <= 0) {
            return;
        }
        done += part;
    }
}

void PtyPeer::take(int count) {
    for (int i = 0; i < count; ++i) {
        pollfd waiting{m_master, POLLIN, 0};
        char byte = 0;
        if (poll(&waiting, 1, kPatienceMs) != 1 || read(m_master, &byte, 1) != 1) {
            note('<', "(missing)");
            return;
        }
        note('<', QByteArray(1, byte));
    }
}

std::optional<unsigned char> PtyPeer::takeOne(int milliseconds) {
    pollfd waiting{m_master, POLLIN, 0};
    char byte = 0;
    if (poll(&waiting, 1, milliseconds) != 1 || read(m_master, &byte, 1) != 1) {
        return std::nullopt;
    }
    note('<', QByteArray(1, byte));
    return static_cast<unsigned char>(byte);
}

void PtyPeer::pause(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void PtyPeer::note(char direction, const QByteArray& bytes) {
    if (direction == m_direction) {
        m_transcript.back() += ' ' + bytes.toHex(' ');
    } else {
        m_transcript.push_back(QByteArray(1, direction) + ' ' + bytes.toHex(' '));
    }
    m_direction = direction;
}

} // namespace sixtrace::test
