// SPDX-License-Identifier: MIT
#include "capture/bytesource.h"

#include <QFileInfo>

#include <algorithm>

namespace sixtrace {

bool ByteSource::open(const QString& path) {
    if (!QFileInfo(path).isFile()) {
        return false;
    }
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    m_size = m_file.size();
    m_windowStart = 0;
    m_windowCount = 0;
    m_windowRoom = std::min(kWindow, static_cast<std::size_t>(m_size));
    m_window = std::make_unique_for_overwrite<std::byte[]>(m_windowRoom);
    return true;
}

bool ByteSource::fill(std::int64_t offset, std::size_t count) {
    const auto inWindow = [&] {
        return offset >= m_windowStart &&
               offset + static_cast<std::int64_t>(count) <= m_windowStart + static_cast<std::int64_t>(m_windowCount);
    };
    if (inWindow()) {
        return true;
    }
    if (m_file.pos() != offset && !m_file.seek(offset)) {
        return false;
    }
    m_windowStart = offset;
    m_windowCount = 0;
    while (m_windowCount < m_windowRoom) {
        const qint64 got = m_file.read(reinterpret_cast<char*>(m_window.get()) + m_windowCount,
                                       static_cast<qint64>(m_windowRoom - m_windowCount));
        if (got <= 0) {
            break;
        }
        m_windowCount += static_cast<std::size_t>(got);
        if (m_windowStart + static_cast<std::int64_t>(m_windowCount) >= m_size) {
            break;
        }
    }
    return inWindow();
}

const std::byte* ByteSource::at(double position, std::size_t count) {
    const Stretch stretch = upTo(position, count);
    return stretch.count == count ? stretch.bytes : nullptr;
}

ByteSource::Stretch ByteSource::upTo(double position, std::size_t count) {
    const double offset = position - 1;
    if (!(offset >= 0) || offset >= static_cast<double>(m_size)) {
        return {};
    }
    const auto start = static_cast<std::int64_t>(offset);
    const std::size_t held = static_cast<std::size_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(std::min(count, kWindow)), m_size - start));
    if (!fill(start, held)) {
        return {};
    }
    return {m_window.get() + (start - m_windowStart), held};
}

} // namespace sixtrace
