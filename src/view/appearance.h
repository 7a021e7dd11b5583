// SPDX-License-Identifier: MIT
#pragma once

#include "view/scopescreen.h"

namespace sixtrace {

class Dialogs;

/// The user's choices of how the screen looks: colours, dotted graticule or cross, lines or points. Each takes effect
/// and is written to the settings file at once.
class Appearance {
public:
    Appearance(ScopeScreen& pictures, Dialogs& dialogs)
        : m_pictures(pictures)
        , m_model(pictures.scope().model)
        , m_screen(pictures.scope().screen)
        , m_dialogs(dialogs) {}

    void Picture2_DblClick();
    void Picture3_DblClick();
    /// Chooses the trace colour of a channel.
    void image1_DblClick(int Index);
    void mnubackgroundcolor_Click() { Picture2_DblClick(); }
    void MnuGridColor_Click();
    void mnuGraticule_Click();
    void mnuLine_Click() { chooseStyle(TraceStyle::Lines); }
    void mnuPoint_Click() { chooseStyle(TraceStyle::Points); }

private:
    void chooseStyle(TraceStyle style);
    /// The text in the present language.
    [[nodiscard]] QString words(QStringView chinese, QStringView english) const;

    ScopeScreen& m_pictures;
    publicM& m_model;
    ScreenState& m_screen;
    Dialogs& m_dialogs;
};

} // namespace sixtrace
