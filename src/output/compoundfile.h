// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

namespace sixtrace {

/// A compound file, the container of older office documents, with one stream of the given name in its root folder. A
/// stream of less than 4096 bytes is filled up with zeros, since it would need another kind of sectors. Error 5 for a
/// stream of more than about 7 MB, which would need a second level of sector tables.
[[nodiscard]] Result<QByteArray> compoundFile(const QString& streamName, QByteArray stream);

} // namespace sixtrace
