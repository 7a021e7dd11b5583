// SPDX-License-Identifier: MIT
#pragma once

namespace sixtrace {

/// The program's name on the session bus, which is also that of its desktop entry, and the path of its object there.
/// The program takes calls under them; "kqx open" makes such a call.
inline constexpr const char* kDesktopId = "org.sixtrace.Sixtrace";
inline constexpr const char* kDesktopPath = "/org/sixtrace/Sixtrace";

} // namespace sixtrace
