// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/binaryfile.h"

#include <functional>
#include <memory>
#include <optional>

namespace sixtrace {

class TransferGate;

/// The right to run a transfer, and the one file that a transfer writes. Only the gate gives it; every transfer of
/// either link asks for it as an argument, so that none runs without. It lasts until the object goes, which closes the
/// file.
class TransferPass {
public:
    TransferPass(TransferPass&& other) noexcept = default;
    TransferPass& operator=(TransferPass&&) = delete;
    TransferPass(const TransferPass&) = delete;
    TransferPass& operator=(const TransferPass&) = delete;
    ~TransferPass();

    /// File number 1.
    [[nodiscard]] BinaryFile& file() const;
    /// Whether another transfer has taken this one's place. From then on it sends, reads, writes and shows nothing; all
    /// that is left to it is to return.
    [[nodiscard]] bool ended() const;
    /// What frees the line at once should another transfer take the place of this one.
    void onEnd(std::function<void()> release) const;

private:
    friend class TransferGate;
    struct Hold;
    explicit TransferPass(std::shared_ptr<Hold> hold);
    std::shared_ptr<Hold> m_hold;
};

/// One transfer at a time, by hand or timed, over whichever link. There is one window, one port and one file.
class TransferGate {
public:
    TransferGate() = default;
    TransferGate(const TransferGate&) = delete;
    TransferGate& operator=(const TransferGate&) = delete;
    ~TransferGate();

    /// For a tick: nothing while any transfer runs, one that was cancelled and still unwinds included.
    [[nodiscard]] std::optional<TransferPass> enter();
    /// For Start: a transfer that the user has given up is ended first, wherever it waits. Nothing while one runs that
    /// nobody has given up.
    [[nodiscard]] std::optional<TransferPass> enterForStart();
    /// Stop and Cancel: nobody wants the running transfer any more. It goes on until its read has run out.
    void giveUp();
    [[nodiscard]] bool held() const { return m_current != nullptr; }

private:
    friend class TransferPass;
    std::shared_ptr<TransferPass::Hold> m_current;
};

} // namespace sixtrace
