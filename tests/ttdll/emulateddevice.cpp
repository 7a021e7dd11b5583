// SPDX-License-Identifier: MIT
// An instrument on an emulated USB bus. "emulateddevice HOW COMMAND..." runs the command with the device plugged in.
// HOW: clean, packed (header and data in full packets, without a break between them), silent (after the header), cut
// (the first transfer stops halfway, the rest comes later), surplus (64 bytes more than the header says), deaf (takes
// no command), forbidden (the user may not open it), other-endpoint, other-device.
#include <umockdev.h>

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
// The kernel's header needs the one above.
#include <linux/usbdevice_fs.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPacket = 64;
constexpr std::size_t kLength = 1000;

std::string how;
std::deque<UMockdevIoctlData*> pending;
std::deque<UMockdevIoctlData*> cancelled;
std::deque<std::vector<unsigned char>> packets; ///< what the device sends next
int transfers = 0;
bool stale = false; ///< a transfer that was cut off has left something to send

void queueStream(std::vector<unsigned char> stream) {
    for (std::size_t at = 0; at < stream.size(); at += kPacket) {
        const auto begin = stream.begin() + static_cast<std::ptrdiff_t>(at);
        packets.emplace_back(begin, begin + static_cast<std::ptrdiff_t>(std::min(kPacket, stream.size() - at)));
    }
}

void takeCommand() {
    std::vector<unsigned char> header(12, 0);
    header[0] = kLength & 0xFF;
    header[1] = kLength >> 8;
    std::vector<unsigned char> data;
    for (std::size_t i = 0; i < kLength; ++i) {
        data.push_back(static_cast<unsigned char>(i * 7));
    }
    ++transfers;
    if (how == "packed") {
        header.insert(header.end(), data.begin(), data.end());
        queueStream(header);
        return;
    }
    queueStream(header);
    if (how == "silent") {
        return;
    }
    if (how == "cut" && transfers == 1) {
        data.resize(kPacket * 5);
        queueStream(data);
        stale = true; // the rest comes when the link is put in order
        return;
    }
    queueStream(data);
    if (how == "surplus") {
        queueStream(std::vector<unsigned char>(kPacket, 0x55));
    }
}

/// Finishes a request if the device has something for it.
bool serve(usbdevfs_urb* request, unsigned char* buffer) {
    request->status = 0;
    if (request->type == USBDEVFS_URB_TYPE_CONTROL) {
        request->status = -EPIPE;
        request->actual_length = 0;
        return true;
    }
    if ((request->endpoint & 0x80) == 0) {
        if (how == "deaf") {
            return false;
        }
        if (request->buffer_length == 5 && std::memcmp(buffer, "START", 5) == 0) {
            takeCommand();
        }
        request->actual_length = request->buffer_length;
        return true;
    }
    std::size_t done = 0;
    const auto wanted = static_cast<std::size_t>(request->buffer_length);
    while (!packets.empty() && done + packets.front().size() <= wanted) {
        const std::vector<unsigned char> packet = packets.front();
        packets.pop_front();
        std::copy(packet.begin(), packet.end(), buffer + done);
        done += packet.size();
        if (packet.size() < kPacket || done == wanted) {
            request->actual_length = static_cast<int>(done);
            return true;
        }
    }
    return false;
}

gboolean onIoctl(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer) {
    const gulong number = umockdev_ioctl_client_get_request(client);
    UMockdevIoctlData* argument = umockdev_ioctl_client_get_arg(client);
    UMockdevIoctlData* data = umockdev_ioctl_data_resolve(argument, 0, _IOC_SIZE(number), nullptr);
    const auto answer = [client](glong result, int error) { umockdev_ioctl_client_complete(client, result, error); };
    switch (number) {
    case USBDEVFS_GET_CAPABILITIES: {
        const guint32 capabilities = USBDEVFS_CAP_BULK_CONTINUATION | USBDEVFS_CAP_ZERO_PACKET |
                                     USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
        std::memcpy(data->data, &capabilities, sizeof capabilities);
        answer(0, 0);
        return TRUE;
    }
    case USBDEVFS_CLAIMINTERFACE:
    case USBDEVFS_DISCONNECT_CLAIM:
    case USBDEVFS_RELEASEINTERFACE:
    case USBDEVFS_RESET:
        answer(0, 0);
        return TRUE;
    case USBDEVFS_CLEAR_HALT:
        if (stale) {
            stale = false;
            packets.assign(3, std::vector<unsigned char>(kPacket, 0xEE));
        }
        answer(0, 0);
        return TRUE;
    case USBDEVFS_SUBMITURB: {
        auto* request = reinterpret_cast<usbdevfs_urb*>(data->data);
        umockdev_ioctl_data_resolve(data, offsetof(usbdevfs_urb, buffer), static_cast<gsize>(request->buffer_length),
                                    nullptr);
        pending.push_back(static_cast<UMockdevIoctlData*>(g_object_ref(data)));
        answer(0, 0);
        return TRUE;
    }
    case USBDEVFS_DISCARDURB: {
        gulong address = 0;
        std::memcpy(&address, argument->data, sizeof address);
        const auto found = std::find_if(pending.begin(), pending.end(),
                                        [address](const UMockdevIoctlData* p) { return p->client_addr == address; });
        if (found == pending.end()) {
            answer(-1, EINVAL);
            return TRUE;
        }
        cancelled.push_back(*found);
        pending.erase(found);
        answer(0, 0);
        return TRUE;
    }
    case USBDEVFS_REAPURB:
    case USBDEVFS_REAPURBNDELAY: {
        UMockdevIoctlData* done = nullptr;
        if (!cancelled.empty()) {
            done = cancelled.front();
            cancelled.pop_front();
            auto* request = reinterpret_cast<usbdevfs_urb*>(done->data);
            request->status = -ENOENT;
            request->actual_length = 0;
        } else {
            const auto ready = std::find_if(pending.begin(), pending.end(), [](UMockdevIoctlData* p) {
                auto* request = reinterpret_cast<usbdevfs_urb*>(p->data);
                return serve(request, static_cast<unsigned char*>(request->buffer));
            });
            if (ready != pending.end()) {
                done = *ready;
                pending.erase(ready);
            }
        }
        if (done == nullptr) {
            answer(-1, EAGAIN);
            return TRUE;
        }
        umockdev_ioctl_data_set_ptr(data, 0, done);
        answer(0, 0);
        g_object_unref(done);
        return TRUE;
    }
    default:
        answer(-1, ENOTTY);
        return TRUE;
    }
}

std::string descriptor(unsigned char product, unsigned char endpointIn) {
    const std::vector<unsigned char> bytes{18, 1,  0, 2, 0xFF, 0, 0,          64, 0x09, 0x12, product, 0x00, 0,
                                           1,  1,  2, 0, 1,    9, 2,          32, 0,    1,    1,       0,    0x80,
                                           50, 9,  4, 0, 0,    2, 0xFF,       0,  0,    0,    7,       5,    0x01,
                                           2,  64, 0, 0, 7,    5, endpointIn, 2,  64,   0,    0};
    std::string text;
    for (const unsigned char byte : bytes) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02X", byte);
        text += digits;
    }
    return text;
}

/// Root may open everything, so a test of missing rights has to run as another user.
void becomeNobody(gpointer) {
    constexpr id_t kNobody = 65534;
    if (how == "forbidden" && geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
        _exit(3);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        return 2;
    }
    how = argv[1];
    const unsigned char product = how == "other-device" ? 2 : 1;
    const std::string bytes = descriptor(product, how == "other-endpoint" ? 0x82 : 0x81);
    const std::string device =
        "P: /devices/usb1/1-1\nN: bus/usb/001/002=" + bytes +
        "\nE: DEVTYPE=usb_device\nE: SUBSYSTEM=usb\nE: BUSNUM=001\nE: DEVNUM=002\nE: DEVNAME=/dev/bus/usb/001/002\n"
        "A: busnum=1\nA: devnum=2\nA: bConfigurationValue=1\nA: idVendor=1209\nA: idProduct=000" +
        std::to_string(product) + "\nA: speed=12\nA: bNumConfigurations=1\nH: descriptors=" + bytes + "\n";
    UMockdevTestbed* bus = umockdev_testbed_new();
    GError* error = nullptr;
    if (umockdev_testbed_add_from_string(bus, device.c_str(), &error) == FALSE) {
        std::fprintf(stderr, "%s\n", error->message);
        return 3;
    }
    UMockdevIoctlBase* handler = umockdev_ioctl_base_new();
    g_signal_connect(handler, "handle-ioctl", G_CALLBACK(onIoctl), nullptr);
    if (umockdev_testbed_attach_ioctl(bus, "/dev/bus/usb/001/002", handler, &error) == FALSE) {
        std::fprintf(stderr, "%s\n", error->message);
        return 3;
    }
    gint status = 0;
    gchar* folder = umockdev_testbed_get_root_dir(bus);
    if (how == "forbidden") {
        const std::string node = std::string(folder) + "/dev/bus/usb/001/002";
        const std::string readable = "chmod -R a+rwX " + std::string(folder);
        if (std::system(readable.c_str()) != 0 || chmod(node.c_str(), 0) != 0) {
            return 3;
        }
    }
    g_free(folder);
    if (g_spawn_sync(nullptr, argv + 2, nullptr, G_SPAWN_SEARCH_PATH, becomeNobody, nullptr, nullptr, nullptr, &status,
                     &error) == FALSE) {
        std::fprintf(stderr, "%s\n", error->message);
        return 3;
    }
    g_object_unref(bus);
    return g_spawn_check_wait_status(status, nullptr) == TRUE ? 0 : 1;
}
