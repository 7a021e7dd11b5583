// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <optional>
#include <termios.h>
#include <thread>
#include <vector>

namespace sixtrace::test {

/// The other end of a real pseudo terminal. It runs a script on a thread of its own and records all bytes of both
/// directions in the order in which it sends and receives them.
class PtyPeer {
public:
    PtyPeer();
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    /// The device that the program opens.
    [[nodiscard]] QString location() const { return m_location; }

    /// The line settings that the program has made.
    [[nodiscard]] termios settings() const;

    /// Runs a script on the peer's thread.
    void play(std::function<void(PtyPeer&)> script);
    /// Lets events run until the script has ended, then until the program has sent nothing for 50 ms.
    void finish();

    // For the script.

    void send(const QByteArray& bytes);
    /// Waits for `count` bytes, at most five seconds for each.
    void take(int count);
    /// The next byte; nothing when none comes in time.
    std::optional<unsigned char> takeOne(int milliseconds);
    static void pause(int milliseconds);
    /// Waits long enough for the program to begin its next wait.
    static void untilItWaits() { pause(500); }

    /// One item for each run of bytes in one direction: "> 01 FF" was sent to the program, "< 43" came from it.
    [[nodiscard]] std::vector<QByteArray> transcript() const { return m_transcript; }
    /// An item of a transcript, to compare with.
    [[nodiscard]] static QByteArray sent(const QByteArray& bytes) { return "> " + bytes.toHex(' '); }
    [[nodiscard]] static QByteArray came(const QByteArray& bytes) { return "< " + bytes.toHex(' '); }

private:
    void note(char direction, const QByteArray& bytes);

    int m_master = -1;
    int m_slave = -1; ///< kept open, so that the line stays while the program closes it and opens it again
    QString m_location;
    std::thread m_thread;
    std::atomic<bool> m_over = true;
    std::vector<QByteArray> m_transcript;
    char m_direction = 0;
};

} // namespace sixtrace::test
