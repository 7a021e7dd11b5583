// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <termios.h>
#include <vector>

namespace sixtrace::test::ttycalls {

/// Begins to record the calls that wait until a line has sent everything, and those that set it.
void begin();
/// Ends the record and returns it: "drain" and "settings" in the order of the calls.
[[nodiscard]] std::vector<std::string> end();
/// The settings of each recorded call. A pseudo terminal does not keep all of them, so it cannot be asked.
[[nodiscard]] std::vector<termios> settingsAsked();

} // namespace sixtrace::test::ttycalls
