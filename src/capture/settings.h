// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

#include <cstdint>

namespace sixtrace {

/// A key of the settings file, which is "vkq.ini" in the program folder. Every key is written when the user changes
/// what it stands for; nothing is written at the end of the program.
struct Setting {
    const char16_t* section;
    const char16_t* key;
};

/// All keys of the settings file.
namespace setting {
inline constexpr PerChannel<Setting> kLineColor{Setting{u"LineColor", u"0"}, Setting{u"LineColor", u"1"},
                                                Setting{u"LineColor", u"2"}, Setting{u"LineColor", u"3"},
                                                Setting{u"LineColor", u"4"}, Setting{u"LineColor", u"5"}};
inline constexpr Setting kGridColor{u"GridColor", u"Grid"};
inline constexpr Setting kStripColor{u"Pic3Color", u"back"};
inline constexpr Setting kScreenColor{u"Pic2Color", u"BackColor"};
inline constexpr Setting kLanguage{u"Common", u"Language"};
inline constexpr Setting kGraticule{u"Common", u"Graticule"};
inline constexpr Setting kDrawLine{u"Common", u"DrawLine"};
inline constexpr Setting kDrawPoint{u"Common", u"DrawPoint"};
inline constexpr Setting kComPort{u"Common", u"ComPort"};
inline constexpr Setting kMSCommSettings{u"Common", u"MSCommSettings"};
} // namespace setting

/// The settings that the program reads at its start. The values here are the defaults of the keys. The two settings of
/// the serial port are read at each use.
struct StartSettings {
    PerChannel<Colour> LineColor{255, 65535, 16711935, 16711808, 4227072, 33023};
    Colour GridColor = 16776960;
    Colour stripColor = 16776960; ///< background of the marker strip
    Colour screenColor = 4194368; ///< background of the screen
    std::int16_t LanguageId = 0;
    bool Graticule = true;
    bool DrawLine = true;
    bool DrawPoint = false;
};

[[nodiscard]] StartSettings readStartSettings(const QString& IniFile);

/// Sets `AppDir` and `IniFile` for a program folder, whose name may or may not end in a separator.
void setProgramFolder(publicM& model, const QString& path);

/// Gives a model the tables, colours, language and probe exponents of a program that has just started.
void prepareModel(publicM& model, const StartSettings& settings);

/// Gives a model the colours of a program without a settings file.
void applyDefaultColours(publicM& model);

/// A text of the settings, or `fallback` where the key is missing or empty.
[[nodiscard]] QString iniText(const Setting& setting, const QString& fallback, const QString& IniFile);
/// A number of the settings, rounded to the nearest integer. A text that is not a number gives 0. A key that is missing
/// or empty, or a number that is too large, gives `fallback`.
[[nodiscard]] std::int32_t iniNumber(const Setting& setting, std::int32_t fallback, const QString& IniFile);
[[nodiscard]] std::int16_t iniShortNumber(const Setting& setting, std::int16_t fallback, const QString& IniFile);
/// A truth value of the settings: "True", "False" or a number. Anything else gives `fallback`.
[[nodiscard]] bool iniBoolean(const Setting& setting, bool fallback, const QString& IniFile);

/// Writes one key. In a folder that cannot be written nothing happens: what the user has chosen then lasts until the
/// end of the program.
void writeIni(const Setting& setting, const QString& value, const QString& IniFile);

} // namespace sixtrace
