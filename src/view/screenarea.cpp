// SPDX-License-Identifier: MIT
#include "view/screenarea.h"

#include "platform/picturebox.h"
#include "view/drags.h"

namespace sixtrace {

ScreenArea::ScreenArea(publicM& model, const Widgets& widgets, std::function<FrameInputs()> inputs, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(widgets)
    , m_inputs(std::move(inputs)) {}

void ScreenArea::PicReDrawT() {
    m_renderer.PicReDrawT(m_model, m_inputs(), m_widgets.Picture2->picture(), m_widgets.picHidden[0]->picture());
    m_widgets.Picture2->update();
}

void ScreenArea::clear() {
    m_widgets.Picture2->picture().Cls();
    m_widgets.Picture2->update();
}

bool ScreenArea::beginTraceDrag(int channel) {
    const bool begun =
        sixtrace::beginTraceDrag(m_model, channel, m_widgets.Picture2->picture(), m_widgets.picHidden[1]->picture());
    m_widgets.Picture2->update();
    return begun;
}

bool ScreenArea::moveTraceDrag(int channel, float delta) {
    const bool moved = sixtrace::moveTraceDrag(m_model, channel, delta, m_widgets.picHidden[0]->picture(),
                                               m_widgets.picHidden[1]->picture(), m_widgets.Picture2->picture());
    m_widgets.Picture2->update();
    return moved;
}

void ScreenArea::beginMarkerDrag(int channel) {
    Picture& screen = m_widgets.Picture2->picture();
    screen.drawMode = DrawMode::XorPen;
    screen.ForeColor = kGhostColour;
    if (m_model.ChannelPresent.at(static_cast<std::size_t>(channel)) == 1) {
        static_cast<void>(sixtrace::beginMarkerDrag(m_model, channel, screen, m_widgets.picHidden[0]->picture()));
        m_widgets.Picture2->update();
    }
}

void ScreenArea::moveMarkerDrag(int channel, double markerTop) {
    static_cast<void>(sixtrace::moveMarkerDrag(m_model, channel, markerTop, m_widgets.picHidden[0]->picture(),
                                               m_widgets.Picture2->picture()));
    m_widgets.Picture2->update();
}

void ScreenArea::setBackColor(Colour colour) {
    m_widgets.Picture2->picture().BackColor = colour;
    for (PictureBox* hidden : m_widgets.picHidden) {
        hidden->picture().BackColor = colour;
        hidden->picture().Cls();
    }
}

Colour ScreenArea::BackColor() const {
    return m_widgets.Picture2->picture().BackColor;
}

} // namespace sixtrace
