// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// Opens those of the descriptors 0 to 2 that are closed, on nothing. Whoever comes first would get their numbers
/// otherwise, the connection to the display for one, and warnings for standard error would be written into it. The
/// first thing a program does.
void openStandardDescriptors();

} // namespace sixtrace
