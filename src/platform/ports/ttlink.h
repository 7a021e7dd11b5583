// SPDX-License-Identifier: MIT
#pragma once

#include "ttdll/ttdll.h"

#include <QLibrary>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace sixtrace {

/// The link to the instrument over USB: the six functions of the transfer library, with its own numbers. The calls
/// block.
class TtLink {
public:
    TtLink() = default;
    TtLink(const TtLink&) = delete;
    TtLink& operator=(const TtLink&) = delete;
    virtual ~TtLink() = default;

    /// Opens the link. Mode 0 is for normal use; 1 recovers a link after a transfer that was cut off. Returns 0 when it
    /// failed.
    virtual std::int32_t InitializeTt(std::int32_t mode) = 0;
    /// Closes the link. Mode 0 is for the end of a good transfer and for a cancel, 1 for a failure and for a recovery.
    virtual void closeTt(std::int32_t mode) = 0;
    /// Sends `count` bytes and returns how many were sent.
    virtual std::int32_t WriteThread(const char* bytes, std::int32_t count) = 0;
    /// Reads exactly `count` bytes, which may be 0, and returns how many have come.
    virtual std::int32_t ReadThread(char* buffer, std::int32_t count) = 0;
    /// The same as the two above, for a test bench.
    virtual std::int32_t senddatatoTt(const char* bytes, std::int32_t count) = 0;
    virtual std::int32_t getTtData(char* buffer, std::int32_t count) = 0;
    /// Whether the instrument has sent more than was read. False also when the library cannot tell, since none of the
    /// six functions does.
    [[nodiscard]] virtual bool hasMore() { return false; }
};

/// The folder of the transfer library, with a separator at its end: the program folder `appDir`, or the executable's
/// folder when there is no library in the program folder, as after an install for all users.
[[nodiscard]] QString ttLibraryFolder(const QString& appDir);

/// The transfer library "ttdll" of a folder, loaded when it is first needed. When it is absent or lacks one of the six
/// functions, every call fails.
class TtLibrary final : public TtLink {
public:
    /// Folders end in a separator. The function is asked for the folder when the library is first needed.
    explicit TtLibrary(const QString& folder);
    explicit TtLibrary(std::function<QString()> folder);
    ~TtLibrary() override;

    std::int32_t InitializeTt(std::int32_t mode) override;
    void closeTt(std::int32_t mode) override;
    std::int32_t WriteThread(const char* bytes, std::int32_t count) override;
    std::int32_t ReadThread(char* buffer, std::int32_t count) override;
    std::int32_t senddatatoTt(const char* bytes, std::int32_t count) override;
    std::int32_t getTtData(char* buffer, std::int32_t count) override;

    [[nodiscard]] bool hasMore() override;
    /// Whether the library is there and has the six functions.
    [[nodiscard]] bool isUsable() { return load(); }
    /// What the library tells about its settings and the instruments that it finds, see describeTt in ttdll.h. Nothing
    /// when the library has no such function.
    [[nodiscard]] std::optional<QString> describe();

    /// The path of the library: "libttdll.so" or "ttdll.dll" of the folder.
    [[nodiscard]] QString fileName() const;

private:
    [[nodiscard]] bool load();

    std::function<QString()> m_folder;
    QLibrary m_library;
    decltype(&::InitializeTt) m_initialize = nullptr;
    decltype(&::closeTt) m_close = nullptr;
    decltype(&::WriteThread) m_write = nullptr;
    decltype(&::ReadThread) m_read = nullptr;
    decltype(&::senddatatoTt) m_send = nullptr;
    decltype(&::getTtData) m_get = nullptr;
    decltype(&::hasMoreTt) m_more = nullptr;
    decltype(&::describeTt) m_describe = nullptr;
};

} // namespace sixtrace
