// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <array>
#include <cstdint>
#include <functional>
#include <span>

namespace sixtrace {

inline constexpr int kHighestPort = 16; ///< the search goes from port 1 to this one

/// The serial ports that a search has found, in the order of their numbers. The k-th port stands in element k, counted
/// from 1. An element after the last port found keeps its value: 0, or the port that an earlier search found there.
class PortTable {
public:
    /// Opens a port by its number and closes it again.
    using Probe = std::function<Outcome(int number)>;

    /// Tries ports 1 to 16. A port counts when it opens, and also on error 8005, since it is there and taken. Any other
    /// error skips the number.
    void search(const Probe& probe) {
        m_count = 0;
        for (int port = 1; port <= kHighestPort; ++port) {
            const Outcome opened = probe(port);
            if (opened || opened.error().number == ErrorNumber::PortAlreadyOpen) {
                ++m_count;
                m_numbers[m_count] = static_cast<std::int16_t>(port);
            }
        }
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_count); }
    /// The numbers of the ports found by the last search.
    [[nodiscard]] std::span<const std::int16_t> found() const { return std::span(m_numbers).subspan(1, m_count); }
    /// The number in element `k`; error 9 outside 0 to 17.
    [[nodiscard]] Result<std::int16_t> at(int k) const {
        if (k < 0 || k >= static_cast<int>(m_numbers.size())) {
            return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
        }
        return m_numbers[static_cast<std::size_t>(k)];
    }

private:
    std::array<std::int16_t, 18> m_numbers{};
    std::size_t m_count = 0;
};

} // namespace sixtrace
