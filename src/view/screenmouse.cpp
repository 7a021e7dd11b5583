// SPDX-License-Identifier: MIT
#include "view/screenmouse.h"

#include "capture/channellist.h"
#include "capture/zeromarkers.h"
#include "view/cursors.h"
#include "view/geometry.h"

#include <cmath>

namespace sixtrace {

namespace {

bool isVoltage(CursorHit line) {
    return line == CursorHit::Voltage1 || line == CursorHit::Voltage2;
}

/// Number of a line within its pair.
std::size_t numberOf(CursorHit line) {
    return line == CursorHit::Voltage2 || line == CursorHit::Time2 ? 1 : 0;
}

/// A place without its fraction.
template<typename Place>
Place wholeUnits(Place place) {
    return Place(std::floor(place.number()));
}

bool isOnScreen(ScreenX x) {
    return x >= ScreenX{0} && x < ScreenX{kScreenWidth};
}
bool isOnScreen(ScreenY y) {
    return y >= ScreenY{0} && y < ScreenY{kScreenHeight};
}

} // namespace

void ScreenMouse::hold(CursorHit line) {
    // While a trace is dragged, a press on a line does not end that drag.
    if (std::holds_alternative<drag::Trace>(m_drag)) {
        return;
    }
    if (!std::holds_alternative<drag::CursorLines>(m_drag)) {
        m_drag = drag::CursorLines{};
    }
    auto& lines = std::get<drag::CursorLines>(m_drag);
    (isVoltage(line) ? lines.voltage : lines.time) = numberOf(line);
}

bool ScreenMouse::holds(CursorHit line) const {
    const auto* lines = std::get_if<drag::CursorLines>(&m_drag);
    return lines != nullptr && (isVoltage(line) ? lines->voltage : lines->time) == numberOf(line);
}

void ScreenMouse::Picture2_MouseDown(ScreenX X, ScreenY Y) {
    if (m_model.AutoRun) {
        return;
    }
    X = wholeUnits(X);
    Y = wholeUnits(Y);
    // A hidden cursor line takes the press as well.
    if (const CursorHit line = cursorUnder(m_screen.cursors, X, Y); line != CursorHit::None) {
        hold(line);
        return;
    }
    if (m_screen.selectedRow < 0) {
        return;
    }
    const TracePick pick = pickTrace(m_model, X, Y);
    m_screen.pointer = pick.pointer.value_or(m_screen.pointer);
    if (pick.failed) {
        return;
    }
    if (pick.channel) {
        m_drag = drag::Trace{*pick.channel, X};
    }
    if (m_screen.pointer != MousePointer::EastWest) {
        return;
    }
    m_pictures.beginExclusiveOr();
    // The pointer may still have the shape of a time cursor that was near; then there is no trace to draw.
    if (auto* trace = std::get_if<drag::Trace>(&m_drag)) {
        trace->lastX = X;
        static_cast<void>(m_pictures.beginTraceDrag(trace->channel));
    }
}

void ScreenMouse::dragTrace(drag::Trace& trace, ScreenX X) {
    if (m_pictures.moveTraceDrag(trace.channel, X - trace.lastX)) {
        trace.lastX = X;
    }
}

bool ScreenMouse::passVoltageCursors(ScreenY Y) {
    const auto* lines = std::get_if<drag::CursorLines>(&m_drag);
    if (lines != nullptr && lines->voltage) {
        moveVoltageCursor(m_model, m_screen, *lines->voltage, Y);
    } else if (onVoltageCursor(m_screen.cursors, Y)) {
        m_screen.pointer = MousePointer::NorthSouth;
        return false;
    } else {
        m_screen.pointer = MousePointer::Arrow;
    }
    refreshDifference(m_screen.voltages);
    return true;
}

bool ScreenMouse::passTimeCursors(ScreenX X) {
    // The readouts come first, so that times lag the line by one move.
    printTime(m_model, m_screen);
    const auto* lines = std::get_if<drag::CursorLines>(&m_drag);
    if (lines != nullptr && lines->time) {
        moveTimeCursor(m_screen, *lines->time, X);
    } else if (onTimeCursor(m_screen.cursors, X)) {
        m_screen.pointer = MousePointer::EastWest;
        return false;
    } else {
        m_screen.pointer = MousePointer::Arrow;
    }
    return true;
}

void ScreenMouse::Picture2_MouseMove(ScreenX X, ScreenY Y) {
    X = wholeUnits(X);
    Y = wholeUnits(Y);
    if (m_model.AutoRun || !isOnScreen(X) || !isOnScreen(Y)) {
        return;
    }
    if (auto* trace = std::get_if<drag::Trace>(&m_drag)) {
        dragTrace(*trace, X);
        return;
    }
    if (showsVoltage(m_screen.cursorChoice) && !passVoltageCursors(Y)) {
        return;
    }
    if (showsTime(m_screen.cursorChoice) && !passTimeCursors(X)) {
        return;
    }
    m_screen.pointer = hoverTrace(m_model, X, Y).pointer.value_or(m_screen.pointer);
}

void ScreenMouse::Picture2_MouseUp() {
    if (m_model.AutoRun) {
        return;
    }
    m_drag = drag::Nothing{};
    m_pictures.PicReDrawT();
}

void ScreenMouse::image1_MouseDown(int Index, Twips Y) {
    if (m_model.AutoRun) {
        return;
    }
    m_screen.markers[Index].pressed = true;
    selectRow(m_scope, Index);
    m_drag = drag::Marker{Index, Y};
    m_pictures.beginMarkerDrag(Index);
}

void ScreenMouse::image1_MouseMove(int Index, Qt::MouseButtons Button, Twips Y) {
    const auto* held = std::get_if<drag::Marker>(&m_drag);
    if (m_model.AutoRun || Button != Qt::LeftButton || held == nullptr || held->channel != Index) {
        return;
    }
    ZeroMarker& marker = m_screen.markers[Index];
    const Twips top = marker.top + (Y - held->pressY);
    if (top < strip::kDragTop || top > strip::kDragBottom) {
        return;
    }
    marker.top = top;
    if (m_model.ChannelPresent[Index] == 1) {
        m_pictures.moveMarkerDrag(Index);
    }
}

void ScreenMouse::image1_MouseUp(int Index) {
    m_drag = drag::Nothing{};
    // The border of a marker whose channel holds no capture is kept.
    if (m_model.AutoRun || m_model.ChannelPresent[Index] != 1) {
        return;
    }
    m_screen.markers[Index].pressed = false;
    m_pictures.PicReDrawT();
    MarkerClamp(m_screen, Index);
    UpdateVoltCursors(m_model, m_screen);
    if (m_screen.CurChannel >= 0) {
        placeBarAtMarker(m_screen, m_screen.CurChannel);
    }
}

bool ScreenMouse::moveCursorBy(CursorHit line, int units) {
    if (m_model.AutoRun || (holdsAnything() && !holds(line))) {
        return false;
    }
    const std::size_t cursor = numberOf(line);
    if (isVoltage(line)) {
        const ScreenY y = wholeUnits(m_screen.cursors.voltage[cursor] + ScreenY(units));
        if (isOnScreen(y)) {
            moveVoltageCursor(m_model, m_screen, cursor, y);
            refreshDifference(m_screen.voltages);
        }
    } else {
        const ScreenX x = wholeUnits(m_screen.cursors.time[cursor] + ScreenX(units));
        if (isOnScreen(x)) {
            moveTimeCursor(m_screen, cursor, x);
            printTime(m_model, m_screen);
        }
    }
    return true;
}

void ScreenMouse::moveMarkerBy(int channel, ScreenY way) {
    const Twips top = m_screen.markers[channel].top + wayOnStrip(way);
    if (m_model.AutoRun || holdsAnything() || top < strip::kStandByTop || top > strip::kStandByBottom) {
        return;
    }
    selectRow(m_scope, channel);
    m_screen.markers[channel].top = top;
    if (m_model.ChannelPresent[channel] == 1) {
        m_pictures.PicReDrawT();
        UpdateVoltCursors(m_model, m_screen);
        placeBarAtMarker(m_screen, channel);
    }
}

} // namespace sixtrace
