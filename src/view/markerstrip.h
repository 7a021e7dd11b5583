// SPDX-License-Identifier: MIT
#pragma once

#include "capture/channelselection.h"
#include "capture/publicm.h"

#include <QObject>

namespace sixtrace {

class Dialogs;
class MarkerLabel;

/// What the markers ask of the other areas.
class MarkerNeighbours {
public:
    MarkerNeighbours() = default;
    MarkerNeighbours(const MarkerNeighbours&) = delete;
    MarkerNeighbours& operator=(const MarkerNeighbours&) = delete;
    virtual ~MarkerNeighbours() = default;

    /// Makes a row of List1 current, with its click.
    virtual void selectRow(int row) = 0;
    virtual void PicReDrawT() = 0;
    virtual void UpdateVoltCursors() = 0;
    virtual void placeBarAtMarker(int channel) = 0;
    virtual void traceColourChanged(int channel) = 0;
    /// Sets the pen of the screen for a drag, and draws the ghost of a channel's trace where it has one.
    virtual void beginMarkerDrag(int channel) = 0;
    virtual void moveMarkerDrag(int channel) = 0;
};

/// The strip left of the screen with a zero marker for each channel. A marker's top, in twips, is the master copy of
/// its channel's vertical place. A marker beyond the strip's ends is stood in for by a flat label at the edge. Owned by
/// the window, as are its widgets.
class MarkerStrip : public QObject {
public:
    /// Tops at which the stand-by labels stand; a marker beyond them is replaced.
    static constexpr double kStandByTop = -75;
    static constexpr double kStandByBottom = 5865;
    /// Tops beyond which a drag does not go: 30 twips further.
    static constexpr double kDragTop = -105;
    static constexpr double kDragBottom = 5895;

    struct Widgets {
        QWidget* Picture3;
        PerChannel<MarkerLabel*> image1;
        PerChannel<MarkerLabel*> ZLabel;
        MarkerLabel* image2;
    };

    MarkerStrip(publicM& model, ChannelSelection& selection, const Widgets& widgets, Dialogs& dialogs,
                MarkerNeighbours& neighbours, QObject* parent);

    /// Chooses the trace colour of a channel, for good.
    void image1_DblClick(int Index);
    void image1_MouseDown(int Index, int Button, double X, double Y);
    void image1_MouseMove(int Index, int Button, double X, double Y);
    void image1_MouseUp(int Index, int Button, double X, double Y);

    /// Swaps a marker for its stand-by label beyond the strip's ends, and back. A channel that does not exist is none.
    void MarkerClamp(int Index);

    [[nodiscard]] double markerTop(int channel) const;
    void setMarkerTop(int channel, double top);
    [[nodiscard]] PerChannel<double> markerTops() const;
    void showMarker(int channel, bool shown);
    /// All markers blend into the strip; the selected one alone takes its trace's colour.
    void standOutMarker(int channel);
    void hideStandIns();

    void setBackColor(Colour colour);
    [[nodiscard]] Colour BackColor() const { return m_backColor; }

private:
    publicM& m_model;
    ChannelSelection& m_selection;
    Widgets m_widgets;
    Dialogs& m_dialogs;
    MarkerNeighbours& m_neighbours;
    Colour m_backColor = 0;
    double DragX0 = 0; ///< place of the pointer inside the marker at the press, twips
    double DragY0 = 0;
};

} // namespace sixtrace
