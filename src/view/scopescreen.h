// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/drawing/picture.h"
#include "view/frame.h"

#include <array>
#include <functional>

namespace sixtrace {

/// The scope screen as a picture: it draws what the model and the screen's state say, and the ghosts of drags. A window
/// shows its pictures; without a window it serves the command line and the printed page.
class ScopeScreen : public ScreenDuties {
public:
    struct Pictures {
        Picture& Picture2;
        std::array<Picture*, 3> picHidden; ///< copy of the frame, trace drag, printed page
    };

    ScopeScreen(publicM& model, ScreenState& screen, const Pictures& pictures);

    [[nodiscard]] Scope scope() { return {m_model, m_screen, *this}; }

    /// A whole new frame, which is also the next background of a drag.
    void PicReDrawT();
    /// Sets the background of the screen and of the hidden pictures, so that a drag does not show the old colour.
    void setScreenColor(Colour colour);
    void setPenColor(Colour colour) { m_pictures.Picture2.ForeColor = colour; }

    void frameDue() override { PicReDrawT(); }
    void readoutsDue() override;
    void blankDue() override;
    void closeTable() override;
    void openTable() override;
    /// Sets the functions that close and load the data table. Empty ones do nothing.
    void setTable(std::function<void()> close, std::function<void()> open);

    /// Makes the pen draw by exclusive-or until the next frame, for a press on a trace or marker.
    void beginExclusiveOr() { m_pictures.Picture2.drawMode = DrawMode::XorPen; }
    /// The drags of a trace, sideways and with its marker: see view/drags.h. False where a run-time error ended a step.
    bool beginTraceDrag(int channel);
    bool moveTraceDrag(int channel, ScreenX delta);
    void beginMarkerDrag(int channel);
    void moveMarkerDrag(int channel);

    /// A number that grows whenever the picture of the screen changes, so that a window knows when to show it.
    [[nodiscard]] unsigned changes() const { return m_changes; }
    /// picHidden(0), brought up to date.
    [[nodiscard]] const Picture& background();

private:
    publicM& m_model;
    ScreenState& m_screen;
    Pictures m_pictures;
    FrameCopy m_copy;
    FrameRenderer m_renderer;
    std::function<void()> m_closeTable;
    std::function<void()> m_openTable;
    unsigned m_changes = 0;
};

/// The scope screen without a window: the same state, rules and pictures, in the state after start-up. For the command
/// line and for tests. The model's tables and colours are filled.
class OffscreenScope {
public:
    explicit OffscreenScope(publicM& model, Graticule graticule = Graticule::Dotted,
                            TraceStyle style = TraceStyle::Lines);

    [[nodiscard]] Scope scope() { return m_screen.scope(); }
    [[nodiscard]] ScopeScreen& screen() { return m_screen; }

    ScreenState state;
    Picture Picture2{kSurfaceWidth, kSurfaceHeight};

private:
    Picture m_picHidden0{kSurfaceWidth, kSurfaceHeight};
    Picture m_picHidden1{kSurfaceWidth, kSurfaceHeight};
    Picture m_picHidden2{kSurfaceWidth, kSurfaceHeight};
    ScopeScreen m_screen;
};

} // namespace sixtrace
