// SPDX-License-Identifier: MIT
#include "view/cursors.h"

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

/// Clears the difference where a value changes: refreshDifference computes it again.
void write(CursorTexts& texts, std::size_t cursor, const CursorReadout& readout) {
    if (texts.values[cursor] != readout.value) {
        texts.values[cursor] = readout.value;
        texts.difference.clear();
    }
    texts.units[cursor] = readout.unit;
}

void readVoltage(const publicM& model, ScreenState& screen, std::size_t cursor) {
    if (screen.selectedRow >= 0) {
        write(screen.voltages, cursor, voltageAt(model, screen.selectedRow, screen.cursors.voltage[cursor]));
    }
}

void readTimes(const publicM& model, ScreenState& screen, TimeLadder ladder) {
    const int channel = screen.selectedRow;
    if (channel < 0 || model.ChannelPresent[channel] == 0) {
        return;
    }
    for (std::size_t cursor = 0; cursor < screen.cursors.time.size(); ++cursor) {
        const auto reading = timeReadingAt(model, channel, screen.cursors.time[cursor], ladder);
        if (!reading) {
            return;
        }
        // Every move of the pointer reads the cursors, mostly with the same result.
        if (!(screen.timeReadings[cursor] == *reading)) {
            screen.timeReadings[cursor] = *reading;
            write(screen.times, cursor, readoutOf(*reading));
        }
    }
    refreshDifference(screen.times);
}

} // namespace

void refreshDifference(CursorTexts& texts) {
    if (texts.difference.isEmpty()) {
        texts.difference = differenceOf(texts.values[0], texts.values[1]);
    }
}

void Combo3_Click(const Scope& scope) {
    if (scope.model.AutoRun) {
        return;
    }
    ScreenState& screen = scope.screen;
    screen.cursorsShown = screen.cursorChoice;
    UpdateVoltCursors(scope.model, screen);
    if (showsTime(screen.cursorChoice)) {
        readTimes(scope.model, screen, TimeLadder::OfCombo3);
    }
}

void UpdateVoltCursors(const publicM& model, ScreenState& screen) {
    if (!showsVoltage(screen.cursorChoice) || screen.selectedRow < 0) {
        return;
    }
    readVoltage(model, screen, 0);
    readVoltage(model, screen, 1);
    refreshDifference(screen.voltages);
}

void printTime(const publicM& model, ScreenState& screen) {
    if (showsTime(screen.cursorChoice)) {
        readTimes(model, screen, TimeLadder::OfPrintTime);
    }
}

void moveVoltageCursor(const publicM& model, ScreenState& screen, std::size_t cursor, ScreenY y) {
    screen.cursors.voltage[cursor] = y;
    readVoltage(model, screen, cursor);
}

void moveTimeCursor(ScreenState& screen, std::size_t cursor, ScreenX x) {
    screen.cursors.time[cursor] = x;
}

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

QString differenceOf(const QString& first, const QString& second, NumberMarks marks) {
    const double a = parseNumber(first, marks).value_or(0);
    const double b = parseNumber(second, marks).value_or(0);
    return Format(std::fabs(a - b), QStringLiteral("##,##0.00"), marks);
}

} // namespace sixtrace
