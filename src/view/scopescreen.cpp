// SPDX-License-Identifier: MIT
#include "view/scopescreen.h"

#include "capture/channellist.h"
#include "view/cursors.h"
#include "view/drags.h"

namespace sixtrace {

ScopeScreen::ScopeScreen(publicM& model, ScreenState& screen, const Pictures& pictures)
    : m_model(model)
    , m_screen(screen)
    , m_pictures(pictures)
    , m_copy(pictures.Picture2, *pictures.picHidden[0]) {}

void ScopeScreen::PicReDrawT() {
    m_renderer.PicReDrawT(m_model, frameInputs(m_screen), m_pictures.Picture2, m_copy);
    ++m_changes;
}

void ScopeScreen::setScreenColor(Colour colour) {
    m_screen.screenColor = colour;
    m_pictures.Picture2.BackColor = colour;
    m_copy.forget();
    for (Picture* hidden : m_pictures.picHidden) {
        hidden->BackColor = colour;
        hidden->Cls();
    }
}

void ScopeScreen::readoutsDue() {
    UpdateVoltCursors(m_model, m_screen);
    printTime(m_model, m_screen);
}

void ScopeScreen::blankDue() {
    m_copy.bringUpToDate();
    m_pictures.Picture2.Cls();
    ++m_changes;
}

void ScopeScreen::closeTable() {
    if (m_closeTable) {
        m_closeTable();
    }
}

void ScopeScreen::openTable() {
    if (m_openTable) {
        m_openTable();
    }
}

void ScopeScreen::setTable(std::function<void()> close, std::function<void()> open) {
    m_closeTable = std::move(close);
    m_openTable = std::move(open);
}

bool ScopeScreen::beginTraceDrag(int channel) {
    m_copy.bringUpToDate();
    ++m_changes;
    return sixtrace::beginTraceDrag(m_model, channel, m_pictures.Picture2, *m_pictures.picHidden[1]);
}

bool ScopeScreen::moveTraceDrag(int channel, ScreenX delta) {
    m_copy.bringUpToDate();
    ++m_changes;
    return sixtrace::moveTraceDrag(m_model, channel, delta, *m_pictures.picHidden[0], *m_pictures.picHidden[1],
                                   m_pictures.Picture2);
}

void ScopeScreen::beginMarkerDrag(int channel) {
    m_copy.bringUpToDate();
    Picture& screen = m_pictures.Picture2;
    beginExclusiveOr();
    screen.ForeColor = kGhostColour;
    if (m_model.ChannelPresent[channel] == 1) {
        static_cast<void>(sixtrace::beginMarkerDrag(m_model, channel, screen, *m_pictures.picHidden[0]));
        ++m_changes;
    }
}

void ScopeScreen::moveMarkerDrag(int channel) {
    static_cast<void>(sixtrace::moveMarkerDrag(m_model, channel, m_screen.markers[channel].top,
                                               *m_pictures.picHidden[0], m_pictures.Picture2));
    ++m_changes;
}

const Picture& ScopeScreen::background() {
    m_copy.bringUpToDate();
    return *m_pictures.picHidden[0];
}

OffscreenScope::OffscreenScope(publicM& model, Graticule graticule, TraceStyle style)
    : m_screen(model, state, {Picture2, {&m_picHidden0, &m_picHidden1, &m_picHidden2}}) {
    state.graticule = graticule;
    state.lineTicked = style == TraceStyle::Lines;
    state.pointTicked = !state.lineTicked;
    m_screen.setScreenColor(model.BackColor);
    beginStart(scope());
    endStart(scope());
}

} // namespace sixtrace
