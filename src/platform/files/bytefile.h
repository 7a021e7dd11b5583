// SPDX-License-Identifier: MIT
#pragma once

#include "platform/files/descriptor.h"
#include "platform/text/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace sixtrace {

// Reading and writing files without a desktop library, under names of any bytes. Programs that read thousands of files
// use it, and programs whose file names need not be text in any encoding.

/// Why a file cannot be read.
enum class FileRefusal { Missing, Folder, NoOrdinaryFile, Unreadable };

/// Reads an ordinary file by position, or bytes in memory in the same way. A file of up to kResident bytes is read once
/// and kept in memory; of a longer file a window of that size is kept. One object can open one file after another and
/// then keeps its memory.
class ByteFile {
public:
    static constexpr std::size_t kResident = 256 * 1024;

    ByteFile() = default;
    ByteFile(const ByteFile&) = delete;
    ByteFile& operator=(const ByteFile&) = delete;
    ~ByteFile() = default;

    /// Closes what was open and opens `path`. A pipe or a device is refused without waiting for it.
    OutcomeOr<FileRefusal> open(const std::string& path);
    /// Closes what was open and reads from these bytes as if they were the content of a file. They are not copied, so
    /// they have to exist until close() or the next open.
    void openBytes(std::span<const std::byte> bytes);
    void close();

    [[nodiscard]] std::int64_t size() const { return m_size; }
    /// Whether the whole file is in memory. The result of stretch() then stays valid until the next open.
    [[nodiscard]] bool isResident() const { return !m_descriptor; }
    /// `count` bytes from `offset` on, or fewer when the file ends before; at most kResident. The result is valid until
    /// the next call, or longer where isResident().
    [[nodiscard]] std::span<const std::byte> stretch(std::int64_t offset, std::size_t count);

private:
    [[nodiscard]] std::size_t readAt(std::int64_t offset, std::size_t count);

    Descriptor m_descriptor; ///< none while the whole file is in memory
    std::int64_t m_size = 0;
    std::unique_ptr<std::byte[]> m_room; ///< holds the window when a file is open; only bytes that were read are used
    std::size_t m_roomSize = 0;
    std::span<const std::byte> m_window; ///< part of m_room, or the bytes in memory
    std::int64_t m_windowStart = 0;
};

/// What to do when a file of the wanted name exists already.
enum class Existing { Replaced, Kept };

/// Why a file could not be written.
struct FileError {
    int number = 0; ///< an `errno` value

    /// The sentence that this program prints for it.
    [[nodiscard]] const char* text() const;
};

/// Writes a file that appears whole or not at all: the content goes into a new file in the same folder, which then gets
/// the name in one step. A file that is replaced keeps its permissions, and a link is followed. The function does not
/// wait for the disk, so it is for files that can be made again after a power failure. The error is EEXIST for an
/// existing file that is to be kept, and EISDIR for a folder.
OutcomeOr<FileError> writeWholeFile(const std::string& path, std::span<const std::byte> content, Existing existing);

} // namespace sixtrace
