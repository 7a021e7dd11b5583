// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace sixtrace {

// The program folder holds the settings, the language files, the captures and the transfer library.

/// The program folder, with a separator at its end. It is the folder of the executable, unless that belongs to an
/// install for all users, whose files lie in a "share" folder, or cannot be written. Then it is a folder of this user
/// in the desktop's data location, which is made and filled by furnishProgramFolder().
[[nodiscard]] QString programFolder();
/// The same for an executable in `executables`.
[[nodiscard]] QString programFolderOf(const QString& executables);

/// Fills a user's program folder with links to the language files, the help files and the transfer library of
/// `installed`, and with a copy of the library's settings, which the user may change. Files that are there stay; a link
/// whose target is gone is replaced.
void furnishProgramFolder(const QString& own, const QString& installed);

/// Makes `folder` when it is missing. A failure is not reported here; the write that follows reports it.
void ensureFolder(const QString& folder);

} // namespace sixtrace
