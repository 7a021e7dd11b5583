// SPDX-License-Identifier: MIT
#include "platform/ports/ttlink.h"

#include "platform/files/filenames.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace sixtrace {

namespace {

#ifdef Q_OS_WIN
constexpr const char* kLibraryFile = "ttdll.dll";
#else
constexpr const char* kLibraryFile = "libttdll.so";
#endif

constexpr std::int32_t kLongestDescription = 65536;

template<typename Function>
void resolve(QLibrary& library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(library.resolve(name));
}

} // namespace

QString ttLibraryFolder(const QString& appDir) {
    if (QFileInfo::exists(appDir + QLatin1String(kLibraryFile))) {
        return appDir;
    }
    return withSeparator(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()));
}

TtLibrary::TtLibrary(const QString& folder)
    : TtLibrary([folder] { return folder; }) {}

TtLibrary::TtLibrary(std::function<QString()> folder)
    : m_folder(std::move(folder)) {}

TtLibrary::~TtLibrary() = default; // the library stays loaded: it may have threads that still run

QString TtLibrary::fileName() const {
    return m_folder() + QLatin1String(kLibraryFile);
}

bool TtLibrary::load() {
    if (m_get != nullptr) {
        return true;
    }
    m_library.setFileName(fileName());
    if (!m_library.load()) {
        return false;
    }
    resolve(m_library, "InitializeTt", m_initialize);
    resolve(m_library, "closeTt", m_close);
    resolve(m_library, "WriteThread", m_write);
    resolve(m_library, "ReadThread", m_read);
    resolve(m_library, "senddatatoTt", m_send);
    resolve(m_library, "getTtData", m_get);
    resolve(m_library, "hasMoreTt", m_more);
    resolve(m_library, "describeTt", m_describe);
    if (m_initialize == nullptr || m_close == nullptr || m_write == nullptr || m_read == nullptr || m_send == nullptr) {
        m_get = nullptr;
    }
    return m_get != nullptr;
}

std::int32_t TtLibrary::InitializeTt(std::int32_t mode) {
    return load() ? m_initialize(mode) : 0;
}

void TtLibrary::closeTt(std::int32_t mode) {
    if (load()) {
        static_cast<void>(m_close(mode));
    }
}

// The library also stores its result at the third argument. Only the result itself counts here.

std::int32_t TtLibrary::WriteThread(const char* bytes, std::int32_t count) {
    std::int32_t done = 0;
    return load() ? m_write(bytes, count, &done) : 0;
}

std::int32_t TtLibrary::ReadThread(char* buffer, std::int32_t count) {
    std::int32_t done = 0;
    return load() ? m_read(buffer, count, &done) : 0;
}

std::int32_t TtLibrary::senddatatoTt(const char* bytes, std::int32_t count) {
    std::int32_t done = 0;
    return load() ? m_send(bytes, count, &done) : 0;
}

std::int32_t TtLibrary::getTtData(char* buffer, std::int32_t count) {
    std::int32_t done = 0;
    return load() ? m_get(buffer, count, &done) : 0;
}

bool TtLibrary::hasMore() {
    return load() && m_more != nullptr && m_more() == 1;
}

std::optional<QString> TtLibrary::describe() {
    if (!load() || m_describe == nullptr) {
        return std::nullopt;
    }
    QByteArray text(kLongestDescription, '\0');
    const std::int32_t size = m_describe(text.data(), kLongestDescription);
    return QString::fromUtf8(text.constData(), std::clamp(size, 0, kLongestDescription));
}

} // namespace sixtrace
