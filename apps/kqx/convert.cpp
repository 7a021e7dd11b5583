// SPDX-License-Identifier: MIT
// kqx convert: the samples of captures in files that other programs read.
#include "batch.h"
#include "captureinfo.h"
#include "datacommands.h"
#include "jsontext.h"

#include "output/samplefiles.h"

#include <cstdlib>
#include <memory>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace sixtrace::kqx {

namespace {

const Usage& usage() {
    static const Usage made{
        "convert", "FILE OUT | FILE...",
        "Writes all samples of each capture with their times in seconds and their voltages at the probe's tip in "
        "volts: as comma-separated values (.csv), NumPy arrays (.npz) or a sigrok session (.sr). The extension of OUT, "
        "or --to, chooses the kind. OUT may be - for standard output.",
        withOptions({{"channels", "list", "Write only these channels: ch1, ch2, A, B, C, D, separated by commas."}},
                    writingOptions("The kind of file: csv, npz or sr. Needed for several FILEs."))};
    return made;
}

/// The content of the file for a capture; nothing when it cannot be made, and the answer then says why.
std::optional<std::string> converted(const std::string& name, const CaptureRecord& record, const ChannelChoice& choice,
                                     const std::string& extension, Answer& answer) {
    std::vector<SampleColumn> columns;
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        if (record.channels[c].present && choice[c]) {
            columns.push_back({recordLabel(c), record.channels[c]});
        }
    }
    if (extension == "csv") {
        return samplesCsv(columns);
    }
    std::optional<std::string> made;
    if (extension == "npz") {
        std::string info;
        appendInfoJson(info, name, record);
        info.pop_back(); // its line end
        made = samplesNpz(columns, info);
    } else {
        if (const auto refusal = sessionRefusal(columns)) {
            answer.fail(validUtf8(name) + ": " + *refusal);
            return std::nullopt;
        }
        made = samplesSession(columns);
    }
    if (!made) {
        answer.fail(validUtf8(name) + ": the archive could not be made");
    }
    return made;
}

/// Saves work that would otherwise be repeated for each file. Freed memory stays with the process, since the system
/// clears each page that it hands out again. The time zone is set to UTC, since the zip library looks at the file of
/// any other zone twice for each array; the archives hold no times.
void keepMemoryAndZone() {
    ::setenv("TZ", "UTC0", 1);
#if defined(__GLIBC__)
    constexpr int kPlenty = 1 << 28;
    mallopt(M_MMAP_THRESHOLD, kPlenty);
    mallopt(M_TRIM_THRESHOLD, kPlenty);
#endif
}

} // namespace

ExitCode convert(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const auto choice = channelsOf(given);
    if (!choice) {
        return choice.error();
    }
    const auto tasks = filesToWrite(usage(), given, {"csv", "npz", "sr"});
    if (!tasks) {
        return tasks.error();
    }
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    keepMemoryAndZone();
    const Tasks& all = tasks.value();
    return runBatch(all.tasks.size(), jobs.value(), [&]() -> Work {
        return [&, reader = std::make_shared<CaptureReader>()](std::size_t i, Answer& answer) {
            const Task& task = all.tasks[i];
            reader->read(task.file, answer);
            if (!reader->record.isCapture()) {
                return;
            }
            if (const auto content = converted(task.file, reader->record, choice.value(), all.extension, answer)) {
                deliver(task, *content, all.existing, answer);
            }
        };
    });
}

} // namespace sixtrace::kqx
