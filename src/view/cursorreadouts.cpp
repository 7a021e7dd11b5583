// SPDX-License-Identifier: MIT
#include "view/cursorreadouts.h"

#include "capture/measurementunits.h"
#include "view/geometry.h"

#include <cmath>

namespace sixtrace {

namespace {

const QString& valueFormat() {
    static const QString format = QStringLiteral("####0.00");
    return format;
}

struct TimeUnit {
    const char* name;
    double perMicrosecond;
};

TimeUnit timeUnit(int row, TimeLadder ladder) {
    const int milliseconds = ladder == TimeLadder::OfCombo3 ? 17 : 16;
    const int seconds = ladder == TimeLadder::OfCombo3 ? 22 : 25;
    if (row < 7) {
        return {"nS", 1000};
    }
    if (row < milliseconds) {
        return {"uS", 1};
    }
    return row < seconds ? TimeUnit{"mS", 1e-3} : TimeUnit{"S", 1e-6};
}

/// A time in the unit. It is divided where the unit is greater than a microsecond: 0.001 is no exact binary fraction.
double inUnit(Microseconds time, const TimeUnit& unit) {
    return unit.perMicrosecond >= 1 ? time.number() * unit.perMicrosecond
                                    : time.number() / std::round(1 / unit.perMicrosecond);
}

} // namespace

CursorReadout voltageAt(const publicM& model, int channel, ScreenY y, NumberMarks marks) {
    const int c = channel;
    const int exponent = model.ProbeExp[c];
    const Volts voltage(probeFactor(exponent) * (model.ChannelYPos[c] - y.number()) *
                        static_cast<double>(model.VoltPerPixel[c]));
    if (model.VoltIndexView[c] < 7 - 3 * exponent) {
        return {Format(millivoltsOf(voltage).number(), valueFormat(), marks), QStringLiteral("mV")};
    }
    return {Format(voltage.number(), valueFormat(), marks), QStringLiteral(" V")};
}

std::optional<TimeReading> timeReadingAt(const publicM& model, int channel, ScreenX x, TimeLadder ladder) {
    const auto scale = pickScale(model, channel);
    if (!scale) {
        return std::nullopt;
    }
    const int c = channel;
    const Microseconds time(scale->sampleAt(x) * static_cast<double>(model.SampleInterval[c]));
    const TimeUnit unit = timeUnit(model.TimeIndexView[c], ladder);
    return TimeReading{inUnit(time, unit), QLatin1String(unit.name)};
}

CursorReadout readoutOf(const TimeReading& reading, NumberMarks marks) {
    return {Format(reading.value, valueFormat(), marks), reading.unit};
}

std::optional<CursorReadout> timeAt(const publicM& model, int channel, ScreenX x, TimeLadder ladder,
                                    NumberMarks marks) {
    const auto reading = timeReadingAt(model, channel, x, ladder);
    return reading ? std::optional(readoutOf(*reading, marks)) : std::nullopt;
}

QString differenceOf(const QString& first, const QString& second, NumberMarks marks) {
    const double a = parseNumber(first, marks).value_or(0);
    const double b = parseNumber(second, marks).value_or(0);
    return Format(std::fabs(a - b), QStringLiteral("##,##0.00"), marks);
}

} // namespace sixtrace
