// SPDX-License-Identifier: MIT
#include "captureinfo.h"

#include "capture/measure.h"
#include "capture/rangetexts.h"
#include "jsontext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace sixtrace::kqx {

namespace {

/// `,"name":value`.
template<typename T>
void appendKey(std::string& out, std::string_view name, T value) {
    out += ",\"";
    out += name;
    out += "\":";
    if constexpr (std::is_floating_point_v<T>) {
        appendJsonNumber(out, value);
    } else {
        appendInteger(out, value);
    }
}

void appendChannelJson(std::string& out, std::size_t index, const ChannelRecord& channel) {
    out += "{\"index\":";
    out += std::to_string(index);
    out += ",\"label\":\"";
    out += recordLabel(index);
    out += '"';
    appendKey(out, "ChannelPresent", channel.present ? 1 : 0);
    appendKey(out, "ScreenPoints", channel.ScreenPoints);
    appendKey(out, "SampleCount", channel.SampleCount);
    appendKey(out, "ScanPoint", channel.ScanPoint);
    appendKey(out, "TimeIndex", channel.TimeIndex);
    appendKey(out, "ZeroLevel", channel.ZeroLevel);
    appendKey(out, "VoltIndex", channel.VoltIndex);
    appendKey(out, "ProbeExp", channel.ProbeExp);
    appendKey(out, "SampleInterval", channel.SampleInterval);
    appendKey(out, "Frequency", channel.Frequency);
    appendKey(out, "Period", channel.Period);
    appendKey(out, "VoltPerCount", channel.VoltPerCount);
    appendKey(out, "TimeIndexFile", channel.TimeIndexFile);
    appendKey(out, "VoltIndexFile", channel.VoltIndexFile);
    appendKey(out, "TimeIndexView", channel.TimeIndexFile);
    appendKey(out, "VoltIndexView", channel.VoltIndexView);
    appendKey(out, "PeakToPeak", channel.PeakToPeak);
    appendKey(out, "peak_to_peak_v", channel.PeakToPeak * voltsPerCount(channel));
    appendKey(out, "interval_s", secondsPerSample(channel));
    appendKey(out, "probe", probeFactorOf(channel));
    out += '}';
}

/// A number for people, with at most `digits` significant ones.
std::string generalNumber(double value, int digits) {
    std::array<char, 32> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, digits);
    std::string text(buffer.data(), end);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}
std::string generalNumber(float value) {
    return generalNumber(static_cast<double>(value), 7);
}

/// Whether the form is W01, W11 or V10, whose time bases are 20 nS, 200 nS and so on.
bool isOf20(int fileKind) {
    return fileKind == 3 || fileKind == 5 || fileKind == 6;
}

std::string timeBaseText(int fileKind, std::int32_t row) {
    if (row < 0 || row >= static_cast<std::int32_t>(kTimeBaseTexts.size())) {
        return "no such row";
    }
    const auto index = static_cast<std::size_t>(row);
    return isOf20(fileKind) && row % 3 == 2 ? kTimeBaseTextsOf20.at(index / 3).text : kTimeBaseTexts.at(index).text;
}

std::string voltText(int probeExp, int row) {
    if (probeExp < 0 || probeExp >= static_cast<int>(kVoltListTexts.size())) {
        return "no such probe";
    }
    const auto& list = kVoltListTexts.at(static_cast<std::size_t>(probeExp));
    return row < 0 || row >= static_cast<int>(list.size()) ? "no such row" : list.at(static_cast<std::size_t>(row));
}

void appendLine(std::string& out, std::string_view name, const std::string& value) {
    constexpr std::size_t kNameWidth = 16;
    out += "  ";
    out += name;
    out.append(kNameWidth - name.size(), ' ');
    out += value;
    out += '\n';
}

} // namespace

void CaptureReader::read(const std::string& name, Answer& answer) {
    readRecord(name, file, record);
    for (const RecordFault& fault : record.faults) {
        // A fault at the first byte concerns the file as a whole, so that its place says nothing.
        const std::string place = fault.offset > 0 ? "at byte " + std::to_string(fault.offset) + ": " : std::string();
        answer.fail(validUtf8(name) + ": " + place + fault.text);
    }
}

void appendFaults(std::string& out, const CaptureRecord& record) {
    out += ",\"faults\":[";
    for (const RecordFault& fault : record.faults) {
        out += &fault == &record.faults.front() ? "{\"offset\":" : ",{\"offset\":";
        appendInteger(out, fault.offset);
        out += ",\"text\":";
        appendJsonString(out, fault.text);
        out += '}';
    }
    out += ']';
}

void appendErrorJson(std::string& out, std::string_view file, const CaptureRecord& record) {
    out += '{';
    appendJsonFile(out, file);
    out += ",\"error\":";
    appendJsonString(out, record.faults.front().text);
    out += "}\n";
}

void appendInfoJson(std::string& out, std::string_view file, const CaptureRecord& record) {
    if (!record.isCapture()) {
        appendErrorJson(out, file, record);
        return;
    }
    out += '{';
    appendJsonFile(out, file);
    out += ",\"form\":\"";
    out += record.form();
    out += "\",\"FileKind\":";
    appendInteger(out, record.FileKind);
    out += ",\"channels\":[";
    bool first = true;
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        if (record.channels[c].present) {
            if (!first) {
                out += ',';
            }
            first = false;
            appendChannelJson(out, c, record.channels[c]);
        }
    }
    out += ']';
    appendFaults(out, record);
    out += "}\n";
}

void appendTitle(std::string& out, std::string_view file, std::size_t index) {
    if (index > 0) {
        out += '\n';
    }
    out += validUtf8(file);
    out += ":\n";
}

void appendInfoText(std::string& out, const CaptureRecord& record) {
    out += "form ";
    out += record.form();
    out += ", FileKind " + std::to_string(record.FileKind) + '\n';
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
        const ChannelRecord& channel = record.channels[c];
        if (!channel.present) {
            continue;
        }
        const double factor = probeFactorOf(channel);
        const double peak = factor * channel.PeakToPeak * double{channel.VoltPerCount};
        out += '\n';
        out += recordLabel(c);
        out += '\n';
        appendLine(out, "samples",
                   std::to_string(channel.SampleCount) + ", " + std::to_string(channel.ScreenPoints) + " a screen");
        appendLine(out, "time base",
                   timeBaseText(record.FileKind, channel.TimeIndex) + " (row " + std::to_string(channel.TimeIndex) +
                       ')');
        appendLine(out, "volts",
                   voltText(channel.ProbeExp, channel.VoltIndexView) + " (row " +
                       std::to_string(channel.VoltIndexView) + ')');
        appendLine(out, "probe", "1:" + generalNumber(factor, 15));
        appendLine(out, "zero level", std::to_string(100 - std::int64_t{channel.ZeroLevel}));
        appendLine(out, "scan point", std::to_string(channel.ScanPoint));
        appendLine(out, "interval", generalNumber(channel.SampleInterval) + " us");
        appendLine(out, "frequency", generalNumber(channel.Frequency) + " Hz");
        appendLine(out, "period", generalNumber(channel.Period) + " us");
        appendLine(out, "per count", generalNumber(channel.VoltPerCount) + " mV");
        appendLine(out, "peak to peak", generalNumber(static_cast<float>(peak)) + " mV");
    }
}

} // namespace sixtrace::kqx
