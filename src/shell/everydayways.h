// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QAction;
class QMenuBar;

namespace sixtrace {

class FrmCom;
class ScreenMouse;
struct FrmComControls;

/// The keys that a desktop's users expect on the menu items. A hidden item has none: it stays out of reach.
void setStandardShortcuts(const QMenuBar& bar);

/// What the everyday ways are given of the main window; all of it outlives them.
struct EverydayAreas {
    const FrmComControls& controls;
    ScreenMouse& mouse;
    std::function<void()> showState;
    std::function<void(const QString& path)> openDropped;
    QAction& mnuChinese;
};

/// Adds to the main window what its users know from every other one: keys for menu items, cursor lines and markers, a
/// tab order through all of it, names and words for assistive tools, and files dropped onto it. Every way ends in the
/// handler that the mouse reaches, so none of it has a behaviour of its own. `form` owns what is made.
void addEverydayWays(FrmCom& form, const EverydayAreas& areas);

} // namespace sixtrace
