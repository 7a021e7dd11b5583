// SPDX-License-Identifier: MIT
#pragma once

#include "view/geometry.h"
#include "view/scopescreen.h"

namespace sixtrace {

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
