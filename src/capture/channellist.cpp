// SPDX-License-Identifier: MIT
#include "capture/channellist.h"

#include "capture/zeromarkers.h"
#include "platform/text/numbers.h"

#include <algorithm>

namespace sixtrace {

namespace {

constexpr int kColumnGap = 10; // blanks
constexpr int kLabelLength = 3;

constexpr QLatin1StringView blanks(int count) {
    return {"          ", count};
}

/// Chooses an entry by the text that it has in `row`. Several entries may have the same text; the first is chosen.
template<std::size_t Rows>
void chooseEntry(const NumberedArray<QString, Rows>& list, int& chosen, int row) {
    if (list.has(row)) {
        const auto reads = [&](const QString& entry) { return std::ranges::equal(entry, list[row]); };
        const auto first = std::ranges::find_if(list, reads);
        chosen = static_cast<int>(first - list.begin());
    }
}

/// Does what a click does, apart from titles, readouts and measurements.
void selectChannel(const Scope& scope, int row) {
    const publicM& model = scope.model;
    ScreenState& screen = scope.screen;
    standOutMarker(scope, row);
    FillVoltList(screen, model.ProbeExp[row]);
    screen.CurChannel = static_cast<std::int16_t>(row);
    if (model.ChannelPresent[row] == 1) {
        takeBarRange(scope, row);
        placeBarAtMarker(screen, row);
    }
    chooseEntry(screen.timeList, screen.timeRow, model.TimeIndexView[row]);
    chooseEntry(screen.voltList, screen.voltRow, model.VoltIndexView[row]);
}

} // namespace

UnseenScreen::UnseenScreen(publicM& model)
    : m_model(model) {
    beginStart(scope());
    endStart(scope());
}

void beginStart(const Scope& scope) {
    const publicM& model = scope.model;
    ScreenState& screen = scope.screen;
    screen.timeList = model.TimeBaseText;
    screen.voltList = model.VoltText;
    // A list that is filled has chosen nothing yet.
    screen.timeRow = -1;
    screen.voltRow = -1;
    screen.bar = {2 * model.VoltRange[0], model.VoltRange[0]};
    for (int channel = 0; channel < kChannels; ++channel) {
        // Before the first load the row shows the exponent itself, not the factor that it stands for.
        screen.rows[channel] = channelRow(channelLabel(channel), model.TimeBaseText[0], model.VoltText[0],
                                          RowGap::Eight, QString::number(model.ProbeExp[channel]));
    }
    for (int channel = kChannels - 1; channel >= 0; --channel) {
        setTick(scope, channel, false);
        screen.markers[channel].shown = false;
    }
}

void endStart(const Scope& scope) {
    scope.duties.frameDue();
    List1_Click(scope);
    scope.screen.CurChannel = -1;
    scope.screen.ScrollLive = true;
}

QString channelRow(QStringView label, const QString& timeText, const QString& voltText, RowGap gap,
                   const QString& factor) {
    const auto columnGap = blanks(kColumnGap);
    return label.left(kLabelLength) + columnGap + timeText + columnGap + voltText + blanks(static_cast<int>(gap)) +
           u"/ " + factor;
}

QString probeFactorText(int probeExp) {
    // The factors of real probes need no conversion and no decimal mark.
    static const std::array known{QStringLiteral("1"), QStringLiteral("10"), QStringLiteral("100"),
                                  QStringLiteral("1000")};
    const auto index = static_cast<std::size_t>(probeExp);
    return index < known.size() ? known[index] : generalText(probeFactor(probeExp));
}

void FillVoltList(ScreenState& screen, int probeExp) {
    const auto* texts = voltListTexts(probeExp);
    if (texts == nullptr) {
        return;
    }
    for (int row = 0; row < kVoltRows; ++row) {
        // Most clicks find the list as it is. To see that is cheaper than to copy a shared text once more.
        if (!screen.voltList[row].isSharedWith((*texts)[row])) {
            screen.voltList[row] = (*texts)[row];
        }
    }
}

void List1_Click(const Scope& scope) {
    ScreenState& screen = scope.screen;
    const int row = screen.selectedRow;
    if (!screen.rows.has(row)) {
        return;
    }
    selectChannel(scope, row);
    screen.titled = {screen.rows[row], languageOf(scope.model)};
    scope.duties.readoutsDue();
    screen.measured = signalFigures(scope.model, row);
}

void List1_ItemCheck(const Scope& scope, int Item) {
    scope.screen.markers[Item].shown = scope.screen.ticks[Item];
    // During timed acquisition the next capture redraws anyway.
    if (!scope.model.AutoRun) {
        scope.duties.frameDue();
    }
}

void selectRow(const Scope& scope, int row) {
    if (row < -1 || row >= kChannels) {
        return;
    }
    scope.screen.selectedRow = row;
    List1_Click(scope);
}

void setTick(const Scope& scope, int channel, bool ticked) {
    scope.screen.ticks[channel] = ticked;
    scope.screen.selectedRow = channel;
    List1_ItemCheck(scope, channel);
    List1_Click(scope);
}

void setTickUnseen(const Scope& scope, int channel) {
    scope.screen.ticks[channel] = true;
    scope.screen.selectedRow = channel;
    scope.screen.markers[channel].shown = true;
    selectChannel(scope, channel);
}

} // namespace sixtrace
