// SPDX-License-Identifier: MIT
#include "view/defaults.h"

namespace sixtrace {

void applyDefaultColours(publicM& model) {
    model.LineColor = defaults::kLineColor;
    model.GridColor = defaults::kGridColor;
    model.BackColor = defaults::kScreenColor;
}

} // namespace sixtrace
