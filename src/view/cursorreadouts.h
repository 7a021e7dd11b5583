// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/text/numbers.h"

#include <QString>

#include <optional>

namespace sixtrace {

/// A cursor's readout: the value's text and its unit.
struct CursorReadout {
    QString value;
    QString unit;
};

/// Voltage at the height `y` of the screen against the channel's zero line, by VoltPerPixel as last drawn: in "mV"
/// below the volt row 7 - 3 ProbeExp, else in " V" (with its blank).
[[nodiscard]] CursorReadout voltageAt(const publicM& model, int channel, ScreenY y,
                                      NumberMarks marks = NumberMarks::system());

/// The two places that read times out choose their units by different rows; both are meant.
enum class TimeLadder {
    OfCombo3,   ///< nS below row 7, uS below 17, mS below 22, else S
    OfPrintTime ///< nS below row 7, uS below 16, mS below 25, else S
};

/// Time at the column `x` since the channel's first sample; nothing where the channel's scale has no meaning.
[[nodiscard]] std::optional<TimeReading> timeReadingAt(const publicM& model, int channel, ScreenX x, TimeLadder ladder);
[[nodiscard]] CursorReadout readoutOf(const TimeReading& reading, NumberMarks marks = NumberMarks::system());
/// Both at once.
[[nodiscard]] std::optional<CursorReadout> timeAt(const publicM& model, int channel, ScreenX x, TimeLadder ladder,
                                                  NumberMarks marks = NumberMarks::system());

/// The absolute difference of two readouts as they are shown: it works from the rounded texts.
[[nodiscard]] QString differenceOf(const QString& first, const QString& second,
                                   NumberMarks marks = NumberMarks::system());

} // namespace sixtrace
