// SPDX-License-Identifier: MIT
#include "ttdll/settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>

namespace ttdll {

namespace {

constexpr int kLongestTimeoutMs = 60000;
constexpr std::size_t kLongestText = 65536;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct NumberKey {
    const char* name;
    int Settings::*field;
    int lowest;
    int highest;
};

constexpr std::array<NumberKey, 7> kNumbers{{
    {"vendor", &Settings::vendor, 0, 0xFFFF},
    {"product", &Settings::product, 0, 0xFFFF},
    {"interface", &Settings::interfaceNumber, 0, 255},
    {"endpointout", &Settings::endpointOut, 0x01, 0x0F},
    {"endpointin", &Settings::endpointIn, 0x81, 0x8F},
    {"writetimeout", &Settings::writeTimeoutMs, 0, kLongestTimeoutMs},
    {"readtimeout", &Settings::readTimeoutMs, 0, kLongestTimeoutMs},
}};

// Only blanks and letters of ASCII count. In the program's locale a blank may be one byte of a longer character.

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\v\f\r\n";
    const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
    return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

std::string lowered(std::string_view text) {
    std::string low(text);
    std::transform(low.begin(), low.end(), low.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return low;
}

/// A decimal number, or a hexadecimal one after "0x". Nothing for any other text, or outside the range of the key.
std::optional<int> numberOf(std::string_view text, const NumberKey& key) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    const char* begin = text.data() + (hexadecimal ? 2 : 0);
    const char* end = text.data() + text.size();
    int value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value, hexadecimal ? 16 : 10);
    if (error != std::errc() || stop != end || value < key.lowest || value > key.highest) {
        return std::nullopt;
    }
    return value;
}

std::optional<LinkKind> linkOf(std::string_view text) {
    const std::string word = lowered(text);
    if (word == "auto") {
        return LinkKind::Auto;
    }
    if (word == "usb") {
        return LinkKind::Usb;
    }
    return word == "socket" ? std::optional(LinkKind::Socket) : std::nullopt;
}

/// Takes one value. False when key or value cannot be understood.
bool take(Settings& settings, std::string_view key, std::string_view value) {
    if (key == "link") {
        const auto kind = linkOf(value);
        settings.link = kind.value_or(settings.link);
        return kind.has_value();
    }
    if (key == "socket") {
        // A zero byte would end the path for the system and not for us.
        const bool usable = !value.empty() && value.find('\0') == std::string_view::npos;
        settings.socket = usable ? std::string(value) : settings.socket;
        return usable;
    }
    for (const NumberKey& number : kNumbers) {
        if (key == number.name) {
            const auto read = numberOf(value, number);
            settings.*number.field = read.value_or(settings.*number.field);
            return read.has_value();
        }
    }
    return false;
}

/// The beginning of a line in a form that a log and a terminal can show: whole characters, no control characters.
std::string shown(std::string_view line) {
    constexpr std::size_t kLongest = 80;
    constexpr unsigned kFollowingMask = 0xC0; // of bytes that continue a character
    constexpr unsigned kFollowing = 0x80;
    std::size_t length = std::min(line.size(), kLongest);
    while (length > 0 && length < line.size() &&
           (static_cast<unsigned char>(line[length]) & kFollowingMask) == kFollowing) {
        --length;
    }
    std::string text(line.substr(0, length));
    std::replace_if(
        text.begin(), text.end(),
        [](char c) {
            constexpr char kDelete = 0x7F;
            return (c >= 0 && c < ' ') || c == kDelete;
        },
        '?');
    return text;
}

/// Collects the lines of a complaint, at most 20 of them: the log that they go to is bounded.
class Complaints {
public:
    void add(const std::string& what) {
        constexpr int kMost = 20;
        ++m_count;
        if (m_count < kMost) {
            m_text += "ttdll.ini: " + what + '\n';
        } else if (m_count == kMost) {
            m_text += "ttdll.ini: there is more that is not understood\n";
        }
    }

    [[nodiscard]] const std::string& text() const { return m_text; }

private:
    std::string m_text;
    int m_count = 0;
};

} // namespace

SettingsRead settingsOf(std::string_view text) {
    Settings settings;
    Complaints complaints;
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    if (text.size() > kLongestText) {
        text = text.substr(0, text.substr(0, kLongestText).rfind('\n') + 1);
        complaints.add("is longer than 65536 bytes, the rest is not read");
    }
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == ';' || line.front() == '[') {
            continue;
        }
        const std::size_t mark = line.find('=');
        if (mark == std::string_view::npos ||
            !take(settings, lowered(trimmed(line.substr(0, mark))), trimmed(line.substr(mark + 1)))) {
            complaints.add('"' + shown(line) + "\" is not understood");
        }
    }
    return {settings, complaints.text()};
}

SettingsRead readSettings(const std::string& folder) {
    const std::string path = folder + "ttdll.ini";
    std::error_code unknown;
    std::string text;
    std::string unreadable;
    if (std::filesystem::is_regular_file(path, unknown)) { // opening a pipe would wait for its other end
        std::ifstream file(path);
        text.resize(kByteOrderMark.size() + kLongestText + 1);
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        if (!file.is_open() || file.bad()) {
            unreadable = "ttdll.ini: cannot be read\n";
        }
        text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    }
    SettingsRead read = settingsOf(text);
    read.settings.folder = folder;
    read.complaint = unreadable + read.complaint;
    return read;
}

} // namespace ttdll
