// SPDX-License-Identifier: MIT
#include "capture/channellist.h"

#include "capture/channelrows.h"
#include "capture/readouts.h"
#include "platform/framepanel.h"
#include "platform/labels.h"
#include "platform/ticklist.h"

namespace sixtrace {

ChannelList::ChannelList(publicM& model, ChannelSelection& selection, const Widgets& widgets,
                         ChannelListNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_selection(selection)
    , m_widgets(widgets)
    , m_neighbours(neighbours) {
    connect(m_widgets.List1, &TickList::Click, this, &ChannelList::List1_Click);
    connect(m_widgets.List1, &TickList::ItemCheck, this, &ChannelList::List1_ItemCheck);
}

void ChannelList::addRows() {
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        // Before the first load the row shows the exponent itself, not the factor that it stands for.
        m_widgets.List1->addRow(channelRow(channelLabel(channel), m_model.TimeBaseText[0], m_model.VoltText[0],
                                           RowGap::Eight, QString::number(m_model.ProbeExp[c])));
    }
}

void ChannelList::List1_Click() {
    const int row = m_widgets.List1->ListIndex();
    if (row < 0 || row >= kChannels) {
        return;
    }
    const auto r = static_cast<std::size_t>(row);
    m_neighbours.standOutMarker(row);
    m_neighbours.FillVoltList(m_model.ProbeExp[r]);
    m_selection.CurChannel = static_cast<std::int16_t>(row);
    if (m_model.ChannelPresent[r] == 1) {
        m_selection.ScrollLive = false;
        m_neighbours.placeBarAtMarker(row);
        m_selection.ScrollLive = true;
    }
    m_neighbours.showTimeAndVoltRows(m_model.TimeIndexView[r], m_model.VoltIndexView[r]);
    const FrameTitles titles = frameTitles(m_widgets.List1->List(row), m_model.LanguageId);
    m_widgets.Frame2->setCaption(titles.timeBase);
    m_widgets.Frame3->setCaption(titles.voltage);
    m_widgets.Frame1->setCaption(titles.cursor);
    m_widgets.Frame4->setCaption(titles.channel);
    m_neighbours.UpdateVoltCursors();
    m_neighbours.printTime();
    const MeasurementTexts texts = measurementTexts(m_model, row);
    m_widgets.LabPe->setCaption(texts.period);
    m_widgets.labPPe->setCaption(texts.frequency);
    m_widgets.LabMaxx->setCaption(texts.peakToPeak);
}

void ChannelList::List1_ItemCheck(int Item) {
    m_neighbours.showMarker(Item, m_widgets.List1->Selected(Item));
    // During timed acquisition the next capture redraws anyway.
    if (!m_model.AutoRun) {
        m_neighbours.PicReDrawT();
    }
}

int ChannelList::ListIndex() const {
    return m_widgets.List1->ListIndex();
}
void ChannelList::setListIndex(int row) {
    m_widgets.List1->setListIndex(row);
}
QString ChannelList::rowText(int channel) const {
    return m_widgets.List1->List(channel);
}
void ChannelList::setRowText(int channel, const QString& text) {
    m_widgets.List1->setList(channel, text);
}
bool ChannelList::Selected(int channel) const {
    return m_widgets.List1->Selected(channel);
}
void ChannelList::setTick(int channel, bool ticked) {
    m_widgets.List1->setSelected(channel, ticked);
}

void ChannelList::showTraceColours(Colour screen) {
    m_widgets.List1->setChipBack(screen);
    for (int channel = 0; channel < kChannels; ++channel) {
        m_widgets.List1->setChipColour(channel, m_model.LineColor[static_cast<std::size_t>(channel)]);
    }
}

} // namespace sixtrace
