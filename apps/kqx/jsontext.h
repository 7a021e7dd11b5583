// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace sixtrace::kqx {

/// Appends `text` in quotes, with the escapes of JSON. Bytes that are no UTF-8 become U+FFFD each.
void appendJsonString(std::string& out, std::string_view text);
void appendInteger(std::string& out, std::int64_t value);
/// Appends a number with up to twelve significant digits; "null" where it is none.
void appendJsonNumber(std::string& out, double value);
/// The shortest decimal that gives the 32-bit real back; "null" where it is no number.
void appendJsonNumber(std::string& out, float value);

[[nodiscard]] bool isUtf8(std::string_view text);
/// `text` with U+FFFD for each byte that is no UTF-8.
[[nodiscard]] std::string validUtf8(std::string_view text);

/// Appends `"file":...`, and `,"file_bytes":...` in hexadecimal for a name that is no UTF-8.
void appendJsonFile(std::string& out, std::string_view file);

} // namespace sixtrace::kqx
