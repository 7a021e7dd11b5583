// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <cstddef>

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
/// Computes a difference anew from the texts of its two values.
void refreshDifference(CursorTexts& texts);

} // namespace sixtrace
