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

} // namespace

std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log) {
    const std::string path = settings.socket.front() == '/' ? settings.socket : settings.folder + settings.socket;
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (handle < 0) {
        log.write(std::string("socket: ") + std::strerror(errno));
        return nullptr;
    }
    if (!connectTo(handle, path)) {
        const int reason = errno;
        close(handle);
        if (settings.link == LinkKind::Socket) {
            log.write("socket: nobody listens at " + path + ": " + std::strerror(reason));
        }
        return nullptr;
    }
    return std::make_unique<SocketTransport>(handle, settings, log);
}

} // namespace ttdll
