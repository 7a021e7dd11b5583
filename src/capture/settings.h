// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"

#include <QString>

#include <cstdint>

namespace sixtrace {

/// A number of the settings, rounded to the nearest integer. A text that is no number is 0; one that is missing, empty
/// or too large gives `fallback`.
[[nodiscard]] std::int32_t iniNumber(const QString& section, const QString& key, std::int32_t fallback,
                                     const QString& file);
[[nodiscard]] std::int16_t iniShortNumber(const QString& section, const QString& key, std::int16_t fallback,
                                          const QString& file);
/// A truth value of the settings: "True", "False" or a number; anything else gives `fallback`.
[[nodiscard]] bool iniBoolean(const QString& section, const QString& key, bool fallback, const QString& file);

/// Writes one key at once. A folder that cannot be written is passed over in silence: the choice then lasts for the
/// run.
void writeIni(const QString& section, const QString& key, const QString& value, const QString& file);

} // namespace sixtrace
