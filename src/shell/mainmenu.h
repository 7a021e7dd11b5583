// SPDX-License-Identifier: MIT
#pragma once

class QMenuBar;

namespace sixtrace {

/// Fills the menu bar with the commands of the main window: captions of the design, hidden and ticked items included.
/// Every item is an action that bears its name; what it does is connected by the window. A tick is the handlers' to
/// set: choosing an item does not change it.
void fillMainMenu(QMenuBar& bar);

} // namespace sixtrace
