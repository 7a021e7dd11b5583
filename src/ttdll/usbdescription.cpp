// SPDX-License-Identifier: MIT
// Describes what there is on the bus, for a user who looks for the reason why a link does not open.
#include "ttdll/transport.h"
#include "ttdll/usbbus.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

namespace ttdll {

namespace {

constexpr std::size_t kLongestAttribute = 200;

/// One field of the system's description of a device; empty when there is none. Control characters become blanks, since
/// tabs separate the fields of a line.
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
    const auto endpoints = findEndpoints(device, settings);
    const auto* found = std::get_if<Endpoints>(&endpoints);
    if (found == nullptr || !found->complete()) {
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

} // namespace ttdll
