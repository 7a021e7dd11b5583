// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

namespace sixtrace {

/// The language of the interface.
enum class Language { Chinese, English };

/// What `LanguageId` stands for: 0 is Chinese, anything else English.
[[nodiscard]] inline Language languageOf(const publicM& model) {
    return model.LanguageId == 0 ? Language::Chinese : Language::English;
}

/// Chooses the language file beside the program: 0 is Chinese, anything else English.
void SetLanFile(publicM& model, int id);

/// A text of the language file in use, or `fallback` where the file, the key or its value is missing.
[[nodiscard]] QString GetLanString(const publicM& model, const QString& section, const QString& key,
                                   const QString& fallback);

} // namespace sixtrace
