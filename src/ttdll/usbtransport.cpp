// SPDX-License-Identifier: MIT
#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"

#include <libusb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <optional>
#include <vector>

namespace ttdll {

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned kDrainTimeoutMs = 50;
constexpr int kMostDrained = 4 * 1024 * 1024;
constexpr int kLargestPacket = 1024;
constexpr std::size_t kLongestAttribute = 200;

std::string hex(int value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*x", digits, static_cast<unsigned>(value));
    return text.data();
}

std::string nameOf(const Settings& settings) {
    return hex(settings.vendor, 4) + ":" + hex(settings.product, 4);
}

/// A time-out as the bus library takes it, where 0 would wait for ever.
unsigned limit(int timeoutMs) {
    return static_cast<unsigned>(std::max(timeoutMs, 1));
}

struct ContextEnd {
    void operator()(libusb_context* context) const { libusb_exit(context); }
};
struct HandleEnd {
    void operator()(libusb_device_handle* handle) const { libusb_close(handle); }
};
using Context = std::unique_ptr<libusb_context, ContextEnd>;
using Handle = std::unique_ptr<libusb_device_handle, HandleEnd>;

class UsbTransport final : public Transport {
public:
    UsbTransport(Context context, Handle handle, Settings settings, int packet, Log& log)
        : m_context(std::move(context))
        , m_handle(std::move(handle))
        , m_settings(std::move(settings))
        , m_packet(packet)
        , m_log(log) {}
    ~UsbTransport() override { libusb_release_interface(m_handle.get(), m_settings.interfaceNumber); }

    int send(const unsigned char* bytes, int count) override {
        std::vector<unsigned char> copy(bytes, bytes + count);
        int done = 0;
        const int code = libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointOut),
                                              copy.data(), count, &done, limit(m_settings.writeTimeoutMs));
        if (code != LIBUSB_SUCCESS) {
            m_log.write(std::string("usb: sending failed: ") + libusb_strerror(code));
        }
        return done;
    }

    /// Asks for whole packets, since a device may send more than is wanted at once; what is over is kept for the next
    /// read.
    int receive(unsigned char* buffer, int count) override {
        const auto deadline = Clock::now() + std::chrono::milliseconds(m_settings.readTimeoutMs);
        int done = takeKept(buffer, count);
        while (done < count) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
            if (left <= 0) {
                m_log.write("usb: the instrument is silent after " + std::to_string(done) + " bytes");
                return done;
            }
            const int packets = (count - done + m_packet - 1) / m_packet;
            m_kept.resize(static_cast<std::size_t>(packets) * static_cast<std::size_t>(m_packet));
            int came = 0;
            const int code =
                libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn), m_kept.data(),
                                     static_cast<int>(m_kept.size()), &came, static_cast<unsigned>(left));
            m_kept.resize(static_cast<std::size_t>(came));
            m_keptAt = 0;
            done += takeKept(buffer + done, count - done);
            if (code != LIBUSB_SUCCESS && done < count) {
                m_log.write(std::string("usb: reading failed after ") + std::to_string(done) +
                            " bytes: " + libusb_strerror(code));
                return done;
            }
        }
        return done;
    }

    void recover() override {
        libusb_clear_halt(m_handle.get(), static_cast<unsigned char>(m_settings.endpointOut));
        libusb_clear_halt(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn));
        m_kept.clear();
        m_keptAt = 0;
        std::vector<unsigned char> rest(static_cast<std::size_t>(m_packet));
        int drained = 0;
        int came = 0;
        while (drained < kMostDrained &&
               libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn), rest.data(),
                                    m_packet, &came, kDrainTimeoutMs) == LIBUSB_SUCCESS &&
               came > 0) {
            drained += came;
        }
        if (drained > 0) {
            m_log.write("usb: threw away " + std::to_string(drained) + " bytes of a transfer that was cut off");
        }
    }

    bool hasMore() override {
        if (m_keptAt < m_kept.size()) {
            return true;
        }
        std::vector<unsigned char> rest(static_cast<std::size_t>(m_packet));
        int came = 0;
        libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn), rest.data(), m_packet,
                             &came, kDrainTimeoutMs);
        return came > 0;
    }

private:
    int takeKept(unsigned char* buffer, int count) {
        const int given = std::min(count, static_cast<int>(m_kept.size() - m_keptAt));
        std::copy_n(m_kept.begin() + static_cast<std::ptrdiff_t>(m_keptAt), given, buffer);
        m_keptAt += static_cast<std::size_t>(given);
        return given;
    }

    Context m_context;
    Handle m_handle;
    Settings m_settings;
    int m_packet;
    Log& m_log;
    std::vector<unsigned char> m_kept;
    std::size_t m_keptAt = 0;
};

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

std::optional<libusb_device_descriptor> descriptorOf(libusb_device* device) {
    libusb_device_descriptor descriptor{};
    return libusb_get_device_descriptor(device, &descriptor) == LIBUSB_SUCCESS ? std::optional(descriptor)
                                                                               : std::nullopt;
}

bool isWanted(const libusb_device_descriptor& descriptor, const Settings& settings) {
    return descriptor.idVendor == settings.vendor && descriptor.idProduct == settings.product;
}

/// Opens the first device of the configured numbers; the log tells an absent one from one without permission.
Handle openDevice(libusb_context* context, const Settings& settings, const Log& log) {
    const DeviceList devices(context);
    Handle handle;
    bool found = false;
    for (std::size_t i = 0; i < devices.size() && !handle; ++i) {
        const auto descriptor = descriptorOf(devices.at(i));
        if (!descriptor || !isWanted(*descriptor, settings)) {
            continue;
        }
        found = true;
        libusb_device_handle* opened = nullptr;
        const int code = libusb_open(devices.at(i), &opened);
        handle.reset(opened);
        if (code == LIBUSB_ERROR_ACCESS) {
            log.write("usb: no permission to use device " + nameOf(settings) +
                      " (a udev rule has to give it to the user)");
        } else if (code != LIBUSB_SUCCESS) {
            log.write("usb: device " + nameOf(settings) + " does not open: " + libusb_strerror(code));
        }
    }
    if (!found) {
        log.write("usb: no device " + nameOf(settings) + " among " + std::to_string(devices.size()));
    }
    return handle;
}

/// What an interface offers of the endpoints that are wanted.
struct Endpoints {
    int packet = 0; ///< size of the incoming one, 0 where it is missing
    bool out = false;
    std::string present; ///< all of them, for the log
    int error = LIBUSB_SUCCESS;

    [[nodiscard]] bool complete() const { return packet != 0 && out; }
};

Endpoints findEndpoints(libusb_device* device, const Settings& settings) {
    Endpoints found;
    libusb_config_descriptor* config = nullptr;
    found.error = libusb_get_active_config_descriptor(device, &config);
    if (found.error != LIBUSB_SUCCESS) {
        return found;
    }
    for (int i = 0; i < config->bNumInterfaces; ++i) {
        const libusb_interface& side = config->interface[i];
        if (side.num_altsetting < 1 || side.altsetting[0].bInterfaceNumber != settings.interfaceNumber) {
            continue;
        }
        for (int e = 0; e < side.altsetting[0].bNumEndpoints; ++e) {
            const libusb_endpoint_descriptor& endpoint = side.altsetting[0].endpoint[e];
            const bool bulk = (endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK) == LIBUSB_TRANSFER_TYPE_BULK;
            found.present += ' ' + hex(endpoint.bEndpointAddress, 2) + (bulk ? "" : " (no bulk endpoint)");
            found.out = found.out || (bulk && endpoint.bEndpointAddress == settings.endpointOut);
            if (bulk && endpoint.bEndpointAddress == settings.endpointIn) {
                found.packet = std::clamp(endpoint.wMaxPacketSize & 0x7FF, 8, kLargestPacket);
            }
        }
    }
    libusb_free_config_descriptor(config);
    return found;
}

/// The packet size of the incoming endpoint when both endpoints are bulk endpoints of the interface; 0, with what there
/// is in the log, otherwise.
int checkedPacketSize(libusb_device_handle* handle, const Settings& settings, const Log& log) {
    const Endpoints found = findEndpoints(libusb_get_device(handle), settings);
    if (found.error != LIBUSB_SUCCESS) {
        log.write(std::string("usb: the device does not tell its endpoints: ") + libusb_strerror(found.error));
        return 0;
    }
    if (!found.complete()) {
        log.write("usb: endpoint " + hex(found.out ? settings.endpointIn : settings.endpointOut, 2) +
                  " is wrong: interface " + std::to_string(settings.interfaceNumber) + " has" +
                  (found.present.empty() ? std::string(" none") : found.present));
        return 0;
    }
    return found.packet;
}

/// One word or name of the system's description of a device; empty where it has none. Tabs and the like become blanks.
std::string attributeOf(libusb_device* device, const char* attribute) {
    std::array<unsigned char, 8> ports{};
    const int depth = libusb_get_port_numbers(device, ports.data(), static_cast<int>(ports.size()));
    if (depth <= 0) {
        return {};
    }
    std::string name = std::to_string(libusb_get_bus_number(device)) + '-' + std::to_string(ports[0]);
    for (std::size_t i = 1; i < static_cast<std::size_t>(depth); ++i) {
        name += '.' + std::to_string(ports[i]);
    }
    std::ifstream file("/sys/bus/usb/devices/" + name + '/' + attribute);
    std::string text;
    std::getline(file, text);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
    return text.substr(0, kLongestAttribute);
}

std::string stateOf(libusb_device* device, const Settings& settings) {
    libusb_device_handle* opened = nullptr;
    const int code = libusb_open(device, &opened);
    const Handle handle(opened);
    if (code == LIBUSB_ERROR_ACCESS) {
        return "rights";
    }
    if (code == LIBUSB_ERROR_NO_DEVICE) {
        return "absent";
    }
    if (code != LIBUSB_SUCCESS) {
        return std::string("failed: ") + libusb_strerror(code);
    }
    if (!findEndpoints(device, settings).complete()) {
        return "endpoints";
    }
    libusb_set_auto_detach_kernel_driver(opened, 1);
    const int claimed = libusb_claim_interface(opened, settings.interfaceNumber);
    if (claimed == LIBUSB_ERROR_BUSY) {
        return "busy";
    }
    if (claimed != LIBUSB_SUCCESS) {
        return std::string("failed: ") + libusb_strerror(claimed);
    }
    libusb_release_interface(opened, settings.interfaceNumber);
    return "open";
}

} // namespace

std::string describeUsb(const Settings& settings) {
    std::string text = "wanted\t" + nameOf(settings) + '\t' + std::to_string(settings.interfaceNumber) + '\t' +
                       hex(settings.endpointOut, 2) + '\t' + hex(settings.endpointIn, 2) + '\n';
    libusb_context* made = nullptr;
    if (libusb_init(&made) != LIBUSB_SUCCESS) {
        return text;
    }
    const Context context(made);
    const DeviceList devices(context.get());
    for (std::size_t i = 0; i < devices.size(); ++i) {
        libusb_device* device = devices.at(i);
        const auto descriptor = descriptorOf(device);
        if (!descriptor) {
            continue;
        }
        std::array<char, 32> place{};
        const int bus = libusb_get_bus_number(device);
        const int address = libusb_get_device_address(device);
        std::snprintf(place.data(), place.size(), "%03d:%03d", bus, address);
        std::array<char, 40> path{};
        std::snprintf(path.data(), path.size(), "/dev/bus/usb/%03d/%03d", bus, address);
        text += std::string("device\t") + place.data() + '\t' + hex(descriptor->idVendor, 4) + ':' +
                hex(descriptor->idProduct, 4) + '\t' + path.data() + '\t' + attributeOf(device, "manufacturer") + '\t' +
                attributeOf(device, "product") + '\t' + attributeOf(device, "serial") + '\t' +
                (isWanted(*descriptor, settings) ? stateOf(device, settings) : "other") + '\n';
    }
    return text;
}

std::unique_ptr<Transport> openUsb(const Settings& settings, Log& log) {
    libusb_context* made = nullptr;
    const int code = libusb_init(&made);
    Context context(made);
    if (code != LIBUSB_SUCCESS) {
        log.write(std::string("usb: no access to the bus: ") + libusb_strerror(code));
        return nullptr;
    }
    Handle handle = openDevice(context.get(), settings, log);
    if (!handle) {
        return nullptr;
    }
    libusb_set_auto_detach_kernel_driver(handle.get(), 1);
    const int packet = checkedPacketSize(handle.get(), settings, log);
    if (packet == 0) {
        return nullptr;
    }
    const int claimed = libusb_claim_interface(handle.get(), settings.interfaceNumber);
    if (claimed != LIBUSB_SUCCESS) {
        log.write("usb: interface " + std::to_string(settings.interfaceNumber) +
                  " is not to be had: " + libusb_strerror(claimed));
        return nullptr;
    }
    return std::make_unique<UsbTransport>(std::move(context), std::move(handle), settings, packet, log);
}

} // namespace ttdll
