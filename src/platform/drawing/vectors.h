// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// Whether the drawing may use the processor's vectors. Without them it takes its plain ways, with the same result;
/// tests compare the two.
enum class Vectors { Allowed, Avoided };

} // namespace sixtrace
