// SPDX-License-Identifier: MIT
// kqx info: what captures hold, and what is wrong with them.
#include "batch.h"
#include "captureinfo.h"
#include "datacommands.h"
#include "jsontext.h"

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

} // namespace

ExitCode info(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    const bool json = given.has("json");
    const auto files = filesToRead(usage(), given);
    if (!files) {
        return files.error();
    }
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    const std::vector<std::string>& names = files.value();
    return runBatch(names.size(), jobs.value(), [&]() -> Work {
        return [&, reader = std::make_shared<CaptureReader>()](std::size_t i, Answer& answer) {
            const std::string& name = names[i];
            const CaptureRecord& record = reader->record;
            reader->read(name, answer);
            if (json) {
                appendInfoJson(answer.out, name, record);
            } else if (record.isCapture()) {
                if (names.size() > 1) {
                    appendTitle(answer.out, name, i);
                }
                appendInfoText(answer.out, record);
            }
        };
    });
}

} // namespace sixtrace::kqx
