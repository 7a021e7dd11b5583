// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"

#include "platform/files/bytefile.h"

#include <string>
#include <vector>

namespace sixtrace::kqx {

// The file names that a command is given, for commands that take any number of files.

/// The options --files-from, --null and --jobs.
[[nodiscard]] std::vector<Option> listOptions();
/// The options of a command that writes files: those of listOptions(), and --out-dir, --to and --no-clobber. `forms` is
/// the help text of --to.
[[nodiscard]] std::vector<Option> writingOptions(const char* forms);

/// `options`, followed by `more`.
[[nodiscard]] std::vector<Option> withOptions(std::vector<Option> options, const std::vector<Option>& more);

/// The files that a command is given: its arguments, and after them the names in the list of --files-from.
[[nodiscard]] OrExit<std::vector<std::string>> filesToRead(const Usage& usage, const Arguments& arguments);

/// The number of --jobs, 1 to 256; by default the number of processors.
[[nodiscard]] OrExit<int> jobsOf(const Arguments& arguments);

/// A file, and where its result goes.
struct Task {
    std::string file;
    std::string out; ///< "-" is standard output
};

/// What a command that writes files has to do.
struct Tasks {
    std::vector<Task> tasks;
    std::string extension; ///< in small letters, without its point; the kind of file to write
    Existing existing = Existing::Replaced;
    bool isBatch = false; ///< the names of the results are made from those of the files
};

/// The tasks of FILE OUT, or of any number of files with --to, --out-dir or --files-from. `extensions` are those that
/// the command can write. Two files whose results would have the same name are refused.
[[nodiscard]] OrExit<Tasks> filesToWrite(const Usage& usage, const Arguments& arguments,
                                         const std::vector<std::string>& extensions);

} // namespace sixtrace::kqx
