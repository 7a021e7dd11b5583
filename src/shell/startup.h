// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

namespace sixtrace {

/// What the settings file tells the program at its start, with the default of every key that it leaves out.
struct StartSettings {
    PerChannel<Colour> LineColor{};
    Colour GridColor = 0;
    Colour stripColor = 0;  ///< ground of the marker strip
    Colour screenColor = 0; ///< ground of the screen
    std::int16_t LanguageId = 0;
    bool Graticule = true;
    bool DrawLine = true;
    bool DrawPoint = false;
};

[[nodiscard]] StartSettings readStartSettings(const QString& IniFile);

/// AppDir and IniFile for a program folder that may or may not end in a separator.
void setProgramFolder(publicM& model, const QString& path);

/// Tables, colours, language and probe exponents of a program that has just started.
void prepareModel(publicM& model, const StartSettings& settings);

} // namespace sixtrace
