// SPDX-License-Identifier: MIT
#include "capture/channelrows.h"

#include "capture/publicm.h"
#include "platform/numbers.h"

namespace sixtrace {

namespace {
constexpr int kColumnGap = 10;
constexpr int kLabelLength = 3;
} // namespace

QString channelRow(QStringView label, const QString& timeText, const QString& voltText, RowGap gap,
                   const QString& factor) {
    const QString columnGap(kColumnGap, u' ');
    return label.left(kLabelLength) + columnGap + timeText + columnGap + voltText +
           QString(static_cast<int>(gap), u' ') + u"/ " + factor;
}

QString probeFactorText(int probeExp) { return generalText(probeFactor(probeExp)); }

} // namespace sixtrace
