// SPDX-License-Identifier: MIT
#pragma once

class QAction;
class QWidget;

namespace sixtrace {

/// Names the controls without a caption of their own for assistive tools, in the language that is ticked, now and after
/// each switch.
void keepAccessibleNames(QWidget& form, QAction& mnuChinese);

} // namespace sixtrace
