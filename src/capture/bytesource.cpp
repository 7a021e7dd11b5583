// SPDX-License-Identifier: MIT
#include "capture/bytesource.h"

#include <QFileInfo>

#include <algorithm>

namespace sixtrace {

bool ByteSource::open(const QString& path) {
    close();
    if (!QFileInfo(path).isFile()) {
        return false;
    }
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    m_size = m_file.size();
    m_roomSize = std::min(kWindow, static_cast<std::size_t>(m_size));
    m_room = std::make_unique_for_overwrite<std::byte[]>(m_roomSize);
    m_window = m_room.get();
    return true;
}

void ByteSource::openBytes(std::span<const std::byte> bytes) {
    close();
    m_size = static_cast<std::int64_t>(bytes.size());
    m_window = bytes.data();
    m_windowCount = bytes.size();
}

void ByteSource::close() {
    m_file.close();
    m_size = 0;
    m_window = nullptr;
    m_windowStart = 0;
    m_windowCount = 0;
}

bool ByteSource::fill(std::int64_t offset, std::size_t count) {
    const auto inWindow = [&] {
        return offset >= m_windowStart &&
               offset + static_cast<std::int64_t>(count) <= m_windowStart + static_cast<std::int64_t>(m_windowCount);
    };
    if (inWindow()) {
        return true;
    }
    // Bytes in memory are all in the window, so that only a file comes here.
    if (m_file.pos() != offset && !m_file.seek(offset)) {
        return false;
    }
    m_windowStart = offset;
    m_windowCount = 0;
    while (m_windowCount < m_roomSize) {
        const qint64 got = m_file.read(reinterpret_cast<char*>(m_room.get()) + m_windowCount,
                                       static_cast<qint64>(m_roomSize - m_windowCount));
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
    return {m_window + (start - m_windowStart), held};
}

} // namespace sixtrace
