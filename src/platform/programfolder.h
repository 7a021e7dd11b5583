// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace sixtrace {

/// The program's own folder: where settings, language files, captures and the transfer library lie.
///
/// `path` ends in the platform's separator and nowhere in two of them ("/" stays "/").
[[nodiscard]] QString withSeparator(const QString& path);

/// The executable's folder, with a separator at its end, where that folder can be written; otherwise (a system-wide
/// install) a folder of this user's own below the desktop's data location, made when first asked for.
[[nodiscard]] QString programFolder();

/// Makes `folder` below the program folder if it is missing. A failure is silent: the write that follows reports it.
void ensureFolder(const QString& folder);

} // namespace sixtrace
