// SPDX-License-Identifier: MIT
#pragma once

#include "ttdll/ttdll.h"

#include <QLibrary>
#include <QString>

#include <cstdint>
#include <optional>

namespace sixtrace {

/// The link to the instrument over USB, as the six functions of the transfer library give it. Numbers are the
/// library's own; the calls block.
class TtLink {
public:
    TtLink() = default;
    TtLink(const TtLink&) = delete;
    TtLink& operator=(const TtLink&) = delete;
    virtual ~TtLink() = default;

    /// Opens the link; 1 recovers one that was cut off. 0 when it failed.
    virtual std::int32_t InitializeTt(std::int32_t mode) = 0;
    /// Closes the link: 0 after a good transfer or a cancel, 1 after a failure and in recovery.
    virtual void closeTt(std::int32_t mode) = 0;
    /// Sends `count` bytes; the count that went out.
    virtual std::int32_t WriteThread(const char* bytes, std::int32_t count) = 0;
    /// Reads exactly `count` bytes, which may be 0; the count that came in.
    virtual std::int32_t ReadThread(char* buffer, std::int32_t count) = 0;
    /// The same service for bench purposes.
    virtual std::int32_t senddatatoTt(const char* bytes, std::int32_t count) = 0;
    virtual std::int32_t getTtData(char* buffer, std::int32_t count) = 0;
    /// Whether the instrument has sent more than was read, as far as the library can tell: of the six functions none
    /// does.
    [[nodiscard]] virtual bool hasMore() { return false; }
};

/// Where the transfer library lies: the program folder (which ends in a separator), or the executable's own where the
/// program folder has none, as on an install for all users.
[[nodiscard]] QString ttLibraryFolder(const QString& appDir);

/// The transfer library "ttdll" of a folder, loaded when it is first needed. Where it is absent, or lacks a function,
/// every call counts as failed.
class TtLibrary final : public TtLink {
public:
    explicit TtLibrary(const QString& folder);
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
    /// What the library tells of its settings and of the instruments that it finds, see describeTt in ttdll.h; nothing
    /// from a library that is not ours.
    [[nodiscard]] std::optional<QString> describe();

    /// The file that is loaded: "libttdll.so" or "ttdll.dll" of the folder.
    [[nodiscard]] QString fileName() const { return m_library.fileName(); }

private:
    [[nodiscard]] bool load();

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
