// SPDX-License-Identifier: MIT
#include "view/screenarea.h"

#include "platform/picturebox.h"

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
