// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

namespace sixtrace {

class MarkerLabel;

/// The strip left of the screen with a zero marker for each channel. A marker's top, in twips, is the master copy of
/// its channel's vertical place. A marker beyond the strip's ends is stood in for by a flat label at the edge. Owned by
/// the window, as are its widgets.
class MarkerStrip : public QObject {
public:
    /// Tops at which the stand-by labels stand; a marker beyond them is replaced.
    static constexpr double kStandByTop = -75;
    static constexpr double kStandByBottom = 5865;

    struct Widgets {
        QWidget* Picture3;
        PerChannel<MarkerLabel*> image1;
        PerChannel<MarkerLabel*> ZLabel;
        MarkerLabel* image2;
    };

    MarkerStrip(publicM& model, const Widgets& widgets, QObject* parent);

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
    Widgets m_widgets;
    Colour m_backColor = 0;
};

} // namespace sixtrace
