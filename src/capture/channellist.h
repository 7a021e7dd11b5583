// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channelselection.h"
#include "capture/publicm.h"

#include <QObject>

namespace sixtrace {

class FramePanel;
class ReadoutLabel;
class TickList;

/// What the channel list asks of the other areas when a row is picked or ticked.
class ChannelListNeighbours {
public:
    ChannelListNeighbours() = default;
    ChannelListNeighbours(const ChannelListNeighbours&) = delete;
    ChannelListNeighbours& operator=(const ChannelListNeighbours&) = delete;
    virtual ~ChannelListNeighbours() = default;

    /// All markers take the strip's colour, the one of `channel` its trace's.
    virtual void standOutMarker(int channel) = 0;
    virtual void showMarker(int channel, bool shown) = 0;
    virtual void FillVoltList(int probeExp) = 0;
    /// VScroll1 takes the place of a channel's marker.
    virtual void placeBarAtMarker(int channel) = 0;
    /// Combo1 and Combo2 take the texts of these entries; an entry that does not exist leaves its list as it is.
    virtual void showTimeAndVoltRows(int timeRow, int voltRow) = 0;
    virtual void UpdateVoltCursors() = 0;
    virtual void printTime() = 0;
    virtual void PicReDrawT() = 0;
};

/// The channel list and the measurement labels: which channel the controls apply to, which traces are shown. Its rows
/// are rewritten by several; what a row means is its own. Owned by the window, as are its widgets.
class ChannelList : public QObject {
public:
    struct Widgets {
        TickList* List1;
        FramePanel* Frame1;
        FramePanel* Frame2;
        FramePanel* Frame3;
        FramePanel* Frame4;
        ReadoutLabel* LabPe;
        ReadoutLabel* labPPe;
        ReadoutLabel* LabMaxx;
    };

    ChannelList(publicM& model, ChannelSelection& selection, const Widgets& widgets, ChannelListNeighbours& neighbours,
                QObject* parent);

    /// The six rows as they stand after start-up.
    void addRows();
    void List1_Click();
    void List1_ItemCheck(int Item);

    [[nodiscard]] int ListIndex() const;
    void setListIndex(int row);
    [[nodiscard]] QString rowText(int channel) const;
    void setRowText(int channel, const QString& text);
    [[nodiscard]] bool Selected(int channel) const;
    /// Moves the current row and raises both events, whether or not the tick changes.
    void setTick(int channel, bool ticked);
    /// The chips show each trace as it looks on the screen.
    void showTraceColours(Colour screen);

private:
    publicM& m_model;
    ChannelSelection& m_selection;
    Widgets m_widgets;
    ChannelListNeighbours& m_neighbours;
};

} // namespace sixtrace
