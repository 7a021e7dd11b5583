// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

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
};

/// The instrument on the bus, or null; why not is in the log.
[[nodiscard]] std::unique_ptr<Transport> openUsb(const Settings& settings, Log& log);
/// The simulated instrument behind a local socket, or null.
[[nodiscard]] std::unique_ptr<Transport> openSocket(const Settings& settings, Log& log);

} // namespace ttdll
