// SPDX-License-Identifier: MIT
#include "capture/bytesource.h"

#include <QFile>

namespace sixtrace {

bool ByteSource::open(const QString& path) {
    return m_file.open(QFile::encodeName(path).toStdString()).ok();
}

std::span<const std::byte> ByteSource::upTo(double position, std::size_t count) {
    const double offset = position - 1;
    if (!(offset >= 0) || atEnd(position)) {
        return {};
    }
    return m_file.stretch(static_cast<std::int64_t>(offset), count);
}

} // namespace sixtrace
