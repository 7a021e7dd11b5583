// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>

namespace sixtrace {

/// Reads a file by position through one window of fixed size, or bytes in memory by the same rules. Every read is whole
/// or does not happen, so that a field cut by the end of the file keeps its old value. Only regular files are opened: a
/// pipe or a device could be endless.
class ByteSource {
public:
    /// The longest read, in bytes; all samples that six channels can hold are 122772.
    static constexpr std::size_t kWindow = 256 * 1024;

    ByteSource() = default;

    /// Opens `path`; false when it is no regular file or may not be read.
    [[nodiscard]] bool open(const QString& path);
    /// Opens bytes that stand in memory, as if they were the whole content of a file. They are not copied: they have to
    /// stay until close() or the next open.
    void openBytes(std::span<const std::byte> bytes);
    void close();

    /// `count` bytes from the 1-based `position`, or null where the file does not hold them all. The bytes stay where
    /// they are until the next call.
    [[nodiscard]] const std::byte* at(double position, std::size_t count);
    /// How many of `count` bytes from `position` the file holds, and where they are.
    struct Stretch {
        const std::byte* bytes = nullptr;
        std::size_t count = 0;
    };
    [[nodiscard]] Stretch upTo(double position, std::size_t count);

    /// Whether `position` lies behind the last byte.
    [[nodiscard]] bool atEnd(double position) const { return position - 1 >= static_cast<double>(m_size); }

    /// A little-endian number at `position`.
    template<typename T>
    [[nodiscard]] std::optional<T> number(double position) {
        static_assert(sizeof(T) <= 4);
        const std::byte* bytes = at(position, sizeof(T));
        return bytes != nullptr ? std::optional<T>(decode<T>(bytes)) : std::nullopt;
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
    [[nodiscard]] bool fill(std::int64_t offset, std::size_t count);

    QFile m_file;
    std::int64_t m_size = 0;
    std::unique_ptr<std::byte[]>
        m_room; ///< of the window on a file; not cleared: only bytes that were read are looked at
    std::size_t m_roomSize = 0;
    const std::byte* m_window = nullptr; ///< in m_room, or the bytes in memory, all of them
    std::int64_t m_windowStart = 0;
    std::size_t m_windowCount = 0;
};

} // namespace sixtrace
