// SPDX-License-Identifier: MIT
// A settings file of any bytes: it can be read, and a key that is written into it is read back.
#include "platform/profilefile.h"
#include "scratchfile.h"

using namespace sixtrace;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::ScratchFile file(QStringLiteral("some.ini"));
    file.put(data, size);

    const QString section = QStringLiteral("LineColor");
    const QString key = QStringLiteral("1");
    const QString fallback = QStringLiteral("fallback");
    const QString before = readProfile(section, key, fallback, file.path());
    fuzz::require(before == fallback || before.size() <= kProfileValueLimit);
    const QString other = readProfile(QStringLiteral("language"), QStringLiteral("LAN"), fallback, file.path());

    // The value is a stretch of the input, as far as it survives quoting and blanks.
    const auto length = static_cast<qsizetype>(size % 40);
    const QString foreign = QString::fromUtf8(reinterpret_cast<const char*>(data), length);
    const Outcome ignored = writeProfile(QStringLiteral("Scratch"), QStringLiteral("k"), foreign, file.path());
    fuzz::require(ignored.ok());

    const QString value = QStringLiteral("16711808");
    fuzz::require(writeProfile(section, key, value, file.path()).ok());
    fuzz::require(readProfile(section, key, fallback, file.path()) == value);
    // What was not written is as it was.
    fuzz::require(readProfile(QStringLiteral("language"), QStringLiteral("LAN"), fallback, file.path()) == other);
    return 0;
}
