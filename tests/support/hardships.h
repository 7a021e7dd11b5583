// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace sixtrace::test {

/// Simulates a nearly full disk: while the object exists, no file of this process can grow beyond `bytes`.
class SmallDisk {
public:
    explicit SmallDisk(rlim_t bytes)
        : m_signalBefore(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signalBefore);
    }

private:
    rlimit m_before{};
    void (*m_signalBefore)(int);
};

/// While the object exists, file permissions bind this process even if root runs it.
class OrdinaryUser {
public:
    OrdinaryUser() {
        if (::geteuid() == 0) {
            constexpr uid_t kNobody = 65534;
            m_isOther = ::seteuid(kNobody) == 0;
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (m_isOther && ::seteuid(0) != 0) {
            ::_exit(1);
        }
    }

private:
    bool m_isOther = false;
};

} // namespace sixtrace::test
