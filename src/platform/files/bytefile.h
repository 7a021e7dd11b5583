// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace sixtrace {

/// Files by the bytes of their names, without a desktop library: for programs that read thousands of files, and for
/// names that are no text in any encoding.

/// Why a file is not read.
enum class FileRefusal { None, Missing, Folder, NoOrdinaryFile, Unreadable };

/// Reads an ordinary file by position, or bytes in memory by the same rules. A file of up to kResident bytes is read
/// once, as a whole; of a longer one there is a window. An object serves one file after the other and keeps its memory.
class ByteFile {
public:
    static constexpr std::size_t kResident = 256 * 1024;

    ByteFile() = default;
    ByteFile(const ByteFile&) = delete;
    ByteFile& operator=(const ByteFile&) = delete;
    ~ByteFile() { close(); }

    /// Opens `path` in place of what was open. A pipe or a device is refused, and not waited for.
    [[nodiscard]] FileRefusal open(const std::string& path);
    /// Opens bytes that stand in memory, as if they were the whole content of a file, in place of what was open. They
    /// are not copied: they have to stay until close() or the next open.
    void openBytes(std::span<const std::byte> bytes);
    void close();

    [[nodiscard]] std::int64_t size() const { return m_size; }
    /// Whether the whole file stands in memory, so that stretches stay where they are until the next open.
    [[nodiscard]] bool isResident() const { return m_descriptor < 0; }
    /// The bytes from `offset`, `count` or as many as there are; at most kResident. Unless isResident they stay until
    /// the next call only.
    [[nodiscard]] std::span<const std::byte> stretch(std::int64_t offset, std::size_t count);

private:
    [[nodiscard]] std::size_t readAt(std::int64_t offset, std::size_t count);

    int m_descriptor = -1;
    std::int64_t m_size = 0;
    std::unique_ptr<std::byte[]> m_room; ///< of the window on a file; only bytes that were read are looked at
    std::size_t m_roomSize = 0;
    std::span<const std::byte> m_window; ///< in m_room, or the bytes in memory
    std::int64_t m_windowStart = 0;
};

/// What becomes of a file that is there already.
enum class Existing { Replaced, Kept };

/// Writes a file that appears whole or not at all: into a new file beside it, then given its name in one step. A file
/// that is replaced keeps its permissions; a link is followed. It does not wait for the disk, so it is for what can be
/// made again after a power failure. Gives 0, or the errno of what failed: EEXIST where an
/// existing file is to be kept, EISDIR for a folder.
[[nodiscard]] int writeWholeFile(const std::string& path, std::span<const std::byte> content, Existing existing);

/// The sentence of an errno value as this program words it.
[[nodiscard]] const char* fileErrorText(int error);

} // namespace sixtrace
