// SPDX-License-Identifier: MIT
#include "output/samplefiles.h"

#include "capture/measure.h"
#include "capture/numbertexts.h"
#include "output/littleendian.h"
#include "output/realcontent.h"
#include "output/ziparchive.h"

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {

/// The head of an array file: the type of its values, and its shape, which is "(3,)" for a row of three values and "()"
/// for a single value.
std::string arrayHead(const std::string& type, const std::string& shape) {
    constexpr std::size_t kAlignment = 64;
    std::string head("\x93NUMPY\x01\x00\x00\x00", 10);
    head += "{'descr': '" + type + "', 'fortran_order': False, 'shape': " + shape + ", }";
    head.append(kAlignment - 1 - head.size() % kAlignment, ' ');
    head += '\n';
    putLittle(head.data() + 8, static_cast<std::uint16_t>(head.size() - 10));
    return head;
}

/// The voltages of all samples as 32-bit reals.
ZipContent voltsOf(std::string head, const ChannelRecord& channel) {
    return realsOf<float>(std::move(head), channel.heldSamples(),
                          [samples = channel.samples, volts = voltsPerCount(channel)](int i) {
                              return static_cast<float>(sampleAt(samples, static_cast<std::size_t>(i)) * volts);
                          });
}

/// The times of all samples as 64-bit reals.
ZipContent timesOf(std::string head, const ChannelRecord& channel) {
    return realsOf<double>(std::move(head), channel.heldSamples(),
                           [interval = secondsPerSample(channel)](int i) { return i * interval; });
}

std::string rowShape(std::size_t count) {
    return '(' + std::to_string(count) + ",)";
}

/// A text as an array of one value, in UTF-32. The text is valid UTF-8.
std::string textArray(std::string_view text) {
    std::string units;
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        std::uint32_t unit = length == 1 ? first : first & (0xFFU >> (length + 1));
        for (std::size_t k = 1; k < length; ++k) {
            unit = unit << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
        }
        append32(units, unit);
        i += length;
        ++count;
    }
    return arrayHead("<U" + std::to_string(count), "()") + units;
}

bool shareInterval(const std::vector<SampleColumn>& columns) {
    return std::all_of(columns.begin(), columns.end(), [&](const SampleColumn& column) {
        return column.channel.SampleInterval == columns.front().channel.SampleInterval;
    });
}

/// Samples a second.
double rateOf(const ChannelRecord& channel) {
    return 1 / secondsPerSample(channel);
}

bool isWholeRate(double rate) {
    constexpr double kRounding = 1e-9; // relative error of a rate that is computed from an interval
    constexpr double kGreatest = 1e15;
    return rate >= 1 && rate < kGreatest && std::fabs(rate - std::round(rate)) <= kRounding * rate;
}

std::string rateText(double rate) {
    if (isWholeRate(rate)) {
        return std::to_string(std::llround(rate)) + " Hz";
    }
    std::string text;
    appendNumber(text, rate);
    return (text.empty() ? std::string("no") : text) + " Hz";
}

} // namespace

std::string samplesCsv(const std::vector<SampleColumn>& columns) {
    const bool shared = shareInterval(columns);
    std::string text = shared ? "time_s" : "";
    std::size_t rows = 0;
    std::vector<double> volts;
    std::vector<double> intervals;
    for (const SampleColumn& column : columns) {
        const std::string label(column.label);
        if (!shared) {
            text.append(text.empty() ? "time_" : ",time_").append(label).append("_s");
        }
        text.append(",").append(label).append("_v");
        rows = std::max(rows, column.channel.heldSamples());
        volts.push_back(voltsPerCount(column.channel));
        intervals.push_back(secondsPerSample(column.channel));
    }
    text += '\n';
    for (std::size_t row = 0; row < rows; ++row) {
        const auto index = static_cast<double>(row);
        if (shared) {
            appendNumber(text, index * intervals.front());
        }
        for (std::size_t c = 0; c < columns.size(); ++c) {
            const ChannelRecord& channel = columns[c].channel;
            const bool held = row < channel.heldSamples();
            if (shared || c > 0) {
                text += ',';
            }
            if (!shared) {
                appendNumber(text, held ? index * intervals[c] : std::nan(""));
                text += ',';
            }
            if (held) {
                appendNumber(text, sampleAt(channel.samples, row) * volts[c]);
            }
        }
        text += '\n';
    }
    return text;
}

std::optional<std::string> samplesNpz(const std::vector<SampleColumn>& columns, std::string_view info) {
    using Packing = ZipArchive::Packing;
    ZipArchive archive;
    for (const SampleColumn& column : columns) {
        const std::string label(column.label);
        const std::string shape = rowShape(column.channel.heldSamples());
        archive.add("t_" + label + ".npy", timesOf(arrayHead("<f8", shape), column.channel), Packing::Stored);
        archive.add("v_" + label + ".npy", voltsOf(arrayHead("<f4", shape), column.channel), Packing::Stored);
    }
    const std::string text = textArray(info);
    archive.add("info.npy", ZipContent::of(text), Packing::Stored);
    return archive.file();
}

std::optional<std::string> sessionRefusal(const std::vector<SampleColumn>& columns) {
    if (columns.empty()) {
        return "a .sr file needs a channel, and this capture has none";
    }
    struct Group {
        std::string labels;
        std::size_t samples;
        double rate;
    };
    std::vector<Group> groups;
    for (const SampleColumn& column : columns) {
        const std::size_t samples = column.channel.heldSamples();
        const double rate = rateOf(column.channel);
        const auto group = std::find_if(groups.begin(), groups.end(), [&](const Group& entry) {
            return entry.samples == samples && (entry.rate == rate || (std::isnan(entry.rate) && std::isnan(rate)));
        });
        if (group == groups.end()) {
            groups.push_back({std::string(column.label), samples, rate});
        } else {
            group->labels += ',' + std::string(column.label);
        }
    }
    const bool whole =
        std::all_of(groups.begin(), groups.end(), [](const Group& group) { return isWholeRate(group.rate); });
    if (groups.size() == 1 && whole && groups.front().samples > 0) {
        return std::nullopt;
    }
    std::string text = groups.size() == 1
                           ? "a .sr file needs samples, at a rate that is a whole number of hertz; this capture has"
                           : "the channels of a .sr file must have the same rate and length; choose with --channels "
                             "one of these groups:";
    for (const Group& group : groups) {
        text += (&group == &groups.front() ? " " : "; ") + group.labels + " (" + std::to_string(group.samples) +
                (group.samples == 1 ? " sample, " : " samples, ") + rateText(group.rate) + ')';
    }
    return text;
}

std::optional<std::string> samplesSession(const std::vector<SampleColumn>& columns) {
    std::string metadata = "[device 1]\nsamplerate=" + std::to_string(std::llround(rateOf(columns.front().channel))) +
                           "\ntotal analog=" + std::to_string(columns.size()) + '\n';
    for (std::size_t i = 0; i < columns.size(); ++i) {
        metadata += "analog" + std::to_string(i + 1) + '=' + std::string(columns[i].label) + '\n';
    }
    using Packing = ZipArchive::Packing;
    ZipArchive archive;
    archive.add("version", ZipContent::of("2"), Packing::Stored);
    archive.add("metadata", ZipContent::of(metadata), Packing::Deflated);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        archive.add("analog-1-" + std::to_string(i + 1) + "-1", voltsOf({}, columns[i].channel), Packing::Deflated);
    }
    return archive.file();
}

} // namespace sixtrace
