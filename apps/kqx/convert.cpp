// SPDX-License-Identifier: MIT
// kqx convert: the samples of captures in files that other programs read.
#include "batch.h"
#include "captureinfo.h"
#include "channelchoice.h"
#include "datacommands.h"
#include "jsontext.h"

#include "output/samplefiles.h"
#include "platform/files/bytefile.h"

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

/// What one job keeps between files.
struct Reader {
    ByteFile file;
    CaptureRecord record;
};

/// The file of these samples; nothing where it cannot be made, which the answer says then.
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
            answer.complain(validUtf8(name) + ": " + *refusal);
            return std::nullopt;
        }
        made = samplesSession(columns);
    }
    if (!made) {
        answer.complain(validUtf8(name) + ": the archive could not be made");
    }
    return made;
}

/// Lets the process keep what each file would otherwise ask the system for again: memory, of which each page would be
/// cleared anew, and the time zone, whose file the zip library looks at twice for each array. No time is told in one.
void keepMemoryAndZone() {
    ::setenv("TZ", "UTC0", 1);
#if defined(__GLIBC__)
    constexpr int kPlenty = 1 << 28;
    mallopt(M_MMAP_THRESHOLD, kPlenty);
    mallopt(M_TRIM_THRESHOLD, kPlenty);
#endif
}

} // namespace

int convert(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const auto choice = channelsOf(given);
    if (!choice) {
        return WrongUse;
    }
    auto tasks = filesToWrite(usage(), given, {"csv", "npz", "sr"});
    if (!tasks) {
        return tasks.code();
    }
    auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.code();
    }
    keepMemoryAndZone();
    return runBatch(tasks->tasks.size(), *jobs, [&]() -> Work {
        return [&, reader = std::make_shared<Reader>()](std::size_t i, Answer& answer) {
            const Task& task = tasks->tasks[i];
            readRecord(task.file, reader->file, reader->record);
            if (!reader->record.faults.empty()) {
                answer.err += faultLines(task.file, reader->record);
                answer.code = Failed;
            }
            if (!reader->record.isCapture()) {
                return;
            }
            const auto content = converted(task.file, reader->record, *choice, tasks->extension, answer);
            if (content) {
                deliver(task, *content, tasks->keepExisting, answer);
            } else {
                answer.code = Failed;
            }
        };
    });
}

} // namespace sixtrace::kqx
