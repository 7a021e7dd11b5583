// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/profiletext.h"
#include "platform/text/runtimeerror.h"

#include <QString>

namespace sixtrace {

/// The present content of a profile file, for reading many keys. A missing file has no keys.
[[nodiscard]] ProfileText profileTextOf(const QString& file);

/// The value of a key in a profile file. It is `fallback` when the file, the section or the key is missing, when the
/// value is empty, and on every failure.
///
/// The file has sections in brackets and lines "key=value". Upper and lower case do not matter in the names of sections
/// and keys. Blanks around the key, the "=" and the value are dropped, and also one pair of quotes around the value. A
/// line that begins with ";" is a comment. When a name occurs twice, the first section and its first key count. The
/// file is UTF-8; a byte-order mark is allowed, and other bytes become replacement characters. A value is cut at 127
/// UTF-16 units, and never inside a character. A file of more than 1 MiB is read up to its last whole line within that
/// size.
[[nodiscard]] QString readProfile(const QString& section, const QString& key, const QString& fallback,
                                  const QString& file);

/// The same, under the name that the readers of settings use.
[[nodiscard]] QString GetIniString(const QString& section, const QString& key, const QString& fallback,
                                   const QString& file);

/// Sets one key. Comments, the order and the other keys stay; a missing section is added at the end. The new file
/// appears whole, by renaming, and is written under a lock, so that neither a crash nor a second running copy of the
/// program loses a key. The file keeps its permissions. A link is followed, and the lock file lies in the folder of its
/// target. A file that exists but cannot be read is not changed. When another process holds the lock for seconds, the
/// key is not written, and for some seconds further writes wait only a moment for the lock.
///
/// Line ends in `value` would break the file, so they are written as blanks. Quotes around a value are written as they
/// are, and reading drops them.
Outcome writeProfile(const QString& section, const QString& key, const QString& value, const QString& path);

} // namespace sixtrace
