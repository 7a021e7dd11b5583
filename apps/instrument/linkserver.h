// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <poll.h>
#include <vector>

namespace sixtrace {

/// The clock of the simulated instrument.
using ServerClock = std::chrono::steady_clock;

/// One link that the instrument serves, driven by serve(). It never blocks.
class LinkServer {
public:
    LinkServer() = default;
    LinkServer(const LinkServer&) = delete;
    LinkServer& operator=(const LinkServer&) = delete;
    virtual ~LinkServer() = default;

    /// The descriptor and the events that the loop waits for; nothing while the link is unplugged.
    [[nodiscard]] virtual std::optional<pollfd> waitFor() = 0;
    /// When step() has to be called next even if no event comes.
    [[nodiscard]] virtual ServerClock::time_point wakeAt() const = 0;
    /// Does what can be done now. True when a client has sent something.
    virtual bool step() = 0;
};

/// Makes SIGINT, SIGTERM and SIGHUP end serve(). To be called before anything is made that has to be removed at the
/// end.
void catchEndSignals();

/// Serves until one of those signals comes, or until no client has sent anything for `idleSeconds`; 0 sets no such
/// limit.
void serve(const std::vector<std::unique_ptr<LinkServer>>& links, int idleSeconds);

} // namespace sixtrace
