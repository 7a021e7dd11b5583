// SPDX-License-Identifier: MIT
#include "ttdll/usbbus.h"

#include <array>
#include <cstdio>

namespace ttdll {

namespace {

constexpr int kSmallestPacket = 8;
constexpr int kLargestPacket = 1024;
constexpr int kPacketSizeBits = 0x7FF; ///< the higher bits of the field have another meaning

} // namespace

std::string hex(int value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*x", digits, static_cast<unsigned>(value));
    return text.data();
}

std::string nameOf(const Settings& settings) {
    return hex(settings.vendor, 4) + ":" + hex(settings.product, 4);
}

std::optional<libusb_device_descriptor> descriptorOf(libusb_device* device) {
    libusb_device_descriptor descriptor{};
    return libusb_get_device_descriptor(device, &descriptor) == LIBUSB_SUCCESS ? std::optional(descriptor)
                                                                               : std::nullopt;
}

bool isWanted(const libusb_device_descriptor& descriptor, const Settings& settings) {
    return descriptor.idVendor == settings.vendor && descriptor.idProduct == settings.product;
}

std::variant<Endpoints, BusError> findEndpoints(libusb_device* device, const Settings& settings) {
    Endpoints found;
    libusb_config_descriptor* config = nullptr;
    const int code = libusb_get_active_config_descriptor(device, &config);
    if (code != LIBUSB_SUCCESS) {
        return BusError{code};
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
                found.inPacket = std::clamp(endpoint.wMaxPacketSize & kPacketSizeBits, kSmallestPacket, kLargestPacket);
            }
        }
    }
    libusb_free_config_descriptor(config);
    return found;
}

} // namespace ttdll
