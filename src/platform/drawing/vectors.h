// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// Whether the drawing may use wide vectors where the processor has them. Without them it takes its plain ways, with
/// the same result; tests compare the two.
enum class Vectors { Allowed, Avoided };

/// Whether this processor has the vectors of 512 bits that the drawing uses.
inline bool hasWideVectors() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
           __builtin_cpu_supports("avx512bw") != 0 && __builtin_cpu_supports("avx512vl") != 0;
#else
    return false;
#endif
}

} // namespace sixtrace
