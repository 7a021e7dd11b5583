// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace ttdll {

class Log;
struct Settings;

/// An open way to the instrument. Made open, closed by its destructor. All waits end after the configured times.
class Transport {
public:
    Transport() = default;
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;
    virtual ~Transport() = default;

    /// Sends; the count that went out.
    virtual int send(const unsigned char* bytes, int count) = 0;
    /// Reads `count` bytes; the count that came before the time was over.
    virtual int receive(unsigned char* buffer, int count) = 0;
    /// After a transfer that was cut off: throws away what the instrument still sends.
    virtual void recover() = 0;
    /// Whether the instrument has sent more than was read. Waits a moment for it.
    virtual bool hasMore() = 0;
};

/// What there is on the bus and behind the socket, a line each of fields parted by tabs; see describeTt in ttdll.h.
[[nodiscard]] std::string describeUsb(const Settings& settings);
[[nodiscard]] std::string describeSocket(const Settings& settings);

/// The instrument on the bus, or null; why not is in the log.
[[nodiscard]] std::unique_ptr<Transport> openUsb(const Settings& settings, Log& log);
/// The simulated instrument behind a local socket, or null.
[[nodiscard]] std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log);

} // namespace ttdll
