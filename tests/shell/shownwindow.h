// SPDX-License-Identifier: MIT
#pragma once

#include "capture/readouts.h"
#include "capture/screenstate.h"
#include "platform/controls/framepanel.h"
#include "shell/capturewindow.h"

#include <array>

namespace sixtrace::test {

/// A main window whose controls are compared with a state of the screen.
class ShownWindow : public CaptureWindow {
protected:
    /// What the controls of a window show, or what a state says that they should show: one line for each control.
    using Shown = QStringList;

    [[nodiscard]] PositionBar& bar() const { return control<PositionBar>("VScroll1"); }

    static QString yes(bool shown) { return shown ? u"shown"_s : u"hidden"_s; }
    static QString place(double number) { return QString::number(number, 'g', 17); }
    template<typename Unit>
    static QString place(Quantity<Unit> place) {
        return QString::number(place.number(), 'g', 17);
    }

    [[nodiscard]] Shown shownByWindow() const {
        Shown shown;
        for (int c = 0; c < kChannels; ++c) {
            shown << list().List(c) << yes(list().Selected(c)) << yes(!list().isMuted(c));
            shown << place(marker(c).Top()) << yes(!marker(c).isHidden()) << yes(marker(c).hasBorder())
                  << marker(c).backColor().name();
            shown << yes(!standIn(c).isHidden());
            if (!standIn(c).isHidden()) {
                shown << place(standIn(c).Top()) << standIn(c).backColor().name();
            }
        }
        for (const char* name : {"Combo1", "Combo2"}) {
            const auto& combo = control<ListCombo>(name);
            for (int row = 0; row < combo.ListCount(); ++row) {
                shown << combo.List(row);
            }
            shown << QString::number(combo.ListIndex());
        }
        shown << QString::number(list().ListIndex()) << QString::number(cursorType().ListIndex());
        shown << QString::number(bar().Max()) << QString::number(bar().Value());
        shown << yes(!control<QLabel>("CenterPoint").isHidden());
        for (const char* name : {"LabY1", "LabYY11", "LabY2", "LabYY22", "LabDy", "LabX1", "LabXX11", "LabX2",
                                 "LabXX22", "LabDx", "labPPe", "LabPe", "LabMaxx"}) {
            shown << caption(name);
        }
        for (const char* name : {"Frame1", "Frame2", "Frame3", "Frame4"}) {
            shown << control<FramePanel>(name).caption();
        }
        shown << place(line("Line1(0)").Y1()) << place(line("Line1(1)").Y1()) << place(line("Line2(0)").X1())
              << place(line("Line2(1)").X1());
        shown << yes(line("Line1(0)").isVisible()) << yes(line("Line1(1)").isVisible())
              << yes(!control<ReadoutLabel>("LabDy").isHidden());
        shown << yes(line("Line2(0)").isVisible()) << yes(line("Line2(1)").isVisible())
              << yes(!control<ReadoutLabel>("LabDx").isHidden());
        shown << QString::number(static_cast<int>(screen().cursor().shape()));
        shown << control<QLabel>("Label4").text() << control<QLabel>("Label5").text();
        return shown;
    }

    [[nodiscard]] static Shown shownByState(const ScreenState& s, const publicM& model) {
        Shown shown;
        for (int c = 0; c < kChannels; ++c) {
            const ZeroMarker& m = s.markers[c];
            shown << s.rows[c] << yes(s.ticks[c]) << yes(model.ChannelPresent[c] != 0);
            shown << place(m.top) << yes(m.shown) << yes(m.pressed) << toQColor(m.back).name() << yes(m.standInShown);
            if (m.standInShown) {
                shown << place(m.standInTop) << toQColor(m.standInBack).name();
            }
        }
        shown << QStringList(s.timeList.begin(), s.timeList.end()) << QString::number(s.timeRow);
        shown << QStringList(s.voltList.begin(), s.voltList.end()) << QString::number(s.voltRow);
        shown << QString::number(s.selectedRow) << QString::number(static_cast<int>(s.cursorChoice));
        shown << QString::number(s.bar.maximum) << QString::number(s.bar.value) << yes(s.CenterPoint.has_value());
        for (const CursorTexts& texts : {s.voltages, s.times}) {
            shown << texts.values[0] << texts.units[0] << texts.values[1] << texts.units[1] << texts.difference;
        }
        const MeasurementTexts measured = measurementTexts(s.measured);
        shown << measured.frequency << measured.period << measured.peakToPeak;
        const FrameTitles titles = frameTitles(s.titled);
        shown << titles.cursor << titles.timeBase << titles.voltage << titles.channel;
        shown << place(s.cursors.voltage[0]) << place(s.cursors.voltage[1]) << place(s.cursors.time[0])
              << place(s.cursors.time[1]);
        const QString voltages = yes(showsVoltage(s.cursorsShown));
        const QString times = yes(showsTime(s.cursorsShown));
        shown << voltages << voltages << voltages << times << times << times;
        shown << QString::number(static_cast<int>(s.pointer == MousePointer::NorthSouth ? Qt::SizeVerCursor
                                                  : s.pointer == MousePointer::EastWest ? Qt::SizeHorCursor
                                                                                        : Qt::ArrowCursor));
        shown << s.loadedPath << s.modelName;
        return shown;
    }
};

} // namespace sixtrace::test
