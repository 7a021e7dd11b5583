// SPDX-License-Identifier: MIT
#include "view/offscreenscope.h"

#include "capture/channellist.h"

namespace sixtrace {

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
