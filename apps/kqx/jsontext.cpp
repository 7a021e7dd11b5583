// SPDX-License-Identifier: MIT
#include "jsontext.h"

#include "capture/numbertexts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace sixtrace::kqx {

namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

/// The number of bytes of the UTF-8 character at the start of `text`; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto follows = [&](std::size_t i) { return i < text.size() && (byte(i) & 0xC0U) == 0x80; };
    const unsigned char first = byte(0);
    if (first < 0x80) {
        return 1;
    }
    if (first >= 0xC2 && first < 0xE0) {
        return follows(1) ? 2 : 0;
    }
    if (first >= 0xE0 && first < 0xF0) {
        const bool ok = follows(1) && follows(2) && !(first == 0xE0 && byte(1) < 0xA0) && // longer than it needs to be
                        !(first == 0xED && byte(1) >= 0xA0);                              // half of a pair
        return ok ? 3 : 0;
    }
    if (first >= 0xF0 && first < 0xF5) {
        const bool ok = follows(1) && follows(2) && follows(3) && !(first == 0xF0 && byte(1) < 0x90) &&
                        !(first == 0xF4 && byte(1) >= 0x90);
        return ok ? 4 : 0;
    }
    return 0;
}

void appendShortest(std::string& out, auto value) {
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    out.append(buffer.data(), end);
}

} // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string validUtf8(std::string_view text) {
    std::string valid;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        valid += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return valid;
}

void appendJsonString(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const auto byte = static_cast<unsigned char>(text.front());
        if (length == 0) {
            out += "\xEF\xBF\xBD";
        } else if (byte == '"' || byte == '\\') {
            out += '\\';
            out += text.front();
        } else if (byte < 0x20) {
            out += "\\u00";
            out += kHexDigits[byte >> 4];
            out += kHexDigits[byte & 0xFU];
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    out += '"';
}

void appendInteger(std::string& out, std::int64_t value) {
    appendShortest(out, value);
}

void appendJsonNumber(std::string& out, double value) {
    if (std::isfinite(value)) {
        appendNumber(out, value);
    } else {
        out += "null";
    }
}

void appendJsonNumber(std::string& out, float value) {
    if (std::isfinite(value)) {
        appendShortest(out, value);
    } else {
        out += "null";
    }
}

void appendJsonFile(std::string& out, std::string_view file) {
    out += "\"file\":";
    appendJsonString(out, file);
    if (!isUtf8(file)) {
        out += ",\"file_bytes\":\"";
        for (const char c : file) {
            const auto byte = static_cast<unsigned char>(c);
            out += kHexDigits[byte >> 4];
            out += kHexDigits[byte & 0xFU];
        }
        out += '"';
    }
}

} // namespace sixtrace::kqx
