// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QString>

#include <optional>

namespace sixtrace {

/// Gives a file another name in the same file system, in one step and never over a file that bears the name already:
/// error 58 then. Of several processes that want one name, one gets it.
Outcome placeNew(const QString& file, const QString& name);

/// Gives a file the name of another one, which goes, in one step; the new one takes over its rights.
Outcome placeOver(const QString& file, const QString& name);

/// Where a path leads in the end, also if nothing is there yet: links are followed. Nothing for a ring of links.
[[nodiscard]] std::optional<QString> followed(const QString& path);

} // namespace sixtrace
