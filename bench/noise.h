// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace sixtrace::bench {

/// The same numbers in every run.
inline std::uint32_t nextRandom(std::uint32_t& state) {
    state = state * 1664525U + 1013904223U;
    return state >> 8;
}

} // namespace sixtrace::bench
