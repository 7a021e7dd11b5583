// SPDX-License-Identifier: MIT
#include "capture/settings.h"

#include "platform/files/profilefile.h"
#include "platform/text/numbers.h"

namespace sixtrace {

std::int32_t iniNumber(const QString& section, const QString& key, std::int32_t fallback, const QString& file) {
    return toInt32(Val(GetIniString(section, key, QString::number(fallback), file))).value_or(fallback);
}

std::int16_t iniShortNumber(const QString& section, const QString& key, std::int16_t fallback, const QString& file) {
    return toInt16(Val(GetIniString(section, key, QString::number(fallback), file))).value_or(fallback);
}

bool iniBoolean(const QString& section, const QString& key, bool fallback, const QString& file) {
    return toBoolean(GetIniString(section, key, booleanText(fallback), file)).value_or(fallback);
}

void writeIni(const QString& section, const QString& key, const QString& value, const QString& file) {
    const Outcome written = writeProfile(section, key, value, file);
    static_cast<void>(written.ok());
}

} // namespace sixtrace
