// SPDX-License-Identifier: MIT
#include "capture/readouts.h"

namespace sixtrace {

namespace {

template<typename Measured>
QString written(Measured value, const UnitNotation<Measured>& notation, NumberMarks marks) {
    const QString picture = QStringLiteral("#0.") + QString(notation.decimals, u'0');
    return Format(value / notation.one, picture, marks) + QString::fromLatin1(notation.unit);
}

constexpr int kTitleLength = 4;

} // namespace

QString frequencyText(Hertz frequency, NumberMarks marks) {
    return written(frequency, unitLadderRow(frequency).frequency, marks);
}

QString periodText(Hertz frequency, Microseconds period, NumberMarks marks) {
    return written(period, unitLadderRow(frequency).period, marks);
}

QString peakToPeakText(Millivolts voltage, NumberMarks marks) {
    return written(voltage, voltageNotation(voltage), marks);
}

MeasurementTexts measurementTexts(const publicM& model, int channel, NumberMarks marks) {
    const int c = channel;
    if (model.ChannelPresent.at(c) == 0) {
        return {};
    }
    const Hertz frequency(double{model.Frequency[c]});
    const Microseconds period(double{model.Period[c]});
    const Millivolts peakToPeak(probeFactor(model.ProbeExp[c]) * (1.0 * model.PeakToPeak[c]) *
                                double{model.VoltPerCount[c]});
    return {frequencyText(frequency, marks), periodText(frequency, period, marks), peakToPeakText(peakToPeak, marks)};
}

FrameTitles frameTitles(const QString& row, Language language) {
    const QString name = row.left(kTitleLength);
    if (language == Language::Chinese) {
        return {name + u"光标", name + u"水平档位", name + u"垂直档位", name};
    }
    return {name + u"Cursor", name + u"TimeBase", name + u"Voltage", name};
}

} // namespace sixtrace
