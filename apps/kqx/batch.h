// SPDX-License-Identifier: MIT
#pragma once

#include "tasks.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace sixtrace::kqx {

// The work of a command on any number of files.

/// What the work on one file has given.
struct Answer {
    std::string out;
    std::string err; ///< whole lines
    ExitCode code = Done;

    /// Adds a line "kqx: ..." to err, and sets the code Failed.
    void fail(const std::string& text);
};

/// Works on the file of this index. A Work may keep memory between its calls, since each job has one of its own.
using Work = std::function<void(std::size_t index, Answer& answer)>;

/// Does the work for the files 0 to count - 1 in `jobs` threads, at least 1, and prints the answers in the order of the
/// files. The result is the greatest of their codes. When it takes more than a second, a line on the terminal says how
/// many files are done.
[[nodiscard]] ExitCode runBatch(std::size_t count, int jobs, const std::function<Work()>& makeWork);

/// Adds the result of a task to the answer when it goes to "-"; otherwise writes it to its file, which appears whole or
/// not at all.
void deliver(const Task& task, std::string_view content, Existing existing, Answer& answer);

} // namespace sixtrace::kqx
