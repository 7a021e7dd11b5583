// SPDX-License-Identifier: MIT
#include "view/cursors.h"

#include "view/cursorreadouts.h"

namespace sixtrace {

namespace {

/// A value that changes takes the difference with it.
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
        // Each move of the pointer reads the cursors out, mostly to what they say already.
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

} // namespace sixtrace
