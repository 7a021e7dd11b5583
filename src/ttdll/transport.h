// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace ttdll {

class Log;
struct Settings;

/// An open link to the instrument, which the destructor closes. All waits end after the times of the settings.
class Transport {
public:
    Transport() = default;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;
    virtual ~Transport() = default;

    /// Sends `count` bytes and returns how many were sent.
    virtual int send(const unsigned char* bytes, int count) = 0;
    /// Reads `count` bytes and returns how many came in time.
    virtual int receive(unsigned char* buffer, int count) = 0;
    /// Drops what the instrument still sends after a transfer that was cut off.
    virtual void recover() = 0;
    /// Whether the instrument has sent more than was read. Waits 50 ms for it.
    virtual bool hasMore() = 0;
};

/// What there is on the bus and at the socket, in lines of fields that are separated by tabs; see describeTt in
/// ttdll.h.
[[nodiscard]] std::string describeUsb(const Settings& settings);
[[nodiscard]] std::string describeSocket(const Settings& settings);

/// Opens the link over the bus. Null when that fails; the log then tells why.
[[nodiscard]] std::unique_ptr<Transport> openUsb(const Settings& settings, Log& log);
/// Opens the link to a simulated instrument at a local socket. Null when that fails.
[[nodiscard]] std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log);

} // namespace ttdll
