// SPDX-License-Identifier: MIT
#pragma once

#include "capture/mdllan.h"

class QMenuBar;
class QWidget;

namespace sixtrace {

class ToolBar;

/// Number of the button that stops timed acquisition.
inline constexpr int kStopButton = 14;

/// Makes Toolbar1 with its pictures as a child of `parent`. Its buttons do nothing yet.
[[nodiscard]] ToolBar* makeMainToolbar(QWidget& parent);

/// From now on a click on a tool button triggers its menu item, and the button shows the item's tick. Only the Stop
/// button shows none.
void connectMainToolbar(ToolBar& Toolbar1, const QMenuBar& menus);

/// Sets the tool tips of all buttons, which are their accessible names too.
void translateMainToolbar(ToolBar& Toolbar1, Language language);

} // namespace sixtrace
