// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/binaryfile.h"

#include <functional>
#include <memory>
#include <optional>

namespace sixtrace {

class TransferGate;

/// The right to run a transfer, together with the file that the transfer writes. Only a gate makes a pass, and every
/// transfer of either link takes one as an argument, so none runs without it. The destructor closes the file and gives
/// the right back.
class TransferPass {
public:
    TransferPass(TransferPass&& other) noexcept = default;
    TransferPass& operator=(TransferPass&&) = delete;
    TransferPass(const TransferPass&) = delete;
    TransferPass& operator=(const TransferPass&) = delete;
    ~TransferPass();

    /// File number 1.
    [[nodiscard]] BinaryFile& file() const;
    /// Whether another transfer has taken the place of this one. From then on this one must not send, read, write or
    /// show anything; it can only return.
    [[nodiscard]] bool ended() const;
    /// Sets what frees the line. It is called if another transfer takes the place of this one.
    void onEnd(std::function<void()> release) const;

private:
    friend class TransferGate;
    struct Hold;
    explicit TransferPass(std::shared_ptr<Hold> hold);
    std::shared_ptr<Hold> m_hold;
};

/// Lets one transfer run at a time, by hand or timed, over either link: they share one window, one port and one file.
class TransferGate {
public:
    TransferGate() = default;
    TransferGate(const TransferGate&) = delete;
    TransferGate& operator=(const TransferGate&) = delete;
    ~TransferGate();

    /// For a tick of timed acquisition. Nothing while a transfer runs, even one that was cancelled and has not yet
    /// ended.
    [[nodiscard]] std::optional<TransferPass> enter();
    /// For Start. Ends a running transfer that the user has given up, wherever it waits. Nothing while a transfer runs
    /// that the user has not given up.
    [[nodiscard]] std::optional<TransferPass> enterForStart();
    /// For Stop and Cancel: notes that the user has given up the running transfer. It goes on until its read ends.
    void giveUp();
    [[nodiscard]] bool held() const { return m_current != nullptr; }

private:
    friend class TransferPass;
    std::shared_ptr<TransferPass::Hold> m_current;
};

} // namespace sixtrace
