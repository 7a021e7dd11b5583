// SPDX-License-Identifier: MIT
// What both ends of the simulated instrument's socket need. All of it is in this header, since the library and the
// simulated instrument link no library in common.
#pragma once

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace ttdll {

/// A file descriptor, or none. It is closed with this object; closing leaves `errno` as it is.
class Descriptor {
public:
    Descriptor() = default;
    /// Takes what a system call has returned: a negative number is none.
    explicit Descriptor(int number)
        : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, kNone)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    explicit operator bool() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }
    void close() {
        if (m_number >= 0) {
            const int reason = errno;
            ::close(std::exchange(m_number, kNone));
            errno = reason;
        }
    }

private:
    static constexpr int kNone = -1;
    int m_number = kNone;
};

/// Calls `use` with the address of a socket's path and tells whether that succeeded; the reason of a failure is in
/// `errno`. An address holds 107 characters only, so a longer path is reached through its opened folder.
template<typename Use>
bool withAddress(const std::string& path, Use use) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::string name = path;
    Descriptor folder;
    if (name.size() >= sizeof address.sun_path) {
        const std::size_t begin = path.rfind('/') + 1; // 0 where the path has no folder
        folder = Descriptor(open(begin == 0 ? "." : path.substr(0, begin).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (!folder) {
            return false;
        }
        name = "/proc/self/fd/" + std::to_string(folder.number()) + '/' + path.substr(begin);
    }
    if (name.size() >= sizeof address.sun_path) {
        errno = ENAMETOOLONG;
        return false;
    }
    std::memcpy(address.sun_path, name.c_str(), name.size());
    return use(reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(sizeof address));
}

} // namespace ttdll
