// SPDX-License-Identifier: MIT
// The devices on the bus, as the bus library tells them.
#pragma once

#include "ttdll/settings.h"

#include <libusb.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace ttdll {

struct ContextEnd {
    void operator()(libusb_context* context) const { libusb_exit(context); }
};
struct HandleEnd {
    void operator()(libusb_device_handle* handle) const { libusb_close(handle); }
};
using Context = std::unique_ptr<libusb_context, ContextEnd>;
using Handle = std::unique_ptr<libusb_device_handle, HandleEnd>;

/// The devices on the bus, freed with this object.
class DeviceList {
public:
    explicit DeviceList(libusb_context* context)
        : m_count(libusb_get_device_list(context, &m_devices)) {}
    DeviceList(const DeviceList&) = delete;
    DeviceList& operator=(const DeviceList&) = delete;
    ~DeviceList() {
        if (m_count >= 0) {
            libusb_free_device_list(m_devices, 1);
        }
    }
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(std::max<ssize_t>(m_count, 0)); }
    [[nodiscard]] libusb_device* at(std::size_t index) const { return m_devices[index]; }

private:
    libusb_device** m_devices = nullptr;
    ssize_t m_count;
};

/// `value` in hexadecimal, with at least this many digits.
[[nodiscard]] std::string hex(int value, int digits);
/// "vendor:product" of the device that the settings name.
[[nodiscard]] std::string nameOf(const Settings& settings);

[[nodiscard]] std::optional<libusb_device_descriptor> descriptorOf(libusb_device* device);
/// Whether a device has the vendor and product number of the settings.
[[nodiscard]] bool isWanted(const libusb_device_descriptor& descriptor, const Settings& settings);

/// Which of the wanted bulk endpoints an interface has.
struct Endpoints {
    std::optional<int> inPacket; ///< packet size of the incoming one in bytes
    bool out = false;
    std::string present; ///< the addresses of all its endpoints, for the log

    [[nodiscard]] bool complete() const { return inPacket && out; }
};

/// A failed call of the bus library.
struct BusError {
    int code = LIBUSB_SUCCESS;
};

[[nodiscard]] std::variant<Endpoints, BusError> findEndpoints(libusb_device* device, const Settings& settings);

} // namespace ttdll
