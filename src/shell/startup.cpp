// SPDX-License-Identifier: MIT
#include "shell/startup.h"

#include "capture/settings.h"
#include "platform/files/programfolder.h"
#include "view/defaults.h"

namespace sixtrace {

namespace {
const QString kCommon = QStringLiteral("Common");
} // namespace

StartSettings readStartSettings(const QString& IniFile) {
    StartSettings settings;
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        settings.LineColor[c] =
            iniNumber(QStringLiteral("LineColor"), QString::number(channel), defaults::kLineColor[c], IniFile);
    }
    settings.GridColor = iniNumber(QStringLiteral("GridColor"), QStringLiteral("Grid"), defaults::kGridColor, IniFile);
    settings.stripColor =
        iniNumber(QStringLiteral("Pic3Color"), QStringLiteral("back"), defaults::kStripColor, IniFile);
    settings.screenColor =
        iniNumber(QStringLiteral("Pic2Color"), QStringLiteral("BackColor"), defaults::kScreenColor, IniFile);
    settings.LanguageId = iniShortNumber(kCommon, QStringLiteral("Language"), 0, IniFile);
    settings.Graticule = iniBoolean(kCommon, QStringLiteral("Graticule"), true, IniFile);
    settings.DrawLine = iniBoolean(kCommon, QStringLiteral("DrawLine"), true, IniFile);
    settings.DrawPoint = iniBoolean(kCommon, QStringLiteral("DrawPoint"), false, IniFile);
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

} // namespace sixtrace
