// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace ttdll {

/// Which way is taken to the instrument.
enum class LinkKind {
    Auto, ///< the socket where somebody listens there, otherwise the bus
    Usb,
    Socket,
};

/// What ttdll.ini beside the library says; everything has a default, so that the file may be absent.
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

/// The settings that the text of a file tells. What cannot be understood keeps its default and is named in `complaint`,
/// a line each and at most 20 of them, without control characters. A byte-order mark is tolerated. Of a text above
/// 64 KiB all from the line that this limit cuts is passed over, with a complaint.
[[nodiscard]] Settings settingsOf(std::string_view text, std::string& complaint);

/// Reads the settings file of a folder. One that cannot be read is named in `complaint`; an absent one is no reason.
[[nodiscard]] Settings readSettings(const std::string& folder, std::string& complaint);

} // namespace ttdll
