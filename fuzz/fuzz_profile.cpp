// SPDX-License-Identifier: MIT
// Reads and writes keys of a profile text of any bytes.
#include "platform/text/profiletext.h"
#include "require.h"

#include <array>
#include <cstdint>

namespace {

using namespace sixtrace;

/// A value to write, and the expected result of reading it.
struct Setting {
    QString value;
    QString readBack;
};

const std::array<Setting, 6>& settings() {
    static const std::array<Setting, 6> all{{
        {QStringLiteral("1"), QStringLiteral("1")},
        {QStringLiteral("a=b ; c"), QStringLiteral("a=b ; c")},
        {QStringLiteral("1\n[Common]\r\nLanguage=2"), QStringLiteral("1 [Common]  Language=2")},
        {QStringLiteral("\"[\u4E2D]\""), QStringLiteral("[\u4E2D]")},
        {QStringLiteral(" "), QStringLiteral("none")},
        {QString(130, u'x'), QString(kProfileValueLimit, u'x')},
    }};
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QString section = QStringLiteral("Common");
    static const QString key = QStringLiteral("Language");
    static const QString otherSection = QStringLiteral("LineColor");
    static const QString otherKey = QStringLiteral("0");
    static const QString none = QStringLiteral("none");
    const Setting& setting = settings().at(size % settings().size());
    const auto content = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));

    const ProfileText before(content);
    const QString other = before.value(otherSection, otherKey, none);
    require(other.size() <= kProfileValueLimit && other.isValidUtf16());

    // Reading gives the written value, and another key keeps its value.
    const QByteArray written = withProfileKey(content, section, key, setting.value);
    const ProfileText after(written);
    require(after.value(section, key, none) == setting.readBack);
    require(after.value(otherSection, otherKey, none) == other);
    // Nothing is lost: a line is replaced, or one or two are added.
    require(written.count('\n') >= content.count('\n') && written.count('\n') <= content.count('\n') + 3);
    // Writing the same value again changes nothing.
    require(withProfileKey(written, section, key, setting.value) == written);
    return 0;
}
