// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sixtrace::kqx {

/// Appends `text` in quotes, with the escapes of JSON. Each byte that is no UTF-8 becomes U+FFFD.
void appendJsonString(std::string& out, std::string_view text);
void appendInteger(std::string& out, std::int64_t value);
/// Appends a number with up to twelve significant digits; "null" for infinity and NaN.
void appendJsonNumber(std::string& out, double value);
/// Appends the shortest decimal number that is read back as the same 32-bit real; "null" for infinity and NaN.
void appendJsonNumber(std::string& out, float value);

[[nodiscard]] bool isUtf8(std::string_view text);
/// `text` with U+FFFD instead of each byte that is no UTF-8.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// Appends `"file":...`, and for a name that is no UTF-8 also `,"file_bytes":...` in hexadecimal digits.
void appendJsonFile(std::string& out, std::string_view file);

} // namespace sixtrace::kqx
