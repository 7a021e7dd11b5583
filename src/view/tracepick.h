// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"

#include <optional>

namespace sixtrace {

/// Which cursor line lies under the pointer.
enum class CursorHit { None, Voltage1, Voltage2, Time1, Time2 };

/// The first cursor less than two units from the pointer, in the order of the enumeration; visibility plays no part.
[[nodiscard]] CursorHit cursorUnder(const CursorPlaces& places, ScreenX x, ScreenY y);
/// The same for one kind of lines only.
[[nodiscard]] bool onVoltageCursor(const CursorPlaces& places, ScreenY y);
[[nodiscard]] bool onTimeCursor(const CursorPlaces& places, ScreenX x);

/// The result of looking for a trace under the pointer.
struct TracePick {
    std::optional<int> channel;          ///< the lowest channel whose trace lies within five units, if there is one
    std::optional<MousePointer> pointer; ///< the shape that the search leaves, if it sets one
    bool failed = false;                 ///< the search ended in a run-time error
};

/// Looks for a trace at a press, among the channels that the capture holds, shown or not. A channel without a sample in
/// the pointer's column sets the arrow; one whose trace is too far above or below leaves the shape as it is.
[[nodiscard]] TracePick pickTrace(const publicM& model, ScreenX x, ScreenY y);

/// The same for a pointer that only moves: every miss sets the arrow.
[[nodiscard]] TracePick hoverTrace(const publicM& model, ScreenX x, ScreenY y);

} // namespace sixtrace
