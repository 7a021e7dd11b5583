// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <QString>
#include <QStringView>

namespace sixtrace {

/// Number of blanks between volt text and "/ " in a row of the channel list: eight in rows that the start-up or the
/// time list writes, seven in all others.
enum class RowGap { Seven = 7, Eight = 8 };

/// A row of the channel list: label (the first three characters of `label`), ten blanks, time text, ten blanks, volt
/// text, the gap, "/ " and the factor.
[[nodiscard]] QString channelRow(QStringView label, const QString& timeText, const QString& voltText, RowGap gap,
                                 const QString& factor);

/// Text of a probe factor as rows show it: 10 to the power of `probeExp`, "1", "10", "100" ...
[[nodiscard]] QString probeFactorText(int probeExp);

/// Fills the lists, the rows and the bar as they are after the start, and clears the six ticks. The model's tables have
/// to be filled before.
void beginStart(const Scope& scope);
/// Draws the first frame and writes the readouts of the current row. No channel is chosen yet.
void endStart(const Scope& scope);

/// Relabels the volt list for a probe exponent 0 to 3; any other exponent leaves the texts. The chosen row stays.
void FillVoltList(ScreenState& screen, int probeExp);

/// Makes the channel of the selected row the one that lists, bar and readouts apply to. Does nothing where no row is
/// selected.
void List1_Click(const Scope& scope);
/// Shows or hides the marker of row `Item` after its tick has changed, and draws a frame unless timed acquisition runs.
void List1_ItemCheck(const Scope& scope, int Item);

/// Makes a row current and raises its click, as a choice by the user does.
void selectRow(const Scope& scope, int row);
/// Sets or clears a tick by code: the row becomes current, and both its events follow whether or not the tick changes.
void setTick(const Scope& scope, int channel, bool ticked);
/// Sets a tick without drawing a frame or writing readouts. For a tick that another one follows at once, so that nobody
/// would see them.
void setTickUnseen(const Scope& scope, int channel);

} // namespace sixtrace
