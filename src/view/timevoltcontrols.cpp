// SPDX-License-Identifier: MIT
#include "view/timevoltcontrols.h"

#include "capture/channellist.h"
#include "capture/zeromarkers.h"
#include "platform/text/numbers.h"
#include "view/cursors.h"

namespace sixtrace {

namespace {

constexpr int kNameLength = 4; ///< of a row: its label and one blank

void rewriteRow(const Scope& scope, RowGap gap) {
    ScreenState& screen = scope.screen;
    QString& row = screen.rows[screen.selectedRow];
    row = channelRow(row, screen.timeList.find(screen.timeRow).value_or(QString()),
                     screen.voltList.find(screen.voltRow).value_or(QString()), gap,
                     probeFactorText(scope.model.ProbeExp[screen.selectedRow]));
}

/// Setting a list's row by code raises its click only where the row changes.
template<typename Choose>
void stepTo(int next, int rows, int shown, const Choose& choose) {
    if (next >= 0 && next < rows && next != shown) {
        choose(next);
    }
}

/// Whether the bar moves the marker of a channel that holds a capture.
bool barDrivesTrace(const Scope& scope) {
    const int channel = scope.screen.CurChannel;
    return channel >= 0 && scope.model.ChannelPresent[channel] == 1;
}

} // namespace

void chooseTimeRow(const Scope& scope, int row) {
    scope.screen.timeRow = row;
    Combo1_Click(scope);
}

void chooseVoltRow(const Scope& scope, int row) {
    scope.screen.voltRow = row;
    Combo2_Click(scope);
}

void Combo1_Click(const Scope& scope) {
    const ScreenState& screen = scope.screen;
    if (scope.model.AutoRun || screen.selectedRow < 0) {
        return;
    }
    rewriteRow(scope, RowGap::Eight);
    scope.model.TimeIndexView[screen.selectedRow] = static_cast<std::int16_t>(screen.timeRow);
    scope.duties.frameDue();
    printTime(scope.model, scope.screen);
}

void Combo2_Click(const Scope& scope) {
    ScreenState& screen = scope.screen;
    if (scope.model.AutoRun || screen.selectedRow < 0 || screen.CurChannel < 0 || screen.voltRow < 0) {
        return;
    }
    scope.model.VoltIndexView[screen.selectedRow] = static_cast<std::int16_t>(screen.voltRow);
    rewriteRow(scope, RowGap::Seven);
    takeBarRange(scope, screen.selectedRow);
    // A marker outside the new range keeps its place; only the bar goes to its end.
    placeBarAtMarker(screen, screen.CurChannel);
    scope.duties.frameDue();
    UpdateVoltCursors(scope.model, screen);
}

void stepVoltRow(const Scope& scope, Step step) {
    const ScreenState& screen = scope.screen;
    if (screen.CurChannel < 0 || screen.selectedRow < 0) {
        return;
    }
    stepTo(scope.model.VoltIndexView[screen.selectedRow] + static_cast<int>(step), kVoltRows, screen.voltRow,
           [&](int row) { chooseVoltRow(scope, row); });
}

void stepTimeRow(const Scope& scope, Step step) {
    const ScreenState& screen = scope.screen;
    if (screen.selectedRow < 0) {
        return;
    }
    stepTo(scope.model.TimeIndexView[screen.selectedRow] + static_cast<int>(step), kTimeBaseRows, screen.timeRow,
           [&](int row) { chooseTimeRow(scope, row); });
}

void VScroll1_Scroll(const Scope& scope) {
    ScreenState& screen = scope.screen;
    if (!barDrivesTrace(scope)) {
        return;
    }
    const QString row = screen.selectedRow >= 0 ? screen.rows[screen.selectedRow] : QString();
    screen.CenterPoint = row.left(kNameLength) + QStringLiteral(" 的零点位置格数为") +
                         generalText(screen.bar.maximum / 2.0 - screen.bar.value);
}

void VScroll1_Change(const Scope& scope) {
    ScreenState& screen = scope.screen;
    if (!screen.ScrollLive) {
        return;
    }
    endScroll(screen);
    if (!barDrivesTrace(scope)) {
        return;
    }
    screen.markers[screen.CurChannel].top = markerTopOfBar(screen.bar);
    scope.duties.frameDue();
    MarkerClamp(screen, screen.CurChannel);
    UpdateVoltCursors(scope.model, screen);
}

void endScroll(ScreenState& screen) {
    screen.CenterPoint.reset();
}

void showTrueChoices(const Scope& scope) {
    ScreenState& screen = scope.screen;
    screen.cursorChoice = screen.cursorsShown;
    if (screen.selectedRow < 0) {
        return;
    }
    const int time = scope.model.TimeIndexView[screen.selectedRow];
    const int volts = scope.model.VoltIndexView[screen.selectedRow];
    screen.timeRow = time >= 0 && time < kTimeBaseRows ? time : screen.timeRow;
    screen.voltRow = volts >= 0 && volts < kVoltRows ? volts : screen.voltRow;
}

} // namespace sixtrace
