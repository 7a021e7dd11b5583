// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

namespace sixtrace {

// Time base and volt range of the selected channel, and the bar that moves its zero line. Each channel keeps settings
// of its own; these rules show and change those of one. During timed acquisition the lists move and the model does not.

/// Entry `row` of Combo1 has been chosen.
void chooseTimeRow(const Scope& scope, int row);
/// Entry `row` of Combo2 has been chosen.
void chooseVoltRow(const Scope& scope, int row);
/// The choices of both lists take effect, for the channel of the selected row.
void Combo1_Click(const Scope& scope);
void Combo2_Click(const Scope& scope);

/// Which way an arrow steps through its list.
enum class Step { Up = 1, Down = -1 };
/// An arrow of UpDown1: the entry of the volt list after or before the one that the channel has.
void stepVoltRow(const Scope& scope, Step step);
/// An arrow of UpDown2: the same for the time list.
void stepTimeRow(const Scope& scope, Step step);

/// The thumb of VScroll1 is being dragged: the height of the zero line is shown.
void VScroll1_Scroll(const Scope& scope);
/// VScroll1 has a new value: the channel's marker goes there.
void VScroll1_Change(const Scope& scope);
/// The thumb was released where it was pressed: nothing changes, and the height of the zero line is no longer shown.
void endScroll(ScreenState& screen);

/// Makes the lists show the rows of the model again. Called when timed acquisition has stopped: what was chosen
/// meanwhile had no effect.
void showTrueChoices(const Scope& scope);

} // namespace sixtrace
