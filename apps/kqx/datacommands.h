// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"

#include <string>
#include <vector>

namespace sixtrace::kqx {

// The commands that need neither desktop nor pictures. `arguments` begin behind the command's name.
[[nodiscard]] int info(const std::vector<std::string>& arguments);
[[nodiscard]] int measure(const std::vector<std::string>& arguments);
[[nodiscard]] int convert(const std::vector<std::string>& arguments);

} // namespace sixtrace::kqx
