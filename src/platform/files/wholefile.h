// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

namespace sixtrace {

/// Writes a file that appears whole or not at all: into a new file beside it, then renamed. An existing file keeps its
/// permissions and survives every failure; a link is followed.
Outcome writeWhole(const QString& path, const QByteArray& content);

} // namespace sixtrace
