// SPDX-License-Identifier: MIT
#pragma once

class QMenuBar;

namespace sixtrace {

/// Fills the menu bar with the items of the main window: captions of the design, ticks, keys; the hidden items too. The
/// object name of an item is its name in the design. The window connects the items to what they do. Choosing an item
/// does not change its tick: the handlers set it.
void fillMainMenu(QMenuBar& bar);

} // namespace sixtrace
