// SPDX-License-Identifier: MIT
#include "capture/readouts.h"

#include "capture/measurementunits.h"

namespace sixtrace {

namespace {

QString written(double value, const UnitNotation& notation, NumberMarks marks) {
    const QString picture = QStringLiteral("#0.") + QString(notation.decimals, u'0');
    return Format(value / notation.divisor, picture, marks) + QString::fromLatin1(notation.unit);
}

constexpr int kTitleLength = 4;

} // namespace

QString frequencyText(float frequency, NumberMarks marks) {
    const double hertz = frequency;
    return written(hertz, unitLadderRow(hertz).frequency, marks);
}

QString periodText(float frequency, float period, NumberMarks marks) {
    return written(double{period}, unitLadderRow(double{frequency}).period, marks);
}

QString peakToPeakText(double millivolts, NumberMarks marks) {
    return written(millivolts, voltageNotation(millivolts), marks);
}

MeasurementTexts measurementTexts(const publicM& model, int channel, NumberMarks marks) {
    const int c = channel;
    if (model.ChannelPresent.at(c) == 0) {
        return {};
    }
    const double millivolts =
        probeFactor(model.ProbeExp[c]) * (1.0 * model.PeakToPeak[c]) * double{model.VoltPerCount[c]};
    return {frequencyText(model.Frequency[c], marks), periodText(model.Frequency[c], model.Period[c], marks),
            peakToPeakText(millivolts, marks)};
}

FrameTitles frameTitles(const QString& row, Language language) {
    const QString name = row.left(kTitleLength);
    if (language == Language::Chinese) {
        return {name + u"光标", name + u"水平档位", name + u"垂直档位", name};
    }
    return {name + u"Cursor", name + u"TimeBase", name + u"Voltage", name};
}

} // namespace sixtrace
