// SPDX-License-Identifier: MIT
// Reads settings of the transfer library from any text.
#include "require.h"
#include "ttdll/settings.h"

#include <algorithm>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using sixtrace::require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto [settings, complaint] = ttdll::settingsOf(text);

    const auto within = [](int value, int least, int greatest) { return value >= least && value <= greatest; };
    require(within(settings.vendor, 0, 0xFFFF) && within(settings.product, 0, 0xFFFF));
    require(within(settings.interfaceNumber, 0, 255));
    require(within(settings.endpointOut, 0x01, 0x0F) && within(settings.endpointIn, 0x81, 0x8F));
    require(within(settings.writeTimeoutMs, 0, 60000) && within(settings.readTimeoutMs, 0, 60000));
    require(!settings.socket.empty() && settings.socket.find('\0') == std::string::npos);

    require(complaint.empty() || complaint.back() == '\n');
    require(std::count(complaint.begin(), complaint.end(), '\n') <= 20);
    require(std::none_of(complaint.begin(), complaint.end(), [](char c) { return c >= 0 && c < ' ' && c != '\n'; }));
    return 0;
}
