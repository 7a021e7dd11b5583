// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace {

/// A folder of this user's own (mode 0700), made when it is missing, with a separator at its end. A link, a stranger's
/// folder or one that others may enter is refused with error 75.
[[nodiscard]] Result<QString> privateFolder();
/// The same at a given place, in a folder that is there.
[[nodiscard]] Result<QString> privateFolderAt(const QString& path);
/// The same, with the folders above it that are missing: they are this user's own too, whatever mask is set for new
/// files. Where `path` is a link to a folder, that folder is meant: the user has put the link there.
[[nodiscard]] Result<QString> makePrivateFolder(const QString& path);

/// The file that timed acquisition over USB writes again and again: "AutoGet.bin" in the private folder. A link of that
/// name is removed before, never followed.
[[nodiscard]] Result<QString> autoGetFile();
[[nodiscard]] Result<QString> autoGetFileIn(const QString& folder);

} // namespace sixtrace
