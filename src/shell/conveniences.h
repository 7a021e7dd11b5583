// SPDX-License-Identifier: MIT
#pragma once

class QAction;

namespace sixtrace {

class FrmCom;
class ScreenMouse;
struct FrmComControls;

/// Adds to the main window what users know from other windows: keys for cursor lines and markers, an order for the Tab
/// key, names and descriptions for assistive tools, copying of readouts, a mark for captures with faults, and files
/// dropped onto the window. Each of them calls the handler that the mouse reaches too. `form` owns what is made;
/// `mouse` has to outlive `form`.
void addConveniences(FrmCom& form, const FrmComControls& controls, ScreenMouse& mouse, QAction& mnuChinese);

} // namespace sixtrace
