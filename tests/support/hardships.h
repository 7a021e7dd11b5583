// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace sixtrace::test {

/// While it lives no file of this process may grow beyond `bytes`: a disk that is nearly full.
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

/// While it lives this process minds the permissions of files, even when root runs it.
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
