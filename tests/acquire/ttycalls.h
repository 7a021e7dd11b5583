// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <termios.h>
#include <vector>

namespace sixtrace::test::ttycalls {

/// From here on the calls that wait for a line to drain and that set it are noted, in their order.
void begin();
[[nodiscard]] std::vector<std::string> end();
/// What each call asked for: a pseudo terminal does not keep all of it.
[[nodiscard]] std::vector<termios> settingsAsked();

} // namespace sixtrace::test::ttycalls
