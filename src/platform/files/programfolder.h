// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace sixtrace {

/// The program's own folder: where settings, language files, captures and the transfer library lie.
///
/// `path` ends in the platform's separator and nowhere in two of them ("/" stays "/").
[[nodiscard]] QString withSeparator(const QString& path);

/// The executable's folder, with a separator at its end, unless that is an install for all users (the installed files
/// lie below "share" beside it) or cannot be written: then a folder of this user's own below the desktop's data
/// location, made when first asked for and furnished by furnishProgramFolder.
[[nodiscard]] QString programFolder();
/// The same for an executable in `executables`.
[[nodiscard]] QString programFolderOf(const QString& executables);

/// Gives a user's program folder what the program looks for there: links to the language and help files and to the
/// transfer library of `installed`, and a copy of the library's settings, which are the user's to change. What the user
/// has put there stays; a link whose target is gone is set anew.
void furnishProgramFolder(const QString& own, const QString& installed);

/// Makes `folder` below the program folder if it is missing. A failure is silent: the write that follows reports it.
void ensureFolder(const QString& folder);

} // namespace sixtrace
