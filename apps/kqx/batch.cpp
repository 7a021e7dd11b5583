// SPDX-License-Identifier: MIT
#include "batch.h"

#include "jsontext.h"
#include "platform/files/descriptor.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <span>
#include <thread>
#include <unistd.h>
#include <utility>

namespace sixtrace::kqx {

namespace {

/// Whether a file exists and begins as a capture does. A pipe or a device is not waited for.
bool holdsCapture(const std::string& path) {
    constexpr std::string_view kMagic = "KQX";
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::array<char, kMagic.size()> start{};
    return file && ::pread(file.number(), start.data(), start.size(), 0) == ssize_t{kMagic.size()} &&
           std::string_view(start.data(), start.size()) == kMagic;
}

/// A line on the terminal that says how far a long batch is.
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

/// Hands out the files of a batch in pieces, and prints the answers in the order of the files.
class Desk {
public:
    Desk(std::size_t count, std::size_t jobs)
        : m_count(count)
        , m_piece(jobs == 1 ? 1 : std::clamp<std::size_t>(count / (jobs * 8), 1, 32))
        , m_ahead(m_piece * jobs * 4)
        , m_progress(count) {}

    /// What each job runs until no file is left.
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
    [[nodiscard]] ExitCode code() const { return m_code; }

private:
    /// The first file of the next piece, or nothing when none is left. It waits while too many answers have not been
    /// printed yet, so that memory stays bounded.
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
            std::fflush(stdout); // keeps the lines in order when both go to the same place
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
    ExitCode m_code = Done;
};

} // namespace

void Answer::fail(const std::string& text) {
    err += "kqx: " + text + '\n';
    code = Failed;
}

ExitCode runBatch(std::size_t count, int jobs, const std::function<Work()>& makeWork) {
    if (count == 0) {
        return Done;
    }
    const std::size_t threads = std::min(static_cast<std::size_t>(jobs), count);
    Desk desk(count, threads);
    std::vector<std::thread> helpers;
    for (std::size_t i = 1; i < threads; ++i) {
        helpers.emplace_back([&desk, &makeWork] { desk.work(makeWork()); });
    }
    desk.work(makeWork());
    for (std::thread& helper : helpers) {
        helper.join();
    }
    return desk.code();
}

void deliver(const Task& task, std::string_view content, Existing existing, Answer& answer) {
    if (task.out == "-") {
        answer.out += content;
        return;
    }
    // Two captures that a pattern of the shell matched look like FILE OUT, and OUT is then the second of them.
    if (holdsCapture(task.out)) {
        answer.fail(validUtf8(task.out) + ": this is a capture, and kqx does not replace captures");
        return;
    }
    const auto written = writeWholeFile(task.out, std::as_bytes(std::span(content)), existing);
    if (!written) {
        answer.fail(validUtf8(task.out) + ": " + written.error().text());
    }
}

} // namespace sixtrace::kqx
