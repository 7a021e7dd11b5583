// SPDX-License-Identifier: MIT
#include "ttdll/ttdll.h"

#include "ttdll/log.h"
#include "ttdll/settings.h"
#include "ttdll/transport.h"

#include <dlfcn.h>
#include <exception>
#include <memory>
#include <mutex>
#include <string>

namespace {

using namespace ttdll;

/// The folder of this library, with "/" at its end.
std::string ownFolder() {
    Dl_info self{};
    if (dladdr(reinterpret_cast<const void*>(&InitializeTt), &self) == 0 || self.dli_fname == nullptr) {
        return "./";
    }
    const std::string path = self.dli_fname;
    const std::size_t last = path.rfind('/');
    return last == std::string::npos ? "./" : path.substr(0, last + 1);
}

/// The one link of the process. A lock lets one call run at a time, since a program may use the link from several
/// threads.
struct Link {
    std::mutex mutex;
    Log log{ownFolder()};
    std::unique_ptr<Transport> transport;

    void open() {
        transport.reset();
        const auto [settings, complaint] = readSettings(ownFolder());
        if (!complaint.empty()) {
            log.write(complaint.substr(0, complaint.size() - 1)); // the log ends the line itself
        }
        if (settings.link != LinkKind::Usb) {
            transport = openSocket(settings, log);
        }
        if (transport == nullptr && settings.link != LinkKind::Socket) {
            transport = openUsb(settings, log);
        }
    }
};

Link& theLink() {
    static Link link;
    return link;
}

/// Runs `work` with the link locked. Returns 0 after an exception, which must not leave a C interface.
template<typename Work>
int32_t onLink(Work work) {
    Link& link = theLink();
    const std::lock_guard lock(link.mutex);
    try {
        return work(link);
    } catch (const std::exception& error) {
        link.log.write(std::string("failed: ") + error.what());
        return 0;
    }
}

void store(int32_t* done, int32_t count) {
    if (done != nullptr) {
        *done = count;
    }
}

} // namespace

int32_t InitializeTt(int32_t mode) {
    return onLink([mode](Link& link) {
        link.open();
        if (link.transport != nullptr && mode == 1) {
            link.transport->recover();
        }
        return link.transport == nullptr ? 0 : 1;
    });
}

int32_t closeTt(int32_t mode) {
    return onLink([mode](Link& link) {
        if (link.transport == nullptr) {
            return 0;
        }
        if (mode == 1) {
            link.transport->recover();
        }
        link.transport.reset();
        return 1;
    });
}

int32_t WriteThread(const void* bytes, int32_t count, int32_t* done) {
    const int32_t sent = onLink([bytes, count](Link& link) {
        if (link.transport == nullptr || count <= 0 || bytes == nullptr) {
            return 0;
        }
        return link.transport->send(static_cast<const unsigned char*>(bytes), count);
    });
    store(done, sent);
    return sent;
}

int32_t ReadThread(void* buffer, int32_t count, int32_t* done) {
    const int32_t came = onLink([buffer, count](Link& link) {
        if (link.transport == nullptr || count <= 0 || buffer == nullptr) {
            return 0;
        }
        return link.transport->receive(static_cast<unsigned char*>(buffer), count);
    });
    store(done, came);
    return came;
}

int32_t senddatatoTt(const void* bytes, int32_t count, int32_t* done) {
    return WriteThread(bytes, count, done);
}

int32_t getTtData(void* buffer, int32_t count, int32_t* done) {
    return ReadThread(buffer, count, done);
}

int32_t hasMoreTt() {
    return onLink([](Link& link) { return link.transport != nullptr && link.transport->hasMore() ? 1 : 0; });
}

int32_t describeTt(char* buffer, int32_t size) {
    return onLink([buffer, size](Link&) {
        const Settings settings = readSettings(ownFolder()).settings;
        constexpr const char* kLinks[] = {"auto", "usb", "socket"};
        std::string text =
            "settings\t" + settings.folder + "ttdll.ini\t" + kLinks[static_cast<int>(settings.link)] + '\n';
        if (settings.link != LinkKind::Usb) {
            text += describeSocket(settings);
        }
        if (settings.link != LinkKind::Socket) {
            text += describeUsb(settings);
        }
        if (buffer != nullptr && size > 0) {
            text.copy(buffer, static_cast<std::size_t>(size));
        }
        return static_cast<int32_t>(text.size());
    });
}
