// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"

#include <string>
#include <vector>

namespace sixtrace::kqx {

// The commands that need no library of the desktop. `arguments` are those that follow the command's name.
[[nodiscard]] ExitCode info(const std::vector<std::string>& arguments);
[[nodiscard]] ExitCode measure(const std::vector<std::string>& arguments);
[[nodiscard]] ExitCode convert(const std::vector<std::string>& arguments);

} // namespace sixtrace::kqx
