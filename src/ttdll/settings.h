// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace ttdll {

/// Which link leads to the instrument.
enum class LinkKind {
    Auto, ///< the socket when a server listens there, otherwise the bus
    Usb,
    Socket,
};

/// The values of ttdll.ini in the library's folder. Each has a default, so the file may be missing.
struct Settings {
    LinkKind link = LinkKind::Auto;
    std::string socket = "instrument.socket"; ///< from the library's folder, unless it begins with "/"
    int vendor = 0x1209;                      ///< 0 to 0xFFFF, as product
    int product = 0x0001;
    int interfaceNumber = 0;   ///< 0 to 255
    int endpointOut = 0x01;    ///< 0x01 to 0x0F
    int endpointIn = 0x81;     ///< 0x81 to 0x8F
    int writeTimeoutMs = 2000; ///< 0 to 60000, as readTimeoutMs
    int readTimeoutMs = 3000;
    std::string folder; ///< of the library, with "/" at its end
};

/// What reading the settings has given.
struct SettingsRead {
    Settings settings;
    /// What could not be understood, one line each, at most 20 lines, without control characters. Empty when all is
    /// well.
    std::string complaint;
};

/// Reads the settings from the text of a file. A value that cannot be understood keeps its default and is named in the
/// complaint. A byte-order mark is skipped. A text above 64 KiB is read up to the last line that ends within them, with
/// a complaint.
[[nodiscard]] SettingsRead settingsOf(std::string_view text);

/// Reads the settings file of a folder, which ends in "/". A file that cannot be read is a complaint; a missing one is
/// not.
[[nodiscard]] SettingsRead readSettings(const std::string& folder);

} // namespace ttdll
