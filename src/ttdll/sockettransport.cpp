// SPDX-License-Identifier: MIT
#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace ttdll {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kMoreMs{50};

/// Milliseconds until a deadline, 0 once it is over.
int left(Clock::time_point deadline) {
    const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::max<long long>(rest, 0));
}

class SocketTransport final : public Transport {
public:
    SocketTransport(int socket, Settings settings, Log& log)
        : m_socket(socket)
        , m_settings(std::move(settings))
        , m_log(log) {}
    ~SocketTransport() override { close(m_socket); }

    int send(const unsigned char* bytes, int count) override {
        const auto deadline = Clock::now() + std::chrono::milliseconds(m_settings.writeTimeoutMs);
        int done = 0;
        while (done < count && ready(POLLOUT, deadline)) {
            // What does not fit must not hold us longer than the time that is configured.
            const ssize_t part =
                ::send(m_socket, bytes + done, static_cast<std::size_t>(count - done), MSG_NOSIGNAL | MSG_DONTWAIT);
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
            const ssize_t part = recv(m_socket, buffer + done, static_cast<std::size_t>(count - done), MSG_DONTWAIT);
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

    void recover() override {} // every connection begins clean

    bool hasMore() override {
        unsigned char byte = 0;
        return ready(POLLIN, Clock::now() + kMoreMs) && recv(m_socket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) == 1;
    }

private:
    [[nodiscard]] bool ready(short what, Clock::time_point deadline) const {
        pollfd waiting{m_socket, what, 0};
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

    int m_socket;
    Settings m_settings;
    Log& m_log;
};

/// A server that listens and never accepts holds whoever connects once its queue is full; here no longer than a read.
void limitConnect(int socket, int timeoutMs) {
    const int limit = std::max(timeoutMs, 1); // 0 would be no limit at all
    timeval time{};
    time.tv_sec = limit / 1000;
    time.tv_usec = (limit % 1000) * 1000;
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &time, sizeof time);
}

/// Connects to a path of any length: a long one by way of its opened folder, as an address holds only 107 characters.
bool connectTo(int socket, const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string name = path;
    int folder = -1;
    if (name.size() >= sizeof address.sun_path) {
        const std::size_t last = path.rfind('/');
        folder = open(path.substr(0, last + 1).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        name = "/proc/self/fd/" + std::to_string(folder) + path.substr(last);
    }
    bool connected = false;
    if (name.size() < sizeof address.sun_path) {
        std::memcpy(address.sun_path, name.c_str(), name.size());
        connected = connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    const int reason = errno;
    if (folder >= 0) {
        close(folder);
    }
    errno = reason;
    return connected;
}

std::string pathOf(const Settings& settings) {
    return settings.socket.front() == '/' ? settings.socket : settings.folder + settings.socket;
}

/// A connected socket, or -1 with the reason in errno.
int connected(const Settings& settings) {
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0) {
        return -1;
    }
    limitConnect(handle, settings.readTimeoutMs);
    if (!connectTo(handle, pathOf(settings))) {
        const int reason = errno;
        close(handle);
        errno = reason;
        return -1;
    }
    return handle;
}

const char* stateOf(int reason) {
    switch (reason) {
    case ENOENT:
    case ECONNREFUSED:
        return "absent";
    case EAGAIN:
        return "silent";
    case EACCES:
    case EPERM:
        return "rights";
    default:
        return nullptr;
    }
}

} // namespace

std::string describeSocket(const Settings& settings) {
    const int handle = connected(settings);
    const int reason = errno;
    std::string state = "open";
    if (handle >= 0) {
        close(handle);
    } else {
        const char* known = stateOf(reason);
        state = known != nullptr ? known : std::string("failed: ") + std::strerror(reason);
    }
    return "socket\t" + pathOf(settings) + '\t' + state + '\n';
}

std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log) {
    const int handle = connected(settings);
    if (handle >= 0) {
        return std::make_unique<SocketTransport>(handle, settings, log);
    }
    const int reason = errno;
    if (reason == EAGAIN) {
        log.write("socket: the server at " + pathOf(settings) + " takes no call");
    } else if (settings.link == LinkKind::Socket) {
        log.write("socket: nobody listens at " + pathOf(settings) + ": " + std::strerror(reason));
    }
    return nullptr;
}

} // namespace ttdll
