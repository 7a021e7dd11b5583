// SPDX-License-Identifier: MIT
#include "capture/mdllan.h"

#include "platform/files/profilefile.h"

namespace sixtrace {

void SetLanFile(publicM& model, int id) {
    model.LanFile = model.AppDir + (id == 0 ? QStringLiteral("ChineseS.Lan") : QStringLiteral("English.Lan"));
}

QString GetLanString(const publicM& model, const QString& section, const QString& key, const QString& fallback) {
    return readProfile(section, key, fallback, model.LanFile);
}

} // namespace sixtrace
