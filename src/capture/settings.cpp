// SPDX-License-Identifier: MIT
#include "capture/settings.h"

#include "platform/files/filenames.h"
#include "platform/files/profilefile.h"
#include "platform/text/numbers.h"

namespace sixtrace {

StartSettings readStartSettings(const QString& IniFile) {
    StartSettings settings;
    for (int channel = 0; channel < kChannels; ++channel) {
        Colour& colour = settings.LineColor[channel];
        colour = iniNumber(setting::kLineColor[channel], colour, IniFile);
    }
    settings.GridColor = iniNumber(setting::kGridColor, settings.GridColor, IniFile);
    settings.stripColor = iniNumber(setting::kStripColor, settings.stripColor, IniFile);
    settings.screenColor = iniNumber(setting::kScreenColor, settings.screenColor, IniFile);
    settings.LanguageId = iniShortNumber(setting::kLanguage, settings.LanguageId, IniFile);
    settings.Graticule = iniBoolean(setting::kGraticule, settings.Graticule, IniFile);
    settings.DrawLine = iniBoolean(setting::kDrawLine, settings.DrawLine, IniFile);
    settings.DrawPoint = iniBoolean(setting::kDrawPoint, settings.DrawPoint, IniFile);
    return settings;
}

void setProgramFolder(publicM& model, const QString& path) {
    model.AppDir = withSeparator(path);
    model.IniFile = model.AppDir + QStringLiteral("vkq.ini");
}

void prepareModel(publicM& model, const StartSettings& settings) {
    model.LineColor = settings.LineColor;
    model.GridColor = settings.GridColor;
    model.BackColor = settings.screenColor;
    model.LanguageId = settings.LanguageId;
    model.fillTables();
    model.ProbeExp.fill(1);
}

void applyDefaultColours(publicM& model) {
    const StartSettings defaults;
    model.LineColor = defaults.LineColor;
    model.GridColor = defaults.GridColor;
    model.BackColor = defaults.screenColor;
}

QString iniText(const Setting& setting, const QString& fallback, const QString& IniFile) {
    return GetIniString(QString::fromUtf16(setting.section), QString::fromUtf16(setting.key), fallback, IniFile);
}

std::int32_t iniNumber(const Setting& setting, std::int32_t fallback, const QString& IniFile) {
    return toInt32(Val(iniText(setting, QString::number(fallback), IniFile))).value_or(fallback);
}

std::int16_t iniShortNumber(const Setting& setting, std::int16_t fallback, const QString& IniFile) {
    return toInt16(Val(iniText(setting, QString::number(fallback), IniFile))).value_or(fallback);
}

bool iniBoolean(const Setting& setting, bool fallback, const QString& IniFile) {
    return toBoolean(iniText(setting, booleanText(fallback), IniFile)).value_or(fallback);
}

void writeIni(const Setting& setting, const QString& value, const QString& IniFile) {
    const Outcome written =
        writeProfile(QString::fromUtf16(setting.section), QString::fromUtf16(setting.key), value, IniFile);
    static_cast<void>(written.ok());
}

} // namespace sixtrace
