// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <cstddef>

namespace sixtrace {

/// The chosen cursors are shown and read out; during timed acquisition the choice has no effect.
void Combo3_Click(const Scope& scope);
/// Reads the voltage cursors out anew if they are chosen.
void UpdateVoltCursors(const publicM& model, ScreenState& screen);
/// Reads the time cursors out anew if they are chosen and the selected channel holds a capture.
void printTime(const publicM& model, ScreenState& screen);

/// Moves a voltage cursor (0 or 1) to a height of the screen and reads it out.
void moveVoltageCursor(const publicM& model, ScreenState& screen, std::size_t cursor, double y);
/// Moves a time cursor (0 or 1) to a column of the screen. It is read out by the next printTime.
void moveTimeCursor(ScreenState& screen, std::size_t cursor, double x);
/// Brings a difference up to date with its two values, as they read.
void refreshDifference(CursorTexts& texts);

} // namespace sixtrace
