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

std::optional<SignalFigures> signalFigures(const publicM& model, int channel) {
    const int c = channel;
    if (model.ChannelPresent.at(c) == 0) {
        return std::nullopt;
    }
    const double millivolts =
        probeFactor(model.ProbeExp[c]) * (1.0 * model.PeakToPeak[c]) * double{model.VoltPerCount[c]};
    return SignalFigures{model.Frequency[c], model.Period[c], millivolts};
}

MeasurementTexts measurementTexts(const std::optional<SignalFigures>& figures, NumberMarks marks) {
    if (!figures) {
        return {};
    }
    return {frequencyText(figures->frequency, marks), periodText(figures->frequency, figures->period, marks),
            peakToPeakText(figures->peakToPeak, marks)};
}

FrameTitles frameTitles(const TitledRow& titled) {
    const QString name = titled.row.left(kTitleLength);
    if (titled.language == Language::Chinese) {
        return {name + u"光标", name + u"水平档位", name + u"垂直档位", name};
    }
    return {name + u"Cursor", name + u"TimeBase", name + u"Voltage", name};
}

} // namespace sixtrace
