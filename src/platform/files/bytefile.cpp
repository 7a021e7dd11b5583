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

namespace sixtrace {

namespace {

/// What an open that failed says about the place.
FileRefusal refusalOf(int error) {
    return error == ENOENT || error == ENOTDIR ? FileRefusal::Missing : FileRefusal::Unreadable;
}

/// The file that a link leads to, so that replacing it keeps the link; the path itself where nothing is there yet.
std::string followed(const std::string& path) {
    char* const real = ::realpath(path.c_str(), nullptr);
    std::string target = real != nullptr ? std::string(real) : path;
    std::free(real); // NOLINT(cppcoreguidelines-no-malloc): realpath allocates so
    return target;
}

bool writeAll(int descriptor, std::span<const std::byte> content) {
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        content = content.subspan(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return true;
}

/// Makes a file of a name that nobody has, `path` with six letters more; its descriptor, or -1.
int openBeside(std::string& path) {
    static constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    constexpr mode_t kReadWrite = 0666;
    constexpr int kTries = 100;
    const std::size_t length = path.size();
    for (int i = 0; i < kTries; ++i) {
        std::array<unsigned char, 6> random{};
        if (::getentropy(random.data(), random.size()) != 0) {
            return -1;
        }
        path.resize(length);
        path += '.';
        for (const unsigned char byte : random) {
            path += kLetters[byte % kLetters.size()];
        }
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadWrite);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

} // namespace

FileRefusal ByteFile::open(const std::string& path) {
    close();
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return refusalOf(errno);
    }
    m_descriptor = descriptor;
    struct stat about {};
    if (::fstat(descriptor, &about) != 0 || !S_ISREG(about.st_mode)) {
        const bool folder = S_ISDIR(about.st_mode);
        close();
        return folder ? FileRefusal::Folder : FileRefusal::NoOrdinaryFile;
    }
    m_size = about.st_size;
    const bool fits = m_size <= static_cast<std::int64_t>(kResident);
    const std::size_t room = fits ? static_cast<std::size_t>(m_size) : kResident;
    if (m_roomSize < room) {
        m_room = std::make_unique_for_overwrite<std::byte[]>(room);
        m_roomSize = room;
    }
    if (!fits) {
        return FileRefusal::None;
    }
    const std::size_t held = readAt(0, static_cast<std::size_t>(m_size));
    if (held == 0 && m_size > 0) {
        close();
        return FileRefusal::Unreadable;
    }
    m_window = {m_room.get(), held};
    m_size = static_cast<std::int64_t>(held); // it may have become shorter meanwhile
    ::close(m_descriptor);
    m_descriptor = -1;
    return FileRefusal::None;
}

void ByteFile::openBytes(std::span<const std::byte> bytes) {
    close();
    m_window = bytes;
    m_size = static_cast<std::int64_t>(bytes.size());
}

void ByteFile::close() {
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    m_size = 0;
    m_window = {};
    m_windowStart = 0;
}

std::size_t ByteFile::readAt(std::int64_t offset, std::size_t count) {
    std::size_t held = 0;
    while (held < count) {
        const ssize_t got = ::pread(m_descriptor, m_room.get() + held, count - held, offset + static_cast<off_t>(held));
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
    count = static_cast<std::size_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(std::min(count, kResident)), m_size - offset));
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

int writeWholeFile(const std::string& path, std::span<const std::byte> content, Existing existing) {
    const std::string target = followed(path);
    struct stat about {};
    const bool present = ::stat(target.c_str(), &about) == 0;
    if (present && existing == Existing::Kept) {
        return EEXIST;
    }
    if (present && !S_ISREG(about.st_mode)) {
        return S_ISDIR(about.st_mode) ? EISDIR : EINVAL;
    }
    if (present && ::access(target.c_str(), W_OK) != 0) {
        return errno;
    }
    std::string fresh = target;
    const int descriptor = openBeside(fresh);
    if (descriptor < 0) {
        return errno;
    }
    constexpr mode_t kPermissions = 07777;
    bool done = writeAll(descriptor, content);
    // The file is not synchronised with the disk. If this process dies, the old file or the new one is whole; what a
    // power failure takes can be made again from its capture. Over thousands of files the wait is several times the
    // work.
    done = done && (!present || ::fchmod(descriptor, about.st_mode & kPermissions) == 0);
    int error = done ? 0 : errno;
    if (::close(descriptor) != 0 && done) {
        error = errno;
        done = false;
    }
    if (done) {
        // A link to the new file refuses a name that somebody has taken meanwhile; a rename would replace it.
        const int named = existing == Existing::Kept ? ::link(fresh.c_str(), target.c_str())
                                                     : ::rename(fresh.c_str(), target.c_str());
        error = named == 0 ? 0 : errno;
        done = named == 0 && existing == Existing::Replaced;
    }
    if (!done) {
        ::unlink(fresh.c_str());
    }
    return error;
}

const char* fileErrorText(int error) {
    switch (error) {
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
