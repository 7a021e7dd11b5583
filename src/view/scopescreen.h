// SPDX-License-Identifier: MIT
#pragma once

#include "capture/screenstate.h"
#include "platform/drawing/picture.h"
#include "view/frame.h"
#include "view/framecopy.h"

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
    /// Ground of the screen and of its hidden companions, so that a drag never shows the old one.
    void setScreenColor(Colour colour);
    void setPenColor(Colour colour) { m_pictures.Picture2.ForeColor = colour; }

    void frameDue() override { PicReDrawT(); }
    void readoutsDue() override;
    void blankDue() override;
    void closeTable() override;
    void openTable() override;
    /// Who closes and loads the data table; nobody where these are empty.
    void setTable(std::function<void()> close, std::function<void()> open);

    /// A press on a trace or marker draws over the screen by exclusive-or until the next frame.
    void beginExclusiveOr() { m_pictures.Picture2.drawMode = DrawMode::XorPen; }
    /// The drags of a trace, sideways and with its marker: see view/drags.h. False where a run-time error ended a step.
    bool beginTraceDrag(int channel);
    bool moveTraceDrag(int channel, ScreenX delta);
    void beginMarkerDrag(int channel);
    void moveMarkerDrag(int channel);

    /// Grows whenever the picture on the screen changes, for those who show it.
    [[nodiscard]] unsigned changes() const { return m_changes; }
    /// picHidden(0) as a drag that began now would find it.
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

} // namespace sixtrace
