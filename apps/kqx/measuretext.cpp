// SPDX-License-Identifier: MIT
#include "measuretext.h"

#include "capture/measurementunits.h"
#include "capture/numbertexts.h"
#include "jsontext.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sixtrace::kqx {

namespace {

Measure measureOf(std::size_t index) {
    return static_cast<Measure>(index);
}

/// Appends a cell by the rules of RFC 4180: it is in quotes when it holds a comma, a quote or a line end.
void appendCsvText(std::string& out, std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += text;
        return;
    }
    out += '"';
    for (const char c : text) {
        out += c;
        if (c == '"') {
            out += c;
        }
    }
    out += '"';
}

/// The text of a number with so many decimals; halves of the decimal value are rounded away from zero.
std::string fixedText(double value, int decimals) {
    // So many further digits show whether the value is a half exactly.
    constexpr int kFurther = 30;
    std::array<char, 400> buffer{};
    const double magnitude = std::fabs(value);
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                            std::chars_format::fixed, decimals + kFurther);
    std::string text(buffer.data(), end);
    const bool up = text[text.size() - kFurther] >= '5';
    text.resize(text.size() - kFurther);
    if (text.back() == '.') {
        text.pop_back();
    }
    for (std::size_t i = text.size(); up && i-- > 0;) {
        if (text[i] == '.') {
            continue;
        }
        if (text[i] != '9') {
            ++text[i];
            break;
        }
        text[i] = '0';
        if (i == 0) {
            text.insert(0, 1, '1');
        }
    }
    const bool zero = text.find_first_not_of("0.") == std::string::npos;
    return value < 0 && !zero ? '-' + text : text;
}

template<typename Measured>
std::string written(Measured value, const UnitNotation<Measured>& notation) {
    return fixedText(value / notation.one, notation.decimals) + notation.unit;
}

std::string voltageText(Volts voltage) {
    const Millivolts value = millivoltsOf(voltage);
    return written(value, voltageNotation(value < Millivolts{0} ? -value : value));
}

std::string periodText(Seconds period, Hertz frequency) {
    return written(microsecondsOf(period), unitLadderRow(frequency).period);
}

/// A time that is not the period of a signal, in the units of the time list.
std::string timeText(Seconds time) {
    const double microseconds = microsecondsOf(time).number();
    if (microseconds >= 1e6) {
        return fixedText(time.number(), 3) + " S";
    }
    if (microseconds >= 1e3) {
        return fixedText(microseconds / 1e3, 3) + " mS";
    }
    return microseconds >= 1 ? fixedText(microseconds, 3) + " uS" : fixedText(microseconds * 1e3, 3) + " nS";
}

/// The name of a figure for people: its key without the unit.
std::string nameOf(Measure measure) {
    std::string name(measureKey(measure));
    const std::size_t unit = name.rfind('_');
    for (const std::string_view ending : {"_s", "_v", "_hz", "_pct"}) {
        if (unit != std::string::npos && name.substr(unit) == ending) {
            name.resize(unit);
        }
    }
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

std::string textOf(Measure measure, const ChannelMeasures& measures) {
    const double value = measures[measure];
    if (!std::isfinite(value)) {
        return "-";
    }
    const std::string_view key = measureKey(measure);
    if (measure == Measure::Period) {
        return periodText(Seconds(value), Hertz(measures[Measure::Frequency]));
    }
    if (measure == Measure::InstrumentPeriod) {
        const double frequency = measures[Measure::InstrumentFrequency];
        return periodText(Seconds(value), Hertz(std::isfinite(frequency) ? frequency : 0));
    }
    if (key.ends_with("_hz")) {
        return written(Hertz(value), unitLadderRow(Hertz(value)).frequency);
    }
    if (key.ends_with("_v")) {
        return voltageText(Volts(value));
    }
    if (key.ends_with("_pct")) {
        return fixedText(value, 2) + " %";
    }
    return key.ends_with("_s") ? timeText(Seconds(value)) : fixedText(value, 0);
}

} // namespace

void appendMeasuresJson(std::string& out, std::size_t channel, const ChannelMeasures& measures) {
    out += "\"label\":\"";
    out += recordLabel(channel);
    out += '"';
    for (std::size_t i = 0; i < kMeasures; ++i) {
        out += ",\"";
        out += measureKey(measureOf(i));
        out += "\":";
        appendJsonNumber(out, measures.values[i]);
    }
}

std::string measuresCsvHead() {
    std::string head = "file,label";
    for (std::size_t i = 0; i < kMeasures; ++i) {
        head += ',';
        head += measureKey(measureOf(i));
    }
    return head + "\r\n";
}

void appendMeasuresCsv(std::string& out, std::string_view file, std::size_t channel, const ChannelMeasures& measures) {
    appendCsvText(out, validUtf8(file));
    out += ',';
    out += recordLabel(channel);
    for (const double value : measures.values) {
        out += ',';
        appendNumber(out, value);
    }
    out += "\r\n";
}

void appendMeasuresTable(std::string& out, const std::vector<LabelledMeasures>& channels) {
    if (channels.empty()) {
        return;
    }
    constexpr std::size_t kNameWidth = 21;
    constexpr std::size_t kGap = 2;
    std::vector<std::vector<std::string>> columns;
    std::vector<std::size_t> widths;
    for (const LabelledMeasures& channel : channels) {
        std::vector<std::string>& column = columns.emplace_back();
        column.emplace_back(recordLabel(channel.channel));
        for (std::size_t i = 0; i < kMeasures; ++i) {
            column.push_back(textOf(measureOf(i), channel.measures));
        }
        const auto longest = std::max_element(column.begin(), column.end(),
                                              [](const auto& a, const auto& b) { return a.size() < b.size(); });
        widths.push_back(longest->size());
    }
    for (std::size_t row = 0; row <= kMeasures; ++row) {
        const std::string name = row == 0 ? std::string() : nameOf(measureOf(row - 1));
        out += name;
        out.append(kNameWidth - name.size(), ' ');
        for (std::size_t c = 0; c < columns.size(); ++c) {
            out.append(kGap + widths[c] - columns[c][row].size(), ' ');
            out += columns[c][row];
        }
        out += '\n';
    }
}

} // namespace sixtrace::kqx
