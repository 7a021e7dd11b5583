// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channelselection.h"
#include "capture/publicm.h"

#include <QObject>

class QLabel;

namespace sixtrace {

class ArrowPair;
class ListCombo;
class PositionBar;
enum class RowGap;

/// What the time and volt controls ask of the other areas.
class TimeVoltNeighbours {
public:
    TimeVoltNeighbours() = default;
    TimeVoltNeighbours(const TimeVoltNeighbours&) = delete;
    TimeVoltNeighbours& operator=(const TimeVoltNeighbours&) = delete;
    virtual ~TimeVoltNeighbours() = default;

    /// Row that List1 stands on, -1 for none.
    [[nodiscard]] virtual int selectedRow() const = 0;
    [[nodiscard]] virtual QString rowText(int channel) const = 0;
    virtual void setRowText(int channel, const QString& text) = 0;
    [[nodiscard]] virtual double markerTop(int channel) const = 0;
    virtual void setMarkerTop(int channel, double top) = 0;
    virtual void MarkerClamp(int Index) = 0;
    virtual void PicReDrawT() = 0;
    virtual void printTime() = 0;
    virtual void UpdateVoltCursors() = 0;
};

/// Time base and volt range of the selected channel, and the bar that moves its zero line. Each channel keeps settings
/// of its own; these controls show and change those of one. Owned by the window, as are its widgets.
class TimeVoltControls : public QObject {
public:
    struct Widgets {
        ListCombo* Combo1;
        ListCombo* Combo2;
        ArrowPair* UpDown1;
        ArrowPair* UpDown2;
        PositionBar* VScroll1;
        QLabel* CenterPoint;
    };

    TimeVoltControls(publicM& model, ChannelSelection& selection, const Widgets& widgets,
                     TimeVoltNeighbours& neighbours, QObject* parent);

    /// The entries of both lists and the bar's range as they stand after start-up.
    void fillLists();

    void Combo1_Click();
    void Combo2_Click();
    void UpDown1_UpClick();
    void UpDown1_DownClick();
    void UpDown2_UpClick();
    void UpDown2_DownClick();
    void VScroll1_Change();
    void VScroll1_Scroll();

    /// Relabels the volt list for a probe exponent 0 to 3; any other leaves it. The chosen row stays.
    void FillVoltList(int probeExp);
    void setTimeListEntry(int row, const QString& text);
    [[nodiscard]] QString voltListEntry(int row) const;
    /// Both lists take the texts of these entries without a click; a row that does not exist changes nothing.
    void showTimeAndVoltRows(int timeRow, int voltRow);
    /// The bar takes the place of a channel's marker, at its ends for a marker beyond them.
    void placeBarAtMarker(int channel);

private:
    void rewriteRow(int channel, RowGap gap);

    publicM& m_model;
    ChannelSelection& m_selection;
    Widgets m_widgets;
    TimeVoltNeighbours& m_neighbours;
};

} // namespace sixtrace
