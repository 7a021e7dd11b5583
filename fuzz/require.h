// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace sixtrace {

/// Aborts, which the fuzzer reports, unless `holds` is true.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace sixtrace
