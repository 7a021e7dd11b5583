// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/profiletext.h"
#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace {

/// A profile file as it stands at one moment, for reading many keys; without any where there is no such file.
[[nodiscard]] ProfileText profileTextOf(const QString& file);

/// The value of a key in a profile file (sections in brackets, lines "key=value"), or `fallback` where the file, the
/// section or the key is missing or the value is empty.
///
/// Sections and keys compare without case; blanks around key, "=" and value are dropped, so is one pair of quotes
/// around the value; a line that begins with ";" is a comment. The first key of the first section of that name counts.
/// The file is UTF-8, a byte-order mark is tolerated, bytes that are no UTF-8 become replacement characters. Values are
/// cut at 127 characters, before a character of which only the first half would fit. Whatever the file holds, reading
/// is bounded by its size and never fails louder than `fallback`; a file above 1 MiB is read up to its last whole line
/// there.
[[nodiscard]] QString readProfile(const QString& section, const QString& key, const QString& fallback,
                                  const QString& file);

/// The same under the name by which settings are read.
[[nodiscard]] QString GetIniString(const QString& section, const QString& key, const QString& fallback,
                                   const QString& file);

/// Sets one key, and changes nothing else: comments, order and the other keys keep their place, the section is added at
/// the end where it is missing. The new file appears whole, by renaming, and under a lock, so that neither a crash nor
/// a second running copy of the program loses a key. The file's permissions are kept; a link is followed, and the lock
/// lies beside the file that it leads to. A file that is there but cannot be read is left alone. A lock that another
/// process keeps for seconds loses the key, and the keys that follow soon wait but a moment for it.
///
/// Line ends in `value` would break the file and are written as blanks. Quotes around a value are written as they are,
/// and reading drops them.
Outcome writeProfile(const QString& section, const QString& key, const QString& value, const QString& path);

} // namespace sixtrace
