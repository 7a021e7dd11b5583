// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>

namespace sixtrace {

/// Blanks between volt text and "/ " in a row of the channel list. The writers differ by one blank: start-up and the
/// time list write eight, all others seven.
enum class RowGap { Seven = 7, Eight = 8 };

/// A row of the channel list: label (the first three characters of `label`), ten blanks, time text, ten blanks, volt
/// text, the gap, "/ " and the factor.
[[nodiscard]] QString channelRow(QStringView label, const QString& timeText, const QString& voltText, RowGap gap,
                                 const QString& factor);

/// Text of a probe factor as rows show it: 10 to the power of `probeExp`, "1", "10", "100" ...
[[nodiscard]] QString probeFactorText(int probeExp);

} // namespace sixtrace
