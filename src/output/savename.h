// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

namespace sixtrace {

/// "D" and two digits each of year, month, day, hour and minute: the name that a table is offered to be saved under.
[[nodiscard]] QString dateName(const QDateTime& time);

/// `path` with `extension` ("." included) behind a file name that has none of its own.
[[nodiscard]] QString withExtension(const QString& path, const QString& extension);

} // namespace sixtrace
