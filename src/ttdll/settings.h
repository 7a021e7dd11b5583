// SPDX-License-Identifier: MIT
#pragma once

#include <string>

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
    int vendor = 0x1209;
    int product = 0x0001;
    int interfaceNumber = 0;
    int endpointOut = 0x01;
    int endpointIn = 0x81;
    int writeTimeoutMs = 2000;
    int readTimeoutMs = 3000;
    std::string folder; ///< of the library, with "/" at its end
};

/// Reads the settings file of a folder. What cannot be read keeps its default and is named in `complaint`.
[[nodiscard]] Settings readSettings(const std::string& folder, std::string& complaint);

} // namespace ttdll
