// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>

namespace sixtrace {

/// Ends the run when something does not hold that always has to.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace sixtrace
