// SPDX-License-Identifier: MIT
#include "ttdll/settings.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>

namespace ttdll {

namespace {

constexpr int kLongestTimeoutMs = 60000;
constexpr std::size_t kLongestFile = 65536;

struct NumberKey {
    const char* name;
    int Settings::*field;
    int highest;
};

constexpr std::array<NumberKey, 7> kNumbers{{
    {"vendor", &Settings::vendor, 0xFFFF},
    {"product", &Settings::product, 0xFFFF},
    {"interface", &Settings::interfaceNumber, 255},
    {"endpointout", &Settings::endpointOut, 0x0F},
    {"endpointin", &Settings::endpointIn, 0x8F},
    {"writetimeout", &Settings::writeTimeoutMs, kLongestTimeoutMs},
    {"readtimeout", &Settings::readTimeoutMs, kLongestTimeoutMs},
}};

std::string trimmed(const std::string& text) {
    const auto isBlank = [](unsigned char c) { return std::isspace(c) != 0; };
    const auto begin = std::find_if_not(text.begin(), text.end(), isBlank);
    const auto end = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
    return begin < end ? std::string(begin, end) : std::string();
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// Decimal, or hexadecimal behind "0x".
std::optional<int> numberOf(const std::string& text, int highest) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* begin = text.data() + (hexadecimal ? 2 : 0);
    const char* end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value, hexadecimal ? 16 : 10);
    if (error != std::errc() || stop != end || value < 0 || value > highest) {
        return std::nullopt;
    }
    return value;
}

std::optional<LinkKind> linkOf(const std::string& text) {
    const std::string word = lowered(text);
    if (word == "auto") {
        return LinkKind::Auto;
    }
    if (word == "usb") {
        return LinkKind::Usb;
    }
    return word == "socket" ? std::optional(LinkKind::Socket) : std::nullopt;
}

bool take(Settings& settings, const std::string& key, const std::string& value) {
    if (key == "link") {
        const auto kind = linkOf(value);
        settings.link = kind.value_or(settings.link);
        return kind.has_value();
    }
    if (key == "socket") {
        settings.socket = value.empty() ? settings.socket : value;
        return !value.empty();
    }
    for (const NumberKey& number : kNumbers) {
        if (key == number.name) {
            const auto read = numberOf(value, number.highest);
            settings.*number.field = read.value_or(settings.*number.field);
            return read.has_value();
        }
    }
    return false;
}

} // namespace

Settings readSettings(const std::string& folder, std::string& complaint) {
    Settings settings;
    settings.folder = folder;
    const std::string path = folder + "ttdll.ini";
    std::error_code unknown;
    if (!std::filesystem::is_regular_file(path, unknown)) {
        return settings; // opening a pipe would wait for its other end
    }
    std::ifstream file(path);
    std::string text(kLongestFile, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = trimmed(text.substr(begin, end - begin));
        begin = end + 1;
        const std::size_t mark = line.find('=');
        if (line.empty() || line.front() == ';' || line.front() == '[') {
            continue;
        }
        if (mark == std::string::npos ||
            !take(settings, lowered(trimmed(line.substr(0, mark))), trimmed(line.substr(mark + 1)))) {
            complaint += "ttdll.ini: \"" + line.substr(0, 80) + "\" is not understood\n";
        }
    }
    return settings;
}

} // namespace ttdll
