// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/text/numbers.h"

#include <QString>

#include <cstddef>
#include <optional>

namespace sixtrace {

/// The chosen cursors are shown and read out; during timed acquisition the choice has no effect.
void Combo3_Click(const Scope& scope);
/// Updates the readouts of the voltage cursors, if these are chosen.
void UpdateVoltCursors(const publicM& model, ScreenState& screen);
/// Updates the readouts of the time cursors, if these are chosen and the selected channel holds a capture.
void printTime(const publicM& model, ScreenState& screen);

/// Moves a voltage cursor (0 or 1) and updates its readout.
void moveVoltageCursor(const publicM& model, ScreenState& screen, std::size_t cursor, ScreenY y);
/// Moves a time cursor (0 or 1). The next printTime updates its readout.
void moveTimeCursor(ScreenState& screen, std::size_t cursor, ScreenX x);
/// Computes the difference from the texts of the two values, if one of them has changed.
void refreshDifference(CursorTexts& texts);

// The arithmetic of the readouts.

/// A cursor's readout: the value's text and its unit.
struct CursorReadout {
    QString value;
    QString unit;
};

/// Voltage at the height `y` of the screen against the channel's zero line, by VoltPerPixel as last drawn: in "mV"
/// below the volt row 7 - 3 ProbeExp, else in " V" (with its blank).
[[nodiscard]] CursorReadout voltageAt(const publicM& model, int channel, ScreenY y,
                                      NumberMarks marks = NumberMarks::system());

/// Times are read by two functions, which change the unit at different rows of the time-base table. Both are intended.
enum class TimeLadder {
    OfCombo3,   ///< nS below row 7, uS below 17, mS below 22, else S
    OfPrintTime ///< nS below row 7, uS below 16, mS below 25, else S
};

/// Time at the column `x` since the channel's first sample; nothing where the channel's scale has no meaning.
[[nodiscard]] std::optional<TimeReading> timeReadingAt(const publicM& model, int channel, ScreenX x, TimeLadder ladder);
/// The reading as text.
[[nodiscard]] CursorReadout readoutOf(const TimeReading& reading, NumberMarks marks = NumberMarks::system());

/// The absolute difference of two readouts as they are shown: it works from the rounded texts.
[[nodiscard]] QString differenceOf(const QString& first, const QString& second,
                                   NumberMarks marks = NumberMarks::system());

} // namespace sixtrace
