// SPDX-License-Identifier: MIT
#include "capture/readouts.h"

#include <array>

namespace sixtrace {

namespace {

/// How a number is written: divided, in a picture of digits, before its unit.
struct Notation {
    double divisor;
    QStringView picture;
    QStringView unit;
};

/// A row of the ladder applies to frequencies above its threshold. The digit counts do not grow evenly from row to row:
/// users know the texts as they are.
struct LadderRow {
    double above;
    Notation frequency;
    Notation period;
};

constexpr std::array<LadderRow, 7> kLadder{{
    {10000000, {1000000, u"#0.00", u" MHz"}, {1, u"#0.0000", u" uS"}},
    {1000000, {1000000, u"#0.000", u" MHz"}, {1, u"#0.000", u" uS"}},
    {100000, {1000, u"#0.0", u" KHz"}, {1000, u"#0.0000", u" mS"}},
    {10000, {1000, u"#0.00", u" KHz"}, {1000, u"#0.000", u" mS"}},
    {1000, {1000, u"#0.000", u" KHz"}, {1000, u"#0.00", u" mS"}},
    {100, {1, u"#0.0", u" Hz"}, {1000000, u"#0.00000", u" S"}},
    {10, {1, u"#0.00", u" Hz"}, {1000000, u"#0.000", u" S"}},
}};
constexpr LadderRow kLowest{0, {1, u"#0.000", u" Hz"}, {1000000, u"#0.00", u" S"}};

const LadderRow& ladderRow(double frequency) {
    for (const LadderRow& row : kLadder) {
        if (frequency > row.above) {
            return row;
        }
    }
    return kLowest;
}

QString written(double value, const Notation& notation, NumberMarks marks) {
    return Format(value / notation.divisor, notation.picture, marks) + notation.unit;
}

constexpr double kMillivoltsShownAsSuch = 1000;
constexpr int kTitleLength = 4;

} // namespace

QString frequencyText(float frequency, NumberMarks marks) {
    const double hertz = frequency;
    return written(hertz, ladderRow(hertz).frequency, marks);
}

QString periodText(float frequency, float period, NumberMarks marks) {
    return written(double{period}, ladderRow(double{frequency}).period, marks);
}

QString peakToPeakText(double millivolts, NumberMarks marks) {
    if (millivolts > kMillivoltsShownAsSuch) {
        return Format(millivolts / 1000, u"#0.000", marks) + QStringLiteral(" V");
    }
    return Format(millivolts, u"#0.000", marks) + QStringLiteral(" mV");
}

MeasurementTexts measurementTexts(const publicM& model, int channel, NumberMarks marks) {
    const auto c = static_cast<std::size_t>(channel);
    if (model.ChannelPresent.at(c) == 0) {
        return {};
    }
    const double millivolts =
        probeFactor(model.ProbeExp[c]) * (1.0 * model.PeakToPeak[c]) * double{model.VoltPerCount[c]};
    return {frequencyText(model.Frequency[c], marks), periodText(model.Frequency[c], model.Period[c], marks),
            peakToPeakText(millivolts, marks)};
}

FrameTitles frameTitles(const QString& row, int languageId) {
    const QString name = row.left(kTitleLength);
    if (languageId == 0) {
        return {name + u"光标", name + u"水平档位", name + u"垂直档位", name};
    }
    return {name + u"Cursor", name + u"TimeBase", name + u"Voltage", name};
}

} // namespace sixtrace
