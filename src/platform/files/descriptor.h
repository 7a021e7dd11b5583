// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>
#include <fcntl.h>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace sixtrace {

/// A file descriptor of the system, or none. It is closed with this object; closing leaves `errno` as it is.
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
    /// Gives the descriptor away: the caller closes it.
    [[nodiscard]] int release() { return std::exchange(m_number, kNone); }
    /// Closes it; false, with the reason in `errno`, when the system could not write what was still to be written.
    bool close() {
        if (m_number < 0) {
            return true;
        }
        const int reason = errno;
        const bool closed = ::close(release()) == 0;
        if (closed) {
            errno = reason;
        }
        return closed;
    }

private:
    static constexpr int kNone = -1;
    int m_number = kNone;
};

/// Opens those of the descriptors 0 to 2 that are closed, on the null device. Otherwise the first files that the
/// program opens would get these numbers, for example its connection to the display, and what is printed to standard
/// error would be written into them. A program calls this before anything else.
inline void openStandardDescriptors() {
    // The system gives the lowest free number, so all three are open once it gives a higher one.
    constexpr int kStandardError = 2;
    for (Descriptor opened(::open("/dev/null", O_RDWR)); opened && opened.number() <= kStandardError;
         opened = Descriptor(::open("/dev/null", O_RDWR))) {
        static_cast<void>(opened.release());
    }
}

} // namespace sixtrace
