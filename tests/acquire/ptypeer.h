// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <termios.h>
#include <thread>
#include <vector>

namespace sixtrace::test {

/// The other end of a real pseudo terminal: a scripted peer on a thread of its own that keeps the whole transcript of
/// the line in the order in which it saw it.
class PtyPeer {
public:
    PtyPeer();
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    /// The device that the program opens.
    [[nodiscard]] QString location() const { return m_location; }

    /// How the program has set the line.
    [[nodiscard]] termios settings() const;

    /// Runs a script on the peer's thread.
    void play(std::function<void(PtyPeer&)> script);
    /// Lets events run until the script's end, then waits for whatever the program still sends within 50 ms.
    void finish();

    /// For the script: sends; waits up to five seconds for `count` bytes; waits.
    void send(const QByteArray& bytes);
    void take(int count);
    /// The next byte, or -1 when none comes in time.
    int takeOne(int milliseconds);
    static void pause(int milliseconds);
    /// Time enough for the program to come from what it has just sent to its next wait.
    static void untilItWaits() { pause(500); }

    /// "> 01 FF": sent to the program; "< 43": came from it; one item per change of direction.
    [[nodiscard]] std::vector<QByteArray> transcript() const { return m_transcript; }
    /// An item of a transcript, for comparing.
    [[nodiscard]] static QByteArray sent(const QByteArray& bytes) { return "> " + bytes.toHex(' '); }
    [[nodiscard]] static QByteArray came(const QByteArray& bytes) { return "< " + bytes.toHex(' '); }

private:
    void note(char direction, const QByteArray& bytes);

    int m_master = -1;
    int m_slave = -1; ///< kept open, so that the line lives while the program closes and reopens it
    QString m_location;
    std::thread m_thread;
    std::atomic<bool> m_over = true;
    std::vector<QByteArray> m_transcript;
    char m_direction = 0;
};

} // namespace sixtrace::test
