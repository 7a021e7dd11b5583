// SPDX-License-Identifier: MIT
#include "acquire/transfergate.h"

#include <utility>

namespace sixtrace {

struct TransferPass::Hold {
    TransferGate* gate = nullptr; ///< null once the gate is destroyed or the transfer has ended
    BinaryFile file;
    std::function<void()> release;
    bool givenUp = false;
    bool ended = false;
};

TransferPass::TransferPass(std::shared_ptr<Hold> hold)
    : m_hold(std::move(hold)) {}

TransferPass::~TransferPass() {
    if (m_hold == nullptr) {
        return; // moved from
    }
    m_hold->file.close();
    if (m_hold->gate != nullptr && m_hold->gate->m_current == m_hold) {
        m_hold->gate->m_current.reset();
    }
}

BinaryFile& TransferPass::file() const {
    return m_hold->file;
}

bool TransferPass::ended() const {
    return m_hold->ended;
}

void TransferPass::onEnd(std::function<void()> release) const {
    m_hold->release = std::move(release);
}

TransferGate::~TransferGate() {
    if (m_current != nullptr) {
        m_current->gate = nullptr;
    }
}

std::optional<TransferPass> TransferGate::enter() {
    if (held()) {
        return std::nullopt;
    }
    m_current = std::make_shared<TransferPass::Hold>();
    m_current->gate = this;
    return TransferPass(m_current);
}

std::optional<TransferPass> TransferGate::enterForStart() {
    if (held() && m_current->givenUp) {
        // The old transfer waits further down the stack and cannot return before the new one does. So it loses its file
        // and line now, and notices when its wait returns.
        const auto waiting = std::exchange(m_current, nullptr);
        waiting->ended = true;
        waiting->gate = nullptr;
        waiting->file.close();
        if (waiting->release) {
            waiting->release();
        }
    }
    return enter();
}

void TransferGate::giveUp() {
    if (held()) {
        m_current->givenUp = true;
    }
}

} // namespace sixtrace
