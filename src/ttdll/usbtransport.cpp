// SPDX-License-Identifier: MIT
#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"
#include "ttdll/usbbus.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <variant>
#include <vector>

namespace ttdll {

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned kDrainTimeoutMs = 50;
constexpr int kMostDrained = 4 * 1024 * 1024;

/// A time-out for the bus library, for which 0 would set no limit.
unsigned limit(int timeoutMs) {
    return static_cast<unsigned>(std::max(timeoutMs, 1));
}

class UsbTransport final : public Transport {
public:
    UsbTransport(Context context, Handle handle, Settings settings, int packet, Log& log)
        : m_context(std::move(context))
        , m_handle(std::move(handle))
        , m_settings(std::move(settings))
        , m_packet(static_cast<std::size_t>(packet))
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

    /// Reads whole packets, since a device may send more at once than is wanted. The surplus is kept for the next read.
    int receive(unsigned char* buffer, int count) override {
        const auto deadline = Clock::now() + std::chrono::milliseconds(m_settings.readTimeoutMs);
        int done = takeKept(buffer, count);
        while (done < count) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
            if (left <= 0) {
                m_log.write("usb: the instrument is silent after " + std::to_string(done) + " bytes");
                return done;
            }
            const std::size_t packets = (static_cast<std::size_t>(count - done) + m_packet - 1) / m_packet;
            m_kept.resize(packets * m_packet);
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
        std::vector<unsigned char> rest(m_packet);
        int drained = 0;
        int came = 0;
        while (drained < kMostDrained &&
               libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn), rest.data(),
                                    static_cast<int>(rest.size()), &came, kDrainTimeoutMs) == LIBUSB_SUCCESS &&
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
        std::vector<unsigned char> rest(m_packet);
        int came = 0;
        libusb_bulk_transfer(m_handle.get(), static_cast<unsigned char>(m_settings.endpointIn), rest.data(),
                             static_cast<int>(rest.size()), &came, kDrainTimeoutMs);
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
    std::size_t m_packet; ///< size in bytes
    Log& m_log;
    std::vector<unsigned char> m_kept; ///< bytes that have come and were not wanted yet
    std::size_t m_keptAt = 0;          ///< where they begin
};

/// Opens the first device with the numbers of the settings. When there is none, or it does not open, the log tells
/// which of both.
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

/// The packet size of the incoming endpoint in bytes, when the interface has both endpoints as bulk endpoints.
/// Otherwise nothing, and the log tells which endpoints there are.
std::optional<int> packetSize(libusb_device_handle* handle, const Settings& settings, const Log& log) {
    const auto endpoints = findEndpoints(libusb_get_device(handle), settings);
    if (const auto* error = std::get_if<BusError>(&endpoints)) {
        log.write(std::string("usb: the device does not tell its endpoints: ") + libusb_strerror(error->code));
        return std::nullopt;
    }
    const auto& found = std::get<Endpoints>(endpoints);
    if (!found.complete()) {
        log.write("usb: endpoint " + hex(found.out ? settings.endpointIn : settings.endpointOut, 2) +
                  " is wrong: interface " + std::to_string(settings.interfaceNumber) + " has" +
                  (found.present.empty() ? std::string(" none") : found.present));
        return std::nullopt;
    }
    return found.inPacket;
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
    const std::optional<int> packet = packetSize(handle.get(), settings, log);
    if (!packet) {
        return nullptr;
    }
    const int claimed = libusb_claim_interface(handle.get(), settings.interfaceNumber);
    if (claimed != LIBUSB_SUCCESS) {
        log.write("usb: interface " + std::to_string(settings.interfaceNumber) +
                  " cannot be claimed: " + libusb_strerror(claimed));
        return nullptr;
    }
    return std::make_unique<UsbTransport>(std::move(context), std::move(handle), settings, *packet, log);
}

} // namespace ttdll
