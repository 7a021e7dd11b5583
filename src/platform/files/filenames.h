// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QDateTime>
#include <QString>

namespace sixtrace {

// Rules for names and paths as texts. None of them looks at the disk.

/// "D" and two digits each of year, month, day, hour and minute: the name that is proposed for a new file, without an
/// extension.
[[nodiscard]] QString dateName(const QDateTime& when);

/// `path` with the platform's separator at its end, unless it ends in a separator already.
[[nodiscard]] QString withSeparator(const QString& path);

/// `path` with `extension` ("." included) added when the file name has no "." of its own. A path that ends in a
/// separator stays as it is.
[[nodiscard]] QString withExtension(const QString& path, const QString& extension);

/// The part of `path` before its last separator; error 5 when it has none.
[[nodiscard]] Result<QString> getPath(const QString& path);

/// The part of `name` after its last "/", "\" or ":". A name that a stranger has sent then names a file and no folder,
/// whatever system the stranger runs.
[[nodiscard]] QString withoutFolder(const QString& name);

} // namespace sixtrace
