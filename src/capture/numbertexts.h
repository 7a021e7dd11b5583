// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace sixtrace {

/// Appends a number with up to twelve significant digits and a point as decimal mark; nothing for NaN and infinity. It
/// is fast, for files of tens of thousands of numbers.
void appendNumber(std::string& out, double value);

} // namespace sixtrace
