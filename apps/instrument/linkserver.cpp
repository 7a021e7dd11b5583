// SPDX-License-Identifier: MIT
#include "instrument/linkserver.h"

#include <algorithm>
#include <csignal>

namespace sixtrace {

namespace {

using namespace std::chrono_literals;

volatile std::sig_atomic_t g_ended = 0;

void noteSignal(int) {
    g_ended = 1;
}

/// Milliseconds until a link has something to do, rounded up. At most a quarter of a second, since a signal that comes
/// just before the wait does not end it.
int pauseFor(const std::vector<std::unique_ptr<LinkServer>>& links) {
    auto wake = ServerClock::now() + 250ms;
    for (const auto& link : links) {
        wake = std::min(wake, link->wakeAt());
    }
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(wake - ServerClock::now()).count();
    return static_cast<int>(std::max<long long>(rest, 0));
}

} // namespace

void catchEndSignals() {
    struct sigaction action {};
    action.sa_handler = noteSignal;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaction(number, &action, nullptr);
    }
}

void serve(const std::vector<std::unique_ptr<LinkServer>>& links, int idleSeconds) {
    auto lastHeard = ServerClock::now();
    while (g_ended == 0) {
        std::vector<pollfd> waiting;
        waiting.reserve(links.size());
        for (const auto& link : links) {
            if (const auto events = link->waitFor()) {
                waiting.push_back(*events);
            }
        }
        poll(waiting.data(), waiting.size(), pauseFor(links));
        for (const auto& link : links) {
            if (link->step()) {
                lastHeard = ServerClock::now();
            }
        }
        if (idleSeconds > 0 && ServerClock::now() - lastHeard > std::chrono::seconds(idleSeconds)) {
            return;
        }
    }
}

} // namespace sixtrace
