// SPDX-License-Identifier: MIT
#include "ttdll/localsocket.h"
#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <utility>
#include <variant>

namespace ttdll {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kMoreMs{50};

/// Milliseconds until a deadline, 0 once it has passed.
int left(Clock::time_point deadline) {
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::max<long long>(rest, 0));
}

class SocketTransport final : public Transport {
public:
    SocketTransport(Descriptor socket, Settings settings, Log& log)
        : m_socket(std::move(socket))
        , m_settings(std::move(settings))
        , m_log(log) {}

    int send(const unsigned char* bytes, int count) override {
        const auto deadline = Clock::now() + std::chrono::milliseconds(m_settings.writeTimeoutMs);
        int done = 0;
        while (done < count && ready(POLLOUT, deadline)) {
            // A call that blocks would wait longer than the time of the settings.
            const ssize_t part = ::send(m_socket.number(), bytes + done, static_cast<std::size_t>(count - done),
                                        MSG_NOSIGNAL | MSG_DONTWAIT);
            if (part < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)) {
                continue;
            }
            if (part <= 0) {
                return complain("sending failed", done);
            }
            done += static_cast<int>(part);
        }
        return done == count ? done : complain("sending took too long", done);
    }

    int receive(unsigned char* buffer, int count) override {
        int done = 0;
        Clock::time_point deadline{};
        while (done < count) {
            const ssize_t part =
                recv(m_socket.number(), buffer + done, static_cast<std::size_t>(count - done), MSG_DONTWAIT);
            if (part > 0) {
                done += static_cast<int>(part);
                continue;
            }
            if (part == 0) {
                return complain("the instrument has closed the link", done);
            }
            if (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR) {
                return complain("reading failed", done);
            }
            if (deadline == Clock::time_point{}) {
                deadline = Clock::now() + std::chrono::milliseconds(m_settings.readTimeoutMs);
            }
            if (!ready(POLLIN, deadline)) {
                return complain("the instrument is silent", done);
            }
        }
        return done;
    }

    void recover() override {} // a new connection has nothing left over

    bool hasMore() override {
        unsigned char byte = 0;
        return ready(POLLIN, Clock::now() + kMoreMs) && recv(m_socket.number(), &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 1;
    }

private:
    [[nodiscard]] bool ready(short what, Clock::time_point deadline) const {
        pollfd waiting{m_socket.number(), what, 0};
        int found = 0;
        do {
            found = poll(&waiting, 1, left(deadline));
        } while (found < 0 && errno == EINTR);
        return found == 1;
    }

    int complain(const char* what, int done) {
        m_log.write(std::string("socket: ") + what + " after " + std::to_string(done) + " bytes");
        return done;
    }

    Descriptor m_socket;
    Settings m_settings;
    Log& m_log;
};

/// A server that listens and never accepts keeps callers waiting once its queue is full. This limits the wait to the
/// time of a read.
void limitConnect(int socket, int timeoutMs) {
    const int limit = std::max(timeoutMs, 1); // 0 would be no limit at all
    timeval time{};
    time.tv_sec = limit / 1000;
    time.tv_usec = (limit % 1000) * 1000;
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
}

std::string pathOf(const Settings& settings) {
    return settings.socket.front() == '/' ? settings.socket : settings.folder + settings.socket;
}

/// Why a system call has failed: a value of `errno`.
struct SystemError {
    int number = 0;
};

std::variant<Descriptor, SystemError> connected(const Settings& settings) {
    Descriptor made(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!made) {
        return SystemError{errno};
    }
    limitConnect(made.number(), settings.readTimeoutMs);
    const bool done = withAddress(pathOf(settings), [&made](const sockaddr* address, socklen_t size) {
        return connect(made.number(), address, size) == 0;
    });
    if (!done) {
        return SystemError{errno};
    }
    return made;
}

std::string stateOf(SystemError error) {
    switch (error.number) {
    case ENOENT:
    case ECONNREFUSED:
        return "absent";
    case EAGAIN:
        return "silent";
    case EACCES:
    case EPERM:
        return "rights";
    default:
        return std::string("failed: ") + std::strerror(error.number);
    }
}

} // namespace

std::string describeSocket(const Settings& settings) {
    const auto made = connected(settings);
    const auto* error = std::get_if<SystemError>(&made);
    return "socket\t" + pathOf(settings) + '\t' + (error == nullptr ? "open" : stateOf(*error)) + '\n';
}

std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log) {
    auto made = connected(settings);
    if (auto* socket = std::get_if<Descriptor>(&made)) {
        return std::make_unique<SocketTransport>(std::move(*socket), settings, log);
    }
    const int reason = std::get<SystemError>(made).number;
    if (reason == EAGAIN) {
        log.write("socket: the server at " + pathOf(settings) + " takes no call");
    } else if (settings.link == LinkKind::Socket) {
        log.write("socket: nobody listens at " + pathOf(settings) + ": " + std::strerror(reason));
    }
    return nullptr;
}

} // namespace ttdll
