// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace sixtrace {

/// The program's icon in the usual sizes, each drawn for its size: the small ones show three thick pulses.
[[nodiscard]] QIcon programIcon();

/// The icon as one sharp picture of `pixels` by `pixels` logical pixels at a display ratio.
[[nodiscard]] QPixmap programPicture(int pixels, double ratio);

} // namespace sixtrace
