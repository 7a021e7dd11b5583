// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/fault.h"

#include <QByteArray>

#include <map>
#include <utility>

namespace sixtrace {

/// The instrument's side of the block protocol: a state machine from bytes to bytes, without a clock or a line. It
/// sends only answers to the receiver's bytes. One object sends one file.
class BlockSender {
public:
    enum class State {
        Waiting,
        HeaderSent,
        HeaderTaken,
        DataSent,
        EndSent,
        EndTaken,
        LastSent,
        Done,
        Aborted,
        Unplugged
    };

    /// Sends `content` in blocks of 1024 bytes, and a rest of at most 128 bytes in a block of 128.
    BlockSender(QByteArray name, QByteArray content, FetchPlan plan);

    /// The bytes to send after `byte` has come.
    [[nodiscard]] QByteArray answer(unsigned char byte);

    [[nodiscard]] State state() const { return m_state; }
    /// Whether a receiver has asked for anything yet.
    [[nodiscard]] bool begun() const { return m_state != State::Waiting; }
    [[nodiscard]] bool over() const { return m_state >= State::Done; }
    /// Whether the last answer has to be sent late. Clears the mark.
    [[nodiscard]] bool takeLate() { return std::exchange(m_late, false); }

    /// The bytes of one block with the right check value. The number is sent modulo 256, and `data` is filled up to
    /// `size` bytes with `filling`.
    [[nodiscard]] static QByteArray block(int number, QByteArray data, int size, char filling);
    /// The header block of a file: its name and the text of its size, each with a zero byte at its end.
    [[nodiscard]] static QByteArray header(const QByteArray& name, const QByteArray& size);

private:
    [[nodiscard]] QByteArray sendHeader();
    [[nodiscard]] QByteArray sendData();
    [[nodiscard]] QByteArray sendNext();
    [[nodiscard]] QByteArray faulty(int blockIndex, QByteArray bytes);
    [[nodiscard]] bool takeFault(FaultKind kind, int blockIndex);

    QByteArray m_name;
    QByteArray m_content;
    FetchPlan m_plan;
    std::map<std::pair<FaultKind, int>, int> m_spent;
    State m_state = State::Waiting;
    qsizetype m_offset = 0; ///< of the block being sent
    int m_blockSize = 0;    ///< of the block being sent
    int m_number = 1;       ///< of the block being sent
    unsigned char m_previous = 0;
    bool m_silent = false;
    bool m_late = false;
};

} // namespace sixtrace
