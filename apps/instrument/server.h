// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

struct pollfd;

namespace sixtrace {

/// The clock of the simulated instrument.
using ServerClock = std::chrono::steady_clock;

/// One link that the instrument serves, driven by the program's loop. It never blocks.
class LinkServer {
public:
    LinkServer() = default;
    LinkServer(const LinkServer&) = delete;
    LinkServer& operator=(const LinkServer&) = delete;
    virtual ~LinkServer() = default;

    /// The descriptor and events that the loop is to wait for; -1 for none just now.
    [[nodiscard]] virtual pollfd waitFor() = 0;
    /// When the loop has to come back without any event.
    [[nodiscard]] virtual ServerClock::time_point wakeAt() const = 0;
    /// Does what can be done now; true when a client has sent something.
    virtual bool step() = 0;
};

} // namespace sixtrace
