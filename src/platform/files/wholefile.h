// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sixtrace {

// Files that appear under their name in one step: whole, or not at all.

/// Writes the content to a new file in the same folder, and renames that. An existing file keeps its permissions, and
/// stays as it is when anything fails; a link is followed.
Outcome writeWhole(const QString& path, const QByteArray& content);

/// Renames `file` to `name`, in the same file system and in one step. It never replaces a file of that name: that is
/// error 58. When several processes want one name, one of them gets it.
Outcome placeNew(const QString& file, const QString& name);

/// Renames `file` to `name` in one step, and replaces a file of that name, whose permissions it takes over.
Outcome placeOver(const QString& file, const QString& name);

/// The path that a path leads to through all its links, even when nothing exists there yet; nothing for links that
/// lead back to themselves.
[[nodiscard]] std::optional<QString> followed(const QString& path);

} // namespace sixtrace
