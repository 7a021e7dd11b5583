// SPDX-License-Identifier: MIT
#include "batch.h"

#include "jsontext.h"
#include "platform/files/bytefile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <set>
#include <span>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace sixtrace::kqx {

namespace {

constexpr int kMostJobs = 256;

int refuse(const Usage& usage, const std::string& text) {
    return failWith(WrongUse, std::string("kqx ") + usage.command + ' ' + text);
}

/// All bytes of a list of names; nothing where it cannot be read.
std::optional<std::string> listOf(const std::string& name) {
    std::FILE* const file = name == "-" ? stdin : std::fopen(name.c_str(), "rbe");
    if (file == nullptr) {
        return std::nullopt;
    }
    std::string all;
    std::array<char, 65536> piece{};
    std::size_t got = 0;
    while ((got = std::fread(piece.data(), 1, piece.size(), file)) > 0) {
        all.append(piece.data(), got);
    }
    const bool whole = std::ferror(file) == 0;
    if (file != stdin) {
        std::fclose(file);
    }
    return whole ? std::optional(std::move(all)) : std::nullopt;
}

/// Appends the parts of a list; no second list of them stands in memory meanwhile.
void appendParts(std::vector<std::string>& parts, std::string_view all, char end) {
    parts.reserve(parts.size() + static_cast<std::size_t>(std::count(all.begin(), all.end(), end)) + 1);
    while (!all.empty()) {
        const std::size_t length = std::min(all.find(end), all.size());
        if (length > 0) {
            parts.emplace_back(all.substr(0, length));
        }
        all.remove_prefix(std::min(length + 1, all.size()));
    }
}

/// Adds the names of --files-from; false where they cannot be read, which has been said then.
bool addListed(const Arguments& arguments, std::vector<std::string>& files) {
    if (!arguments.has("files-from")) {
        return true;
    }
    const std::string name = arguments.value("files-from");
    const auto list = listOf(name);
    if (!list) {
        failWith(Failed, name + ": the list of file names cannot be read");
        return false;
    }
    appendParts(files, *list, arguments.has("null") ? '\0' : '\n');
    return true;
}

/// The extension of a name in small letters, without its point; empty where there is none.
std::string extensionOf(std::string_view name) {
    const std::size_t slash = name.rfind('/');
    const std::string_view base = slash == std::string_view::npos ? name : name.substr(slash + 1);
    const std::size_t point = base.rfind('.');
    std::string extension(point == std::string_view::npos || point == 0 ? std::string_view() : base.substr(point + 1));
    for (char& c : extension) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return extension;
}

/// Where the result of a file goes: "x.bin" becomes "DIR/x.EXT".
std::string resultName(const std::string& file, const std::string& folder, const std::string& extension) {
    std::string base = file.substr(file.rfind('/') + 1);
    const std::size_t point = base.rfind('.');
    if (point != std::string::npos && point > 0) {
        base.resize(point);
    }
    base += '.' + extension;
    if (folder.empty()) {
        return base;
    }
    return folder.back() == '/' ? folder + base : folder + '/' + base;
}

bool isFolder(const std::string& path) {
    struct stat about {};
    return ::stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
}

/// Whether a file that is there begins as a capture does. Nothing is waited for where it is a pipe or a device.
bool holdsCapture(const std::string& path) {
    constexpr std::string_view kMagic = "KQX";
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return false;
    }
    std::array<char, kMagic.size()> start{};
    const ssize_t got = ::pread(descriptor, start.data(), start.size(), 0);
    ::close(descriptor);
    return got == static_cast<ssize_t>(start.size()) && std::string_view(start.data(), start.size()) == kMagic;
}

/// "csv, npz or sr", each behind `mark`.
std::string listed(const std::vector<std::string>& extensions, const std::string& mark) {
    std::string text;
    for (std::size_t i = 0; i < extensions.size(); ++i) {
        text += (i == 0 ? "" : i + 1 == extensions.size() ? " or " : ", ") + mark + extensions[i];
    }
    return text;
}

/// Tells on a terminal how far a long batch is.
class Progress {
public:
    explicit Progress(std::size_t count)
        : m_count(count)
        , m_terminal(count > 1 && ::isatty(STDERR_FILENO) != 0) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    void clear() {
        if (m_shown > 0) {
            std::fprintf(stderr, "\r%*s\r", m_shown, "");
            m_shown = 0;
        }
    }
    void show(std::size_t done) {
        using namespace std::chrono_literals;
        const auto now = std::chrono::steady_clock::now();
        if (m_terminal && now - m_start > 1s && now - m_last > 100ms) {
            m_last = now;
            m_shown = std::fprintf(stderr, "\r%zu of %zu files", done, m_count) - 1;
        }
    }

private:
    std::size_t m_count;
    bool m_terminal;
    int m_shown = 0;
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    std::chrono::steady_clock::time_point m_last;
};

/// Hands out pieces of the batch and prints what came of them in order.
class Desk {
public:
    Desk(std::size_t count, int jobs)
        : m_count(count)
        , m_piece(jobs == 1 ? 1 : std::clamp<std::size_t>(count / (static_cast<std::size_t>(jobs) * 8), 1, 32))
        , m_ahead(m_piece * static_cast<std::size_t>(jobs) * 4)
        , m_progress(count) {}

    /// What one job does until nothing is left.
    void work(const Work& work) {
        Answer answer;
        while (const auto start = take()) {
            const std::size_t end = std::min(m_count, *start + m_piece);
            answer.out.clear();
            answer.err.clear();
            answer.code = Done;
            for (std::size_t i = *start; i < end; ++i) {
                work(i, answer);
            }
            hand(*start, answer);
        }
    }
    [[nodiscard]] int code() const { return m_code; }

private:
    /// The first file of the next piece. Nobody runs far ahead of what has been printed, so that memory stays bounded.
    std::optional<std::size_t> take() {
        std::unique_lock lock(m_mutex);
        m_printedSome.wait(lock, [this] { return m_taken < m_printed + m_ahead; });
        if (m_taken >= m_count) {
            return std::nullopt;
        }
        return std::exchange(m_taken, m_taken + m_piece);
    }

    void hand(std::size_t start, Answer& answer) {
        const std::lock_guard lock(m_mutex);
        m_code = std::max(m_code, answer.code);
        if (start != m_printed) {
            m_waiting.emplace(start, answer);
            return;
        }
        print(answer);
        for (auto it = m_waiting.begin(); it != m_waiting.end() && it->first == m_printed; it = m_waiting.erase(it)) {
            print(it->second);
        }
        m_progress.show(std::min(m_printed, m_count));
        m_printedSome.notify_all();
    }

    void print(const Answer& answer) {
        if (!answer.out.empty() || !answer.err.empty()) {
            m_progress.clear();
        }
        std::fwrite(answer.out.data(), 1, answer.out.size(), stdout);
        if (!answer.err.empty()) {
            std::fflush(stdout); // lines of both stand in their order where both go to one place
            std::fwrite(answer.err.data(), 1, answer.err.size(), stderr);
        }
        m_printed += m_piece;
    }

    std::size_t m_count;
    std::size_t m_piece;
    std::size_t m_ahead;
    std::mutex m_mutex;
    std::condition_variable m_printedSome;
    std::size_t m_taken = 0;
    std::size_t m_printed = 0;
    std::map<std::size_t, Answer> m_waiting;
    Progress m_progress;
    int m_code = Done;
};

} // namespace

std::vector<Option> listOptions() {
    return {{"files-from", "list", "Read more file names from this list, one per line; - is standard input."},
            {"null", nullptr, "Names in the list end with a NUL byte, as find -print0 writes them."},
            {"jobs", "n", "Work on n files at the same time, 1 to 256; by default on one per processor."}};
}

std::vector<Option> writingOptions(const char* forms) {
    std::vector<Option> options = listOptions();
    options.push_back({"out-dir", "folder",
                       "Write the results into this folder, which must exist; x.bin becomes x.EXT. By default the "
                       "results of several FILEs go into the current folder."});
    options.push_back({"to", "ext", forms});
    options.push_back({"no-clobber", nullptr, "Do not replace a file that exists already; the exit code is 1 then."});
    return options;
}

std::vector<Option> withOptions(std::vector<Option> options, const std::vector<Option>& more) {
    options.insert(options.end(), more.begin(), more.end());
    return options;
}

OrRefused<std::vector<std::string>> filesToRead(const Usage& usage, const Arguments& arguments) {
    std::vector<std::string> files = arguments.positional();
    if (!addListed(arguments, files)) {
        return Refused{Failed};
    }
    if (files.empty() && !arguments.has("files-from")) {
        return Refused{refuse(usage, std::string("takes ") + usage.arguments)};
    }
    return files;
}

OrRefused<int> jobsOf(const Arguments& arguments) {
    const int processors = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostJobs);
    if (!arguments.has("jobs")) {
        return processors;
    }
    const auto jobs = wholeNumber(arguments.value("jobs"), 1, kMostJobs);
    if (!jobs) {
        return Refused{failWith(WrongUse, "--jobs takes a whole number from 1 to 256")};
    }
    return *jobs;
}

OrRefused<Tasks> filesToWrite(const Usage& usage, const Arguments& arguments,
                              const std::vector<std::string>& extensions) {
    Tasks made;
    made.keepExisting = arguments.has("no-clobber");
    made.extension = arguments.value("to");
    const bool told = arguments.has("to");
    if (told && std::find(extensions.begin(), extensions.end(), made.extension) == extensions.end()) {
        return Refused{failWith(WrongUse, "--to takes " + listed(extensions, ""))};
    }
    std::vector<std::string> files = arguments.positional();
    const bool toOutput = files.size() > 1 && files.back() == "-";
    made.isBatch = !toOutput && (told || arguments.has("out-dir") || arguments.has("files-from"));
    if (!made.isBatch) {
        if (files.size() != 2) {
            return Refused{refuse(usage, files.size() > 2 && !toOutput
                                             ? "takes several files only with --to EXT or --out-dir FOLDER"
                                             : std::string("takes ") + usage.arguments)};
        }
        if (!told) {
            made.extension =
                toOutput ? (extensions.size() == 1 ? extensions.front() : std::string()) : extensionOf(files[1]);
        }
        if (std::find(extensions.begin(), extensions.end(), made.extension) == extensions.end()) {
            return Refused{failWith(
                WrongUse, toOutput ? "for standard output, --to has to name the kind of file: " + listed(extensions, "")
                                   : files[1] + ": the name has to end in " + listed(extensions, "."))};
        }
        made.tasks = {{files[0], files[1]}};
        return made;
    }
    if (!addListed(arguments, files)) {
        return Refused{Failed};
    }
    if (files.empty() && !arguments.has("files-from")) {
        return Refused{refuse(usage, std::string("takes ") + usage.arguments)};
    }
    if (!told) {
        if (extensions.size() > 1) {
            return Refused{
                failWith(WrongUse, "for several files, --to has to name the kind of file: " + listed(extensions, ""))};
        }
        made.extension = extensions.front();
    }
    const std::string folder = arguments.value("out-dir");
    if (arguments.has("out-dir") && !isFolder(folder)) {
        return Refused{failWith(Failed, folder + ": there is no such folder")};
    }
    std::set<std::string> names;
    for (std::string& file : files) {
        std::string out = resultName(file, folder, made.extension);
        if (!names.insert(out).second) {
            return Refused{failWith(
                WrongUse, out + " would be written twice, by files of the same name; nothing has been written")};
        }
        made.tasks.push_back({std::move(file), std::move(out)});
    }
    return made;
}

void Answer::complain(const std::string& text) {
    err += "kqx: " + text + '\n';
}

int runBatch(std::size_t count, int jobs, const std::function<Work()>& makeWork) {
    jobs = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(jobs), count));
    if (count == 0) {
        return Done;
    }
    Desk desk(count, jobs);
    std::vector<std::thread> helpers;
    for (int i = 1; i < jobs; ++i) {
        helpers.emplace_back([&desk, &makeWork] { desk.work(makeWork()); });
    }
    desk.work(makeWork());
    for (std::thread& helper : helpers) {
        helper.join();
    }
    return desk.code();
}

void deliver(const Task& task, std::string_view content, bool keepExisting, Answer& answer) {
    if (task.out == "-") {
        answer.out += content;
        return;
    }
    // Two captures that a pattern matched look like FILE OUT, and OUT is the second of them.
    if (holdsCapture(task.out)) {
        answer.complain(validUtf8(task.out) + ": this is a capture, and kqx does not replace captures");
        answer.code = Failed;
        return;
    }
    const auto bytes = std::as_bytes(std::span(content.data(), content.size()));
    const int error = writeWholeFile(task.out, bytes, keepExisting ? Existing::Kept : Existing::Replaced);
    if (error != 0) {
        answer.complain(validUtf8(task.out) + ": " + fileErrorText(error));
        answer.code = Failed;
    }
}

} // namespace sixtrace::kqx
