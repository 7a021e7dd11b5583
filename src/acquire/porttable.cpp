// SPDX-License-Identifier: MIT
#include "acquire/porttable.h"

namespace sixtrace {

Result<std::int16_t> PortTable::at(int k) const {
    if (k < 0 || k >= static_cast<int>(number.size())) {
        return RuntimeError::of(ErrorNumber::SubscriptOutOfRange);
    }
    return number[static_cast<std::size_t>(k)];
}

void probePorts(PortTable& table, const PortProbe& probe) {
    table.count = 0;
    for (int port = 1; port <= kHighestPort; ++port) {
        const Outcome opened = probe(port);
        if (opened || opened.error().number == ErrorNumber::PortAlreadyOpen) {
            ++table.count;
            table.number[static_cast<std::size_t>(table.count)] = static_cast<std::int16_t>(port);
        }
    }
}

} // namespace sixtrace
