// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace sixtrace {

/// A value below HKEY_LOCAL_MACHINE of the Windows registry, as text. A 32-bit number becomes "&h" and hexadecimal
/// digits. Nothing where there is no such value, and on other systems, which have no registry.
[[nodiscard]] std::optional<QString> GetKeyValue(const QString& path, const QString& name);

/// Starts the program that shows information about the machine. False where there is none or it does not start.
[[nodiscard]] bool startSystemInformation();

} // namespace sixtrace
