// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "view/frame.h"

#include <QObject>

#include <array>
#include <functional>

namespace sixtrace {

class PictureBox;

/// The scope screen: Picture2 with its three hidden companions, and the frame drawn on it. What a frame shows beside
/// the model (ticks, markers, styles) is asked of the window at each frame. Owned by the window, as are the boxes.
class ScreenArea : public QObject {
public:
    struct Widgets {
        PictureBox* Picture2;
        std::array<PictureBox*, 3> picHidden;
    };

    ScreenArea(publicM& model, const Widgets& widgets, std::function<FrameInputs()> inputs, QObject* parent);

    /// A whole new frame, and its copy to picHidden(0).
    void PicReDrawT();
    /// An empty screen without graticule; the next frame brings everything back.
    void clear();
    /// The drags of a trace, sideways and with its marker: see view/drags.h. False where a run-time error ended a step.
    bool beginTraceDrag(int channel);
    bool moveTraceDrag(int channel, float delta);
    void beginMarkerDrag(int channel);
    void moveMarkerDrag(int channel, double markerTop);
    /// Ground of the screen and of its hidden companions, so that a drag never shows the old one.
    void setBackColor(Colour colour);
    [[nodiscard]] Colour BackColor() const;

private:
    publicM& m_model;
    Widgets m_widgets;
    std::function<FrameInputs()> m_inputs;
    FrameRenderer m_renderer;
};

} // namespace sixtrace
