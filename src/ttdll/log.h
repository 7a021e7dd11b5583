// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace ttdll {

/// The library's own log file, "ttdll.log" in the library's folder: one line for each problem, with the time. The
/// program shows none of it. Nothing is logged in a folder that cannot be written. A log above 256 KiB is emptied
/// first.
class Log {
public:
    explicit Log(const std::string& folder)
        : m_path(folder + "ttdll.log") {}

    /// Adds a line. A failure is ignored, since there is no place to report it.
    void write(const std::string& text) const;

private:
    std::string m_path;
};

} // namespace ttdll
