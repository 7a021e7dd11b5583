// SPDX-License-Identifier: MIT
#pragma once

#include "view/scopescreen.h"
#include "view/tracepick.h"

#include <cstddef>
#include <optional>
#include <variant>

namespace sixtrace {

/// What the mouse holds on the screen or on the strip.
namespace drag {
struct Nothing {};
/// Cursor lines, by number. A press with a second button can take hold of a line of the other kind.
struct CursorLines {
    std::optional<std::size_t> voltage;
    std::optional<std::size_t> time;
};
/// A trace, sideways.
struct Trace {
    int channel;
    ScreenX lastX; ///< of the last move that was drawn
};
/// A zero marker, up and down.
struct Marker {
    int channel;
    Twips pressY; ///< place of the pointer inside the marker
};
} // namespace drag
using Drag = std::variant<drag::Nothing, drag::CursorLines, drag::Trace, drag::Marker>;

/// The mouse over the screen and the marker strip: what a press takes hold of, and what then moves with the pointer.
/// Arrow keys move cursor lines and markers by the same functions. The class knows no widget: it is given positions and
/// changes the state and the pictures.
class ScreenMouse {
public:
    ScreenMouse(const Scope& scope, ScopeScreen& pictures)
        : m_scope(scope)
        , m_model(scope.model)
        , m_screen(scope.screen)
        , m_pictures(pictures) {}

    /// Fractions of X and Y are cut off. The button plays no part.
    void Picture2_MouseDown(ScreenX X, ScreenY Y);
    void Picture2_MouseMove(ScreenX X, ScreenY Y);
    void Picture2_MouseUp();

    /// Y is the place of the pointer inside the marker. `Button` is all buttons that are down: a marker follows the
    /// left one alone.
    void image1_MouseDown(int Index, Twips Y);
    void image1_MouseMove(int Index, Qt::MouseButtons Button, Twips Y);
    void image1_MouseUp(int Index);

    /// Moves a cursor line by screen units, downward or to the right, if it stays on the screen. False, and nothing
    /// moves, during timed acquisition and while the mouse holds something else.
    bool moveCursorBy(CursorHit line, int units);
    /// Moves a zero marker so that its zero line goes down by `way`. It does not go where its stand-by label would
    /// replace it.
    void moveMarkerBy(int channel, ScreenY way);

    [[nodiscard]] const Drag& held() const { return m_drag; }
    [[nodiscard]] bool holdsAnything() const { return !std::holds_alternative<drag::Nothing>(m_drag); }
    [[nodiscard]] bool holds(CursorHit line) const;

private:
    void hold(CursorHit line);
    void dragTrace(drag::Trace& trace, ScreenX X);
    /// False when the pointer hovers over a line, which ends the event.
    [[nodiscard]] bool passVoltageCursors(ScreenY Y);
    [[nodiscard]] bool passTimeCursors(ScreenX X);

    Scope m_scope;
    publicM& m_model;
    ScreenState& m_screen;
    ScopeScreen& m_pictures;
    Drag m_drag;
};

} // namespace sixtrace
