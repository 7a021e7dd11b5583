// SPDX-License-Identifier: MIT
#pragma once

#include "capture/readouts.h"
#include "shell/frmcomcontrols.h"
#include "view/scopescreen.h"

#include <optional>

class QAction;

namespace sixtrace {

/// Makes the controls of the main window show the state of the screen. A control that shows it already is not touched,
/// so that a call where nothing has changed costs little and repaints nothing.
class ScreenDisplay {
public:
    /// The menu items whose ticks are part of the state.
    struct Ticks {
        QAction* mnuGraticule;
        QAction* mnuLine;
        QAction* mnuPoint;
    };

    ScreenDisplay(ScopeScreen& pictures, const FrmComControls& controls, const Ticks& ticks);

    /// Shows all of the state. The other functions show a part of it, for events that come often.
    void show();
    void showMarkers();
    void showCursors();
    void showPicture();

    /// Copies the entries of the two lists into the state after a language file has renamed time bases or volt ranges.
    void takeListTexts();

private:
    void showList();
    void showLists();
    void showReadouts();
    void showAppearance();

    publicM& m_model;
    ScreenState& m_screen;
    const ScopeScreen& m_pictures;
    FrmComControls m_controls;
    Ticks m_ticks;
    unsigned m_shownChanges = 0; ///< ScopeScreen::changes() when the picture was last shown
    // What the readouts were last written from, and how they were written.
    std::optional<SignalFigures> m_measured;
    MeasurementTexts m_measurements;
    TitledRow m_titled;
    FrameTitles m_titles;
    unsigned m_shownPaths = 0; ///< ScreenState::pathsShown when the path was last shown
    int m_frontMarker = -1;    ///< channel whose marker is on top of the others
};

} // namespace sixtrace
