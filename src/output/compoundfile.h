// SPDX-License-Identifier: MIT
#pragma once

#include "platform/text/runtimeerror.h"

#include <QByteArray>
#include <QString>

namespace sixtrace {

/// A compound file (the container of older office documents) that holds one stream of the given name below its root.
/// Short streams are filled with zeros to 4096 bytes, since shorter ones would need a second kind of sectors. Error 5
/// for a stream of more than about 7 MB, which would need a second level of sector tables.
[[nodiscard]] Result<QByteArray> compoundFile(const QString& streamName, QByteArray stream);

} // namespace sixtrace
