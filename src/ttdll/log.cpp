// SPDX-License-Identifier: MIT
#include "ttdll/log.h"

#include <array>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ttdll {

namespace {

constexpr off_t kLargestLog = 262144;

std::string stamp() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    std::array<char, 32> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S ", &parts);
    return {text.data(), size};
}

} // namespace

void Log::write(const std::string& text) const {
    const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (file < 0) {
        return;
    }
    struct stat state {};
    if (fstat(file, &state) != 0 || !S_ISREG(state.st_mode)) {
        close(file); // a pipe or a device has the name of the log
        return;
    }
    const bool full = state.st_size > kLargestLog && ftruncate(file, 0) != 0;
    const std::string line = full ? std::string() : stamp() + text + '\n';
    static_cast<void>(::write(file, line.data(), line.size()) < 0); // there is no place to report a failure
    close(file);
}

} // namespace ttdll
