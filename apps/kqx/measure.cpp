// SPDX-License-Identifier: MIT
// kqx measure: figures of the samples of captures, in volts and seconds at the probe's tip.
#include "batch.h"
#include "captureinfo.h"
#include "datacommands.h"
#include "jsontext.h"
#include "measuretext.h"

#include "capture/measure.h"

#include <memory>

namespace sixtrace::kqx {

namespace {

const Usage& usage() {
    static const Usage made{
        "measure", "FILE...",
        "Measures every channel of each capture from its samples: voltages at the probe's tip in volts, times in "
        "seconds, frequency, duty, rise and fall time and more. The manual page, man kqx, defines each figure.",
        withOptions(
            {{"json", nullptr, "Print one line of JSON per FILE instead of a table."},
             {"csv", nullptr, "Print comma-separated values with a header line and one row per channel."},
             {"channels", "list", "Measure only these channels: ch1, ch2, A, B, C, D, separated by commas."},
             {"all", nullptr, "Of a slow scan, measure all samples; by default only those of the newest sweep count."}},
            listOptions())};
    return made;
}

enum class Form { Plain, Json, Csv };

/// What one job keeps between files.
struct Bench {
    CaptureReader reader;
    Measuring measuring;
};

void appendJson(std::string& out, const std::string& name, Bench& bench, const ChannelChoice& choice, Sweep sweep) {
    const CaptureRecord& record = bench.reader.record;
    if (!record.isCapture()) {
        appendErrorJson(out, name, record);
        return;
    }
    out += '{';
    appendJsonFile(out, name);
    out += ",\"form\":\"";
    out += record.form();
    out += "\",\"channels\":[";
    bool first = true;
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        if (record.channels[c].present && choice[c]) {
            out += first ? "{" : ",{";
            first = false;
            appendMeasuresJson(out, c, bench.measuring.measure(record.channels[c], sweep));
            out += '}';
        }
    }
    out += ']';
    appendFaults(out, record);
    out += "}\n";
}

} // namespace

ExitCode measure(const std::vector<std::string>& arguments) {
    Arguments given;
    if (const auto code = given.parse(usage(), arguments)) {
        return *code;
    }
    if (given.has("json") && given.has("csv")) {
        return failWith(WrongUse, "--json and --csv cannot be combined");
    }
    const Form form = given.has("json") ? Form::Json : given.has("csv") ? Form::Csv : Form::Plain;
    const Sweep sweep = given.has("all") ? Sweep::All : Sweep::Fresh;
    const auto choice = channelsOf(given);
    if (!choice) {
        return choice.error();
    }
    const auto files = filesToRead(usage(), given);
    if (!files) {
        return files.error();
    }
    const auto jobs = jobsOf(given);
    if (!jobs) {
        return jobs.error();
    }
    const std::vector<std::string>& names = files.value();
    if (form == Form::Csv) {
        const std::string head = measuresCsvHead();
        std::fwrite(head.data(), 1, head.size(), stdout);
    }
    return runBatch(names.size(), jobs.value(), [&]() -> Work {
        return [&, bench = std::make_shared<Bench>()](std::size_t i, Answer& answer) {
            const std::string& name = names[i];
            const CaptureRecord& record = bench->reader.record;
            bench->reader.read(name, answer);
            if (form == Form::Json) {
                appendJson(answer.out, name, *bench, choice.value(), sweep);
                return;
            }
            if (form == Form::Plain && record.isCapture() && names.size() > 1) {
                appendTitle(answer.out, name, i);
            }
            std::vector<LabelledMeasures> plain;
            for (std::size_t c = 0; c < record.channels.size(); ++c) {
                if (!record.isCapture() || !record.channels[c].present || !choice.value()[c]) {
                    continue;
                }
                const ChannelMeasures measures = bench->measuring.measure(record.channels[c], sweep);
                if (form == Form::Csv) {
                    appendMeasuresCsv(answer.out, name, c, measures);
                } else {
                    plain.push_back({c, measures});
                }
            }
            appendMeasuresTable(answer.out, plain);
        };
    });
}

} // namespace sixtrace::kqx
