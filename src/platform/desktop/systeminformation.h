// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace sixtrace {

/// A value of the machine's registry as text: strings as they are, 32-bit numbers as "&h" and hexadecimal digits.
/// Nothing where there is no such value, or no registry at all.
[[nodiscard]] std::optional<QString> GetKeyValue(const QString& path, const QString& name);

/// Starts the system's information program; false where there is none.
[[nodiscard]] bool startSystemInformation();

} // namespace sixtrace
