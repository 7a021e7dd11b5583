// SPDX-License-Identifier: MIT
#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"

#include <libusb.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <vector>

namespace ttdll {

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned kDrainTimeoutMs = 50;
constexpr int kMostDrained = 4 * 1024 * 1024;
constexpr int kLargestPacket = 1024;

std::string hex(int value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*x", digits, static_cast<unsigned>(value));
    return text.data();
}

std::string nameOf(const Settings& settings) {
    return hex(settings.vendor, 4) + ":" + hex(settings.product, 4);
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
        const int code =
            libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointOut), copy.data(), count,
                                 &done, static_cast<unsigned>(m_settings.writeTimeoutMs));
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

/// Opens the first device of the configured numbers; the log tells an absent one from one without permission.
Handle openDevice(libusb_context* context, const Settings& settings, const Log& log) {
    libusb_device** devices = nullptr;
    const ssize_t count = libusb_get_device_list(context, &devices);
    Handle handle;
    bool found = false;
    for (ssize_t i = 0; i < count && !handle; ++i) {
        libusb_device_descriptor descriptor{};
        if (libusb_get_device_descriptor(devices[i], &descriptor) != LIBUSB_SUCCESS ||
            descriptor.idVendor != settings.vendor || descriptor.idProduct != settings.product) {
            continue;
        }
        found = true;
        libusb_device_handle* opened = nullptr;
        const int code = libusb_open(devices[i], &opened);
        handle.reset(opened);
        if (code == LIBUSB_ERROR_ACCESS) {
            log.write("usb: no permission to use device " + nameOf(settings) +
                      " (a udev rule has to give it to the user)");
        } else if (code != LIBUSB_SUCCESS) {
            log.write("usb: device " + nameOf(settings) + " does not open: " + libusb_strerror(code));
        }
    }
    if (count >= 0) {
        libusb_free_device_list(devices, 1);
    }
    if (!found) {
        log.write("usb: no device " + nameOf(settings) + " among " + std::to_string(std::max<ssize_t>(count, 0)));
    }
    return handle;
}

/// The packet size of the incoming endpoint when both endpoints are bulk endpoints of the interface; 0, with what there
/// is in the log, otherwise.
int checkedPacketSize(libusb_device_handle* handle, const Settings& settings, const Log& log) {
    libusb_config_descriptor* config = nullptr;
    const int code = libusb_get_active_config_descriptor(libusb_get_device(handle), &config);
    if (code != LIBUSB_SUCCESS) {
        log.write(std::string("usb: the device does not tell its endpoints: ") + libusb_strerror(code));
        return 0;
    }
    int packet = 0;
    bool outFound = false;
    std::string present;
    for (int i = 0; i < config->bNumInterfaces; ++i) {
        const libusb_interface& side = config->interface[i];
        if (side.num_altsetting < 1 || side.altsetting[0].bInterfaceNumber != settings.interfaceNumber) {
            continue;
        }
        for (int e = 0; e < side.altsetting[0].bNumEndpoints; ++e) {
            const libusb_endpoint_descriptor& endpoint = side.altsetting[0].endpoint[e];
            const bool bulk = (endpoint.bmAttributes & LIBUSB_TRANSFER_TYPE_MASK) == LIBUSB_TRANSFER_TYPE_BULK;
            present += ' ' + hex(endpoint.bEndpointAddress, 2) + (bulk ? "" : " (no bulk endpoint)");
            outFound = outFound || (bulk && endpoint.bEndpointAddress == settings.endpointOut);
            if (bulk && endpoint.bEndpointAddress == settings.endpointIn) {
                packet = std::clamp(endpoint.wMaxPacketSize & 0x7FF, 8, kLargestPacket);
            }
        }
    }
    libusb_free_config_descriptor(config);
    if (packet == 0 || !outFound) {
        log.write("usb: endpoint " + hex(outFound ? settings.endpointIn : settings.endpointOut, 2) +
                  " is wrong: interface " + std::to_string(settings.interfaceNumber) + " has" +
                  (present.empty() ? std::string(" none") : present));
        return 0;
    }
    return packet;
}

} // namespace

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
