// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/bytefile.h"

#include <QString>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

namespace sixtrace {

/// Reads numbers of an ordinary file, or of bytes in memory, by position. Every read is whole or does not happen, so
/// that a field cut by the end of the file keeps its old value.
class ByteSource {
public:
    /// Opens `path`; false when it is no ordinary file or may not be read.
    [[nodiscard]] bool open(const QString& path);
    /// Opens bytes in memory, as if they were the whole content of a file. They are not copied, so they have to exist
    /// until close() or the next open.
    void openBytes(std::span<const std::byte> bytes) { m_file.openBytes(bytes); }
    void close() { m_file.close(); }

    /// As many of `count` bytes from the 1-based `position` as the file holds, ByteFile::kResident at most. They stay
    /// where they are until the next call.
    [[nodiscard]] std::span<const std::byte> upTo(double position, std::size_t count);

    /// Whether `position` lies after the last byte.
    [[nodiscard]] bool atEnd(double position) const { return position - 1 >= static_cast<double>(m_file.size()); }

    /// A little-endian number at `position`.
    template<typename T>
    [[nodiscard]] std::optional<T> number(double position) {
        static_assert(sizeof(T) <= 4);
        const std::span<const std::byte> bytes = upTo(position, sizeof(T));
        return bytes.size() == sizeof(T) ? std::optional<T>(decode<T>(bytes.data())) : std::nullopt;
    }

    template<typename T>
    [[nodiscard]] static T decode(const std::byte* bytes) {
        std::array<std::byte, sizeof(T)> raw{};
        std::memcpy(raw.data(), bytes, sizeof(T));
        if constexpr (std::endian::native == std::endian::big) {
            std::reverse(raw.begin(), raw.end());
        }
        return std::bit_cast<T>(raw);
    }

private:
    ByteFile m_file;
};

} // namespace sixtrace
