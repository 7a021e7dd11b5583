// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <array>
#include <cstdint>
#include <functional>

namespace sixtrace {

inline constexpr int kHighestPort = 16; ///< ports 1 to 16 are looked for, and no others

/// The serial ports found on the machine. Element k of `number` is the real number of the k-th port; element 0 stays
/// unused. Those behind the last port found keep what they held: 0, or the number of a port that an earlier search
/// found.
struct PortTable {
    std::array<std::int16_t, 18> number{};
    int count = 0;

    /// The real number of the k-th port, or error 9 outside 0 to 17.
    [[nodiscard]] Result<std::int16_t> at(int k) const;
};

/// Opens a port by its number and closes it again.
using PortProbe = std::function<Outcome(int number)>;

/// Tries ports 1 to 16 and counts those that open, from 0. Error 8005 counts too: the port exists and is taken. Any
/// other error skips the number.
void probePorts(PortTable& table, const PortProbe& probe);

} // namespace sixtrace
