// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace sixtrace::ttycalls {

/// From here on the calls that wait for a line to drain and that set it are noted, in their order.
void begin();
[[nodiscard]] std::vector<std::string> end();

} // namespace sixtrace::ttycalls
