// SPDX-License-Identifier: MIT
#include "platform/files/bytefile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace sixtrace {

namespace {

/// The file that a link leads to, so that replacing it keeps the link; the path itself when nothing is there yet.
std::string followed(const std::string& path) {
    char* const real = ::realpath(path.c_str(), nullptr);
    std::string target = real != nullptr ? std::string(real) : path;
    std::free(real); // NOLINT(cppcoreguidelines-no-malloc): realpath allocates so
    return target;
}

bool writeAll(const Descriptor& file, std::span<const std::byte> content) {
    while (!content.empty()) {
        const ssize_t written = ::write(file.number(), content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        if (written > 0) {
            content = content.subspan(static_cast<std::size_t>(written));
        }
    }
    return true;
}

/// Makes a file of a new name: `path`, to which a point and six letters are added. None, with the reason in `errno`,
/// when it cannot be made.
Descriptor openBeside(std::string& path) {
    static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    constexpr mode_t kReadWrite = 0666;
    constexpr int kTries = 100;
    const std::size_t length = path.size();
    for (int i = 0; i < kTries; ++i) {
        std::array<unsigned char, 6> random{};
        if (::getentropy(random.data(), random.size()) != 0) {
            return {};
        }
        path.resize(length);
        path += '.';
        for (const unsigned char byte : random) {
            path += kLetters[byte % kLetters.size()];
        }
        Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadWrite));
        if (file || errno != EEXIST) {
            return file;
        }
    }
    return {};
}

/// Gives the file `fresh` the name `target` in one step.
bool giveName(const std::string& fresh, const std::string& target, Existing existing) {
    if (existing == Existing::Replaced) {
        return ::rename(fresh.c_str(), target.c_str()) == 0;
    }
    // A link fails when somebody has taken the name meanwhile; a rename would replace that file.
    if (::link(fresh.c_str(), target.c_str()) != 0) {
        return false;
    }
    ::unlink(fresh.c_str());
    return true;
}

} // namespace

OutcomeOr<FileRefusal> ByteFile::open(const std::string& path) {
    close();
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        return errno == ENOENT || errno == ENOTDIR ? FileRefusal::Missing : FileRefusal::Unreadable;
    }
    struct stat about {};
    if (::fstat(file.number(), &about) != 0 || !S_ISREG(about.st_mode)) {
        return S_ISDIR(about.st_mode) ? FileRefusal::Folder : FileRefusal::NoOrdinaryFile;
    }
    m_descriptor = std::move(file);
    m_size = about.st_size;
    const bool fits = m_size <= static_cast<std::int64_t>(kResident);
    const std::size_t room = fits ? static_cast<std::size_t>(m_size) : kResident;
    if (m_roomSize < room) {
        m_room = std::make_unique_for_overwrite<std::byte[]>(room);
        m_roomSize = room;
    }
    if (!fits) {
        return kSuccess;
    }
    const std::size_t held = readAt(0, static_cast<std::size_t>(m_size));
    if (held == 0 && m_size > 0) {
        close();
        return FileRefusal::Unreadable;
    }
    m_window = {m_room.get(), held};
    m_size = static_cast<std::int64_t>(held); // it may have become shorter meanwhile
    m_descriptor.close();
    return kSuccess;
}

void ByteFile::openBytes(std::span<const std::byte> bytes) {
    close();
    m_window = bytes;
    m_size = static_cast<std::int64_t>(bytes.size());
}

void ByteFile::close() {
    m_descriptor.close();
    m_size = 0;
    m_window = {};
    m_windowStart = 0;
}

std::size_t ByteFile::readAt(std::int64_t offset, std::size_t count) {
    std::size_t held = 0;
    while (held < count) {
        const ssize_t got =
            ::pread(m_descriptor.number(), m_room.get() + held, count - held, offset + static_cast<off_t>(held));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        held += static_cast<std::size_t>(got);
    }
    return held;
}

std::span<const std::byte> ByteFile::stretch(std::int64_t offset, std::size_t count) {
    if (offset < 0 || offset >= m_size) {
        return {};
    }
    count = std::min({count, kResident, static_cast<std::size_t>(m_size - offset)});
    const auto inWindow = [&] {
        return offset >= m_windowStart &&
               offset - m_windowStart + static_cast<std::int64_t>(count) <= static_cast<std::int64_t>(m_window.size());
    };
    if (!inWindow()) {
        if (isResident()) {
            return {};
        }
        m_windowStart = offset;
        m_window = {m_room.get(), readAt(offset, kResident)};
        count = std::min(count, m_window.size());
    }
    return m_window.subspan(static_cast<std::size_t>(offset - m_windowStart), count);
}

OutcomeOr<FileError> writeWholeFile(const std::string& path, std::span<const std::byte> content, Existing existing) {
    const std::string target = followed(path);
    struct stat about {};
    const bool present = ::stat(target.c_str(), &about) == 0;
    if (present && existing == Existing::Kept) {
        return FileError{EEXIST};
    }
    if (present && !S_ISREG(about.st_mode)) {
        return FileError{S_ISDIR(about.st_mode) ? EISDIR : EINVAL};
    }
    if (present && ::access(target.c_str(), W_OK) != 0) {
        return FileError{errno};
    }
    std::string fresh = target;
    Descriptor file = openBeside(fresh);
    if (!file) {
        return FileError{errno};
    }
    constexpr mode_t kPermissions = 07777;
    // The file is not synchronised with the disk. If this process dies, the old file or the new one is whole; what a
    // power failure takes can be made again from its capture. Waiting for the disk would take several times as long as
    // the work when there are thousands of files.
    if (writeAll(file, content) && (!present || ::fchmod(file.number(), about.st_mode & kPermissions) == 0) &&
        file.close() && giveName(fresh, target, existing)) {
        return kSuccess;
    }
    const FileError error{errno};
    ::unlink(fresh.c_str());
    return error;
}

const char* FileError::text() const {
    switch (number) {
    case ENOENT:
    case ENOTDIR:
        return "Path not found";
    case EACCES:
    case EPERM:
    case EROFS:
        return "Permission denied";
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return "Disk full";
    case EEXIST:
        return "File already exists";
    default:
        return "Path/File access error";
    }
}

} // namespace sixtrace
