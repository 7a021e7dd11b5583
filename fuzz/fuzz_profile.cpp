// SPDX-License-Identifier: MIT
// Reading and writing keys in a profile file of any bytes.
#include "platform/files/profilefile.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

using namespace sixtrace;

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("vkq.ini"));
    {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    const QString section = QStringLiteral("Common");
    const QString key = QStringLiteral("Language");
    const QString other = readProfile(QStringLiteral("LineColor"), QStringLiteral("0"), QStringLiteral("255"), path);
    require(other.size() <= kProfileValueLimit);
    static_cast<void>(readProfile(section, key, QStringLiteral("0"), path));

    // What is written is read back, and another key keeps its value.
    require(writeProfile(section, key, QStringLiteral("1"), path).ok());
    require(readProfile(section, key, QString(), path) == QStringLiteral("1"));
    require(readProfile(QStringLiteral("LineColor"), QStringLiteral("0"), QStringLiteral("255"), path) == other);
    return 0;
}
