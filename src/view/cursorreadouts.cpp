// SPDX-License-Identifier: MIT
#include "view/cursorreadouts.h"

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

/// Microseconds in the unit, divided where the unit is the greater one, so that no factor is rounded.
double inUnit(double microseconds, const TimeUnit& unit) {
    return unit.perMicrosecond >= 1 ? microseconds * unit.perMicrosecond
                                    : microseconds / std::round(1 / unit.perMicrosecond);
}

} // namespace

CursorReadout voltageAt(const publicM& model, int channel, double y, NumberMarks marks) {
    const int c = channel;
    const int exponent = model.ProbeExp[c];
    const double volts =
        probeFactor(exponent) * (model.ChannelYPos[c] - y) * static_cast<double>(model.VoltPerPixel[c]);
    if (model.VoltIndexView[c] < 7 - 3 * exponent) {
        return {Format(volts * 1000, valueFormat(), marks), QStringLiteral("mV")};
    }
    return {Format(volts, valueFormat(), marks), QStringLiteral(" V")};
}

std::optional<TimeReading> timeReadingAt(const publicM& model, int channel, double x, TimeLadder ladder) {
    const auto scale = pickScale(model, channel);
    if (!scale) {
        return std::nullopt;
    }
    const int c = channel;
    const double microseconds = scale->sampleAt(x) * static_cast<double>(model.SampleInterval[c]);
    const TimeUnit unit = timeUnit(model.TimeIndexView[c], ladder);
    return TimeReading{inUnit(microseconds, unit), QLatin1String(unit.name)};
}

CursorReadout readoutOf(const TimeReading& reading, NumberMarks marks) {
    return {Format(reading.value, valueFormat(), marks), reading.unit};
}

std::optional<CursorReadout> timeAt(const publicM& model, int channel, double x, TimeLadder ladder, NumberMarks marks) {
    const auto reading = timeReadingAt(model, channel, x, ladder);
    return reading ? std::optional(readoutOf(*reading, marks)) : std::nullopt;
}

QString differenceOf(const QString& first, const QString& second, NumberMarks marks) {
    const double a = parseNumber(first, marks).value_or(0);
    const double b = parseNumber(second, marks).value_or(0);
    return Format(std::fabs(a - b), QStringLiteral("##,##0.00"), marks);
}

} // namespace sixtrace
