// SPDX-License-Identifier: MIT
#pragma once

#include "arguments.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sixtrace::kqx {

// What the commands share that take any number of files.

/// --files-from, --null and --jobs.
[[nodiscard]] std::vector<Option> listOptions();
/// These, --out-dir, --to and --no-clobber, for a command that writes files; `forms` names the extensions of --to.
[[nodiscard]] std::vector<Option> writingOptions(const char* forms);

/// `options` and behind them `more`.
[[nodiscard]] std::vector<Option> withOptions(std::vector<Option> options, const std::vector<Option>& more);

/// The code of a command whose arguments are wrong, once the sentence is said.
struct Refused {
    int code;
};

/// A list of names, or the code to end with.
template<typename T>
class OrRefused {
public:
    OrRefused(T value) // NOLINT(google-explicit-constructor): a value is a result
        : m_value(std::move(value)) {}
    OrRefused(Refused refused) // NOLINT(google-explicit-constructor): so is a refusal
        : m_refused(refused) {}
    explicit operator bool() const { return m_value.has_value(); }
    [[nodiscard]] T& operator*() { return *m_value; }
    [[nodiscard]] T* operator->() { return &*m_value; }
    [[nodiscard]] int code() const { return m_refused.code; }

private:
    std::optional<T> m_value;
    Refused m_refused{0};
};

/// The files that a command that only reads is given: its arguments, and behind them those of --files-from.
[[nodiscard]] OrRefused<std::vector<std::string>> filesToRead(const Usage& usage, const Arguments& arguments);

/// The number of --jobs; by default the processors that this process may use.
[[nodiscard]] OrRefused<int> jobsOf(const Arguments& arguments);

/// A file, and where its result goes.
struct Task {
    std::string file;
    std::string out; ///< "-" is standard output
};

/// What a command that writes is asked for.
struct Tasks {
    std::vector<Task> tasks;
    std::string extension; ///< that was chosen by --to or by OUT's name, in small letters
    bool keepExisting = false;
    bool isBatch = false; ///< names of OUT are made of those of the files
};

/// The tasks of FILE OUT, or of any number of files with --to, --out-dir or --files-from. `extensions` are those that
/// the command writes, the first being what it writes where nobody says. Refuses a name that would be written twice.
[[nodiscard]] OrRefused<Tasks> filesToWrite(const Usage& usage, const Arguments& arguments,
                                            const std::vector<std::string>& extensions);

/// What one file yields.
struct Answer {
    std::string out;
    std::string err; ///< whole lines
    int code = Done;

    /// Adds a line "kqx: ..." to err.
    void complain(const std::string& text);
};

/// Works on file number `index`. It may keep memory between its calls; each job has one of its own.
using Work = std::function<void(std::size_t index, Answer& answer)>;

/// Does the work for the files 0 to count - 1 in `jobs` threads and prints the answers in the order of the files. Gives
/// the greatest of their codes. A line on the terminal tells how far it is when that takes more than a second.
int runBatch(std::size_t count, int jobs, const std::function<Work()>& makeWork);

/// Puts a result where it belongs: into the answer for "-", else into a file that appears whole or not at all.
void deliver(const Task& task, std::string_view content, bool keepExisting, Answer& answer);

} // namespace sixtrace::kqx
