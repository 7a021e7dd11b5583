// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

namespace sixtrace {

/// Chooses the language file beside the program: 0 is Chinese, anything else English.
void SetLanFile(publicM& model, int id);

/// A text of the language file in use, or `fallback` where the file, the key or its value is missing.
[[nodiscard]] QString GetLanString(const publicM& model, const QString& section, const QString& key,
                                   const QString& fallback);

} // namespace sixtrace
