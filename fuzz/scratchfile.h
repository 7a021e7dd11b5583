// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace sixtrace::fuzz {

/// One file in a private folder, rewritten for each input: the readers take paths. In memory where the machine offers
/// that, so that the disk is left in peace.
class ScratchFile {
public:
    explicit ScratchFile(const QString& name)
        : m_folder((QDir(QStringLiteral("/dev/shm")).exists() ? QStringLiteral("/dev/shm") : QDir::tempPath()) +
                   QStringLiteral("/sixtrace-fuzz-XXXXXX"))
        , m_path(m_folder.filePath(name)) {}

    [[nodiscard]] const QString& path() const { return m_path; }

    /// Ends the process where the file cannot be written: nothing would be tested.
    void put(const std::uint8_t* data, std::size_t size) const {
        QFile file(m_path);
        const auto length = static_cast<qint64>(size);
        if (!file.open(QIODevice::WriteOnly) || file.write(reinterpret_cast<const char*>(data), length) != length) {
            std::abort();
        }
    }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

/// Ends the process, so that the fuzzer keeps the input, where something that always holds does not.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace sixtrace::fuzz
