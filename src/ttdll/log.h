// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ttdll {

/// The library's own log file, "ttdll.log" beside it: one line per finding, with the time. The program shows nothing of
/// it. A folder that cannot be written keeps no log. A log of 256 KiB begins anew.
class Log {
public:
    explicit Log(const std::string& folder)
        : m_path(folder + "ttdll.log") {}

    void write(const std::string& text) const;

private:
    std::string m_path;
};

} // namespace ttdll
