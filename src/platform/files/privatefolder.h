// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace {

/// A folder that only this user can enter (mode 0700), with a separator at its end. It is made when it is missing. A
/// link and a folder of another user are refused with error 75; the mode of the user's own folder is set.
[[nodiscard]] Result<QString> privateFolder();
/// Does the same for `path`, whose parent folder exists.
[[nodiscard]] Result<QString> privateFolderAt(const QString& path);
/// Does the same for `path`. The folders above it that are missing are made with the same mode, whatever mask is set
/// for new files. When `path` is a link to a folder, that folder is used: the user has made the link.
[[nodiscard]] Result<QString> makePrivateFolder(const QString& path);

/// The path of "AutoGet.bin" in the private folder, which timed acquisition over USB writes again and again. A link of
/// that name is removed first, so that it is never followed.
[[nodiscard]] Result<QString> autoGetFile();
[[nodiscard]] Result<QString> autoGetFileIn(const QString& folder);

} // namespace sixtrace
