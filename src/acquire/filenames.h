// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QDateTime>
#include <QString>

namespace sixtrace {

/// "D", two digits each of year, month, day, hour and minute, ".bin": the name proposed for a capture fetched then.
[[nodiscard]] QString stampedName(const QDateTime& when);

/// The path of a capture over the serial line: folder "dat" of the program folder (which ends in a separator).
[[nodiscard]] QString serialStorePath(const QString& appDir, const QDateTime& when);

/// The part of a path before its last separator. Error 5 for a path without one.
[[nodiscard]] Result<QString> getPath(const QString& path);

} // namespace sixtrace
