// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtimeerror.h"

#include <QString>

namespace sixtrace {

/// A folder of this user's own (mode 0700), made when it is missing, with a separator at its end. A link, a stranger's
/// folder or one that others may enter is refused with error 75.
[[nodiscard]] Result<QString> privateFolder();
/// The same at a given place.
[[nodiscard]] Result<QString> privateFolderAt(const QString& path);

/// The file that timed acquisition over USB writes again and again: "AutoGet.bin" in the private folder. A link of that
/// name is removed before, never followed.
[[nodiscard]] Result<QString> autoGetFile();
[[nodiscard]] Result<QString> autoGetFileIn(const QString& folder);

} // namespace sixtrace
