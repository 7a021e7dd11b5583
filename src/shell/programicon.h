// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace sixtrace {

/// The icon of the program. Each size is drawn on its own: small icons have fewer and thicker lines than large ones.
[[nodiscard]] QIcon programIcon();

/// The icon as a picture of `pixels` by `pixels` logical pixels, for a display of `ratio` device pixels to the logical
/// one.
[[nodiscard]] QPixmap programPicture(int pixels, double ratio);

} // namespace sixtrace
