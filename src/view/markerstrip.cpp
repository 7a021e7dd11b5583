// SPDX-License-Identifier: MIT
#include "view/markerstrip.h"

#include "platform/look.h"
#include "platform/markerlabel.h"

namespace sixtrace {

namespace {
[[nodiscard]] bool isChannel(int channel) {
    return channel >= 0 && channel < kChannels;
}
} // namespace

MarkerStrip::MarkerStrip(publicM& model, const Widgets& widgets, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_widgets(widgets) {}

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
