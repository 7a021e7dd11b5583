// SPDX-License-Identifier: MIT
// kqx info: what captures hold, and what is wrong with them.
#include "batch.h"
#include "captureinfo.h"
#include "datacommands.h"
#include "jsontext.h"

#include "platform/files/bytefile.h"

#include <memory>

namespace sixtrace::kqx {

namespace {

const Usage& usage() {
    static const Usage made{
        "info", "FILE...",
        "Prints the settings and figures that each capture file holds for each channel, and what is wrong with it.",
        withOptions({{"json", nullptr, "Print one line of JSON per FILE instead of text."}}, listOptions())};
    return made;
}

/// What one job keeps between files.
struct Reader {
    ByteFile file;
    CaptureRecord record;
};

} // namespace

int info(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const bool json = given.has("json");
    auto files = filesToRead(usage(), given);
    if (!files) {
        return files.code();
    }
    auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.code();
    }
    const bool titled = files->size() > 1;
    return runBatch(files->size(), *jobs, [&]() -> Work {
        return [&, reader = std::make_shared<Reader>()](std::size_t i, Answer& answer) {
            const std::string& name = (*files)[i];
            const CaptureRecord& record = reader->record;
            readRecord(name, reader->file, reader->record);
            if (json) {
                appendInfoJson(answer.out, name, record);
            } else if (record.isCapture()) {
                if (titled) {
                    appendTitle(answer.out, name, i);
                }
                appendInfoText(answer.out, record);
            }
            if (!record.faults.empty()) {
                answer.err += faultLines(name, record);
                answer.code = Failed;
            }
        };
    });
}

} // namespace sixtrace::kqx
