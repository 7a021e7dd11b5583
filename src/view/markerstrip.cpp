// SPDX-License-Identifier: MIT
#include "view/markerstrip.h"

#include "capture/settings.h"
#include "platform/dialogs.h"
#include "platform/look.h"
#include "platform/markerlabel.h"
#include "platform/numbers.h"

namespace sixtrace {

namespace {
[[nodiscard]] bool isChannel(int channel) {
    return channel >= 0 && channel < kChannels;
}
} // namespace

MarkerStrip::MarkerStrip(publicM& model, ChannelSelection& selection, const Widgets& widgets, Dialogs& dialogs,
                         MarkerNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_selection(selection)
    , m_widgets(widgets)
    , m_dialogs(dialogs)
    , m_neighbours(neighbours) {
    for (int i = 0; i < kChannels; ++i) {
        MarkerLabel* marker = m_widgets.image1.at(static_cast<std::size_t>(i));
        connect(marker, &MarkerLabel::doubleClicked, this, [this, i] { image1_DblClick(i); });
        connect(marker, &MarkerLabel::mouseDown, this,
                [this, i](int b, double x, double y) { image1_MouseDown(i, b, x, y); });
        connect(marker, &MarkerLabel::mouseMove, this,
                [this, i](int b, double x, double y) { image1_MouseMove(i, b, x, y); });
        connect(marker, &MarkerLabel::mouseUp, this,
                [this, i](int b, double x, double y) { image1_MouseUp(i, b, x, y); });
    }
}

void MarkerStrip::image1_DblClick(int Index) {
    if (m_model.AutoRun) {
        return;
    }
    const auto c = static_cast<std::size_t>(Index);
    const auto colour = m_dialogs.ShowColor(m_model.LineColor[c]);
    if (!colour) {
        return;
    }
    m_model.LineColor[c] = *colour;
    m_widgets.image1[c]->setBackColor(toQColor(*colour));
    m_neighbours.traceColourChanged(Index);
    m_neighbours.PicReDrawT();
    writeIni(QStringLiteral("LineColor"), QString::number(Index), Str(*colour), m_model.IniFile);
}

void MarkerStrip::image1_MouseDown(int Index, int, double X, double Y) {
    if (m_model.AutoRun) {
        return;
    }
    const auto c = static_cast<std::size_t>(Index);
    m_widgets.image1[c]->setBorder(true);
    m_widgets.image1[c]->raise();
    m_neighbours.selectRow(Index);
    DragX0 = X;
    DragY0 = Y;
    m_neighbours.beginMarkerDrag(Index);
    if (m_model.ChannelPresent[c] == 1) {
        m_selection.CurChannel = static_cast<std::int16_t>(Index);
    }
}

void MarkerStrip::image1_MouseMove(int Index, int Button, double, double Y) {
    if (m_model.AutoRun || Button != 1) {
        return;
    }
    const auto c = static_cast<std::size_t>(Index);
    MarkerLabel& marker = *m_widgets.image1[c];
    const double top = marker.Top() + (Y - DragY0);
    if (top < kDragTop || top > kDragBottom) {
        return;
    }
    marker.setTop(top);
    if (m_model.ChannelPresent[c] == 1) {
        m_neighbours.moveMarkerDrag(Index);
    }
}

void MarkerStrip::image1_MouseUp(int Index, int, double, double) {
    const auto c = static_cast<std::size_t>(Index);
    // The border of a marker without data stays on.
    if (m_model.AutoRun || m_model.ChannelPresent[c] != 1) {
        return;
    }
    m_widgets.image1[c]->setBorder(false);
    m_neighbours.PicReDrawT();
    MarkerClamp(Index);
    m_neighbours.UpdateVoltCursors();
    if (m_selection.CurChannel >= 0) {
        m_selection.ScrollLive = false;
        m_neighbours.placeBarAtMarker(m_selection.CurChannel);
        m_selection.ScrollLive = true;
    }
}

void MarkerStrip::MarkerClamp(int Index) {
    if (!isChannel(Index)) {
        return;
    }
    const auto c = static_cast<std::size_t>(Index);
    MarkerLabel& marker = *m_widgets.image1[c];
    MarkerLabel& standIn = *m_widgets.ZLabel[c];
    const bool above = marker.Top() < kStandByTop;
    if (!above && !(marker.Top() > kStandByBottom)) {
        standIn.hide();
        marker.show();
        return;
    }
    marker.hide();
    standIn.setTop(above ? kStandByTop : kStandByBottom);
    standIn.setBackColor(marker.backColor());
    standIn.setCaption(marker.caption());
    standIn.show();
}

double MarkerStrip::markerTop(int channel) const {
    return m_widgets.image1.at(static_cast<std::size_t>(channel))->Top();
}

void MarkerStrip::setMarkerTop(int channel, double top) {
    m_widgets.image1.at(static_cast<std::size_t>(channel))->setTop(top);
}

PerChannel<double> MarkerStrip::markerTops() const {
    PerChannel<double> tops{};
    for (std::size_t c = 0; c < tops.size(); ++c) {
        tops[c] = m_widgets.image1[c]->Top();
    }
    return tops;
}

void MarkerStrip::showMarker(int channel, bool shown) {
    m_widgets.image1.at(static_cast<std::size_t>(channel))->setVisible(shown);
}

void MarkerStrip::standOutMarker(int channel) {
    for (std::size_t c = 0; c < m_widgets.image1.size(); ++c) {
        const bool selected = static_cast<int>(c) == channel;
        m_widgets.image1[c]->setBackColor(toQColor(selected ? m_model.LineColor[c] : m_backColor));
    }
}

void MarkerStrip::hideStandIns() {
    for (MarkerLabel* standIn : m_widgets.ZLabel) {
        standIn->hide();
    }
}

void MarkerStrip::setBackColor(Colour colour) {
    m_backColor = colour;
    QPalette palette = m_widgets.Picture3->palette();
    palette.setColor(QPalette::Window, toQColor(colour));
    m_widgets.Picture3->setPalette(palette);
}

} // namespace sixtrace
