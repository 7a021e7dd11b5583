// SPDX-License-Identifier: MIT
#pragma once

#include "shell/screendisplay.h"
#include "view/appearance.h"
#include "view/screenmouse.h"

#include <QObject>

namespace sixtrace {

/// Connects the controls of the main window to the rules of the screen: each event of a control runs its handler, and
/// then the controls show the new state. Decides nothing itself. Owned by the window, as are the controls.
class ScreenWidgets : public QObject {
public:
    ScreenWidgets(ScopeScreen& pictures, ScreenMouse& mouse, Appearance& appearance, const FrmComControls& controls,
                  const ScreenDisplay::Ticks& ticks, QObject* parent);

    [[nodiscard]] ScreenDisplay& display() { return m_display; }

private:
    void bindList();
    void bindTimeAndVolt();
    void bindScreen();
    void bindMarkers();

    Scope m_scope;
    ScreenState& m_screen;
    ScreenMouse& m_mouse;
    Appearance& m_appearance;
    FrmComControls m_controls;
    ScreenDisplay m_display;
};

} // namespace sixtrace
