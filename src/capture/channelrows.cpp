// SPDX-License-Identifier: MIT
#include "capture/channelrows.h"

#include "capture/publicm.h"
#include "platform/numbers.h"

#include <array>

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

QString probeFactorText(int probeExp) {
    // The factors of real probes need no conversion and no decimal mark.
    static const std::array known{QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("100"),
                                  QStringLiteral("1000")};
    const auto index = static_cast<std::size_t>(probeExp);
    return index < known.size() ? known[index] : generalText(probeFactor(probeExp));
}

} // namespace sixtrace
