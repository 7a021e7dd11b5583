// SPDX-License-Identifier: MIT
#pragma once

#include "shell/frmcomcontrols.h"
#include "view/appearance.h"
#include "view/screenmouse.h"

#include <QObject>

class QAction;

namespace sixtrace {

/// Binds the controls of the main window to the rules of the screen: each event of a control runs its handler, and then
/// the controls show the state that it has left. Decides nothing itself. Owned by the window, as are the controls.
class ScreenWidgets : public QObject {
public:
    /// The menu items that show a choice of appearance.
    struct Ticks {
        QAction* mnuGraticule;
        QAction* mnuLine;
        QAction* mnuPoint;
    };

    ScreenWidgets(ScopeScreen& pictures, ScreenMouse& mouse, Appearance& appearance, const FrmComControls& controls,
                  const Ticks& ticks, QObject* parent);

    /// Every control takes what the state says. Costs little where nothing has changed.
    void show();
    /// The lists' texts as a language file has left them become the state's: it may rename time bases and volt ranges.
    void takeListTexts();

private:
    void bindList();
    void bindTimeAndVolt();
    void bindScreen();
    void bindMarkers();

    void showList();
    void showLists();
    void showMarkers();
    void showCursors();
    void showReadouts();
    void showPicture();
    void showAppearance();

    Scope m_scope;
    ScreenState& m_screen;
    ScopeScreen& m_pictures;
    ScreenMouse& m_mouse;
    Appearance& m_appearance;
    FrmComControls m_controls;
    Ticks m_ticks;
    unsigned m_shownChanges = 0; ///< of the pictures
    unsigned m_shownPaths = 0;
    int m_frontMarker = -1; ///< marker that lies over all others
};

} // namespace sixtrace
