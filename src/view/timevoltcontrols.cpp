// SPDX-License-Identifier: MIT
#include "view/timevoltcontrols.h"

#include "capture/capturefile.h"
#include "capture/channelrows.h"
#include "platform/arrowpair.h"
#include "platform/listcombo.h"
#include "platform/numbers.h"
#include "platform/positionbar.h"

#include <QLabel>

namespace sixtrace {

namespace {
constexpr double kDivisionsDown = 8;
constexpr int kNameLength = 4; ///< of a row: its label and one blank
} // namespace

TimeVoltControls::TimeVoltControls(publicM& model, ChannelSelection& selection, const Widgets& widgets,
                                   TimeVoltNeighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_selection(selection)
    , m_widgets(widgets)
    , m_neighbours(neighbours) {
    connect(m_widgets.Combo1, &ListCombo::Click, this, &TimeVoltControls::Combo1_Click);
    connect(m_widgets.Combo2, &ListCombo::Click, this, &TimeVoltControls::Combo2_Click);
    connect(m_widgets.UpDown1, &ArrowPair::UpClick, this, &TimeVoltControls::UpDown1_UpClick);
    connect(m_widgets.UpDown1, &ArrowPair::DownClick, this, &TimeVoltControls::UpDown1_DownClick);
    connect(m_widgets.UpDown2, &ArrowPair::UpClick, this, &TimeVoltControls::UpDown2_UpClick);
    connect(m_widgets.UpDown2, &ArrowPair::DownClick, this, &TimeVoltControls::UpDown2_DownClick);
    connect(m_widgets.VScroll1, &PositionBar::Change, this, &TimeVoltControls::VScroll1_Change);
    connect(m_widgets.VScroll1, &PositionBar::Scroll, this, &TimeVoltControls::VScroll1_Scroll);
}

void TimeVoltControls::fillLists() {
    for (const QString& text : m_model.TimeBaseText) {
        m_widgets.Combo1->addItem(text);
    }
    for (const QString& text : m_model.VoltText) {
        m_widgets.Combo2->addItem(text);
    }
    // A list that is filled has chosen nothing yet.
    m_widgets.Combo1->setCurrentIndex(-1);
    m_widgets.Combo2->setCurrentIndex(-1);
    m_widgets.VScroll1->setRange(0, 2 * m_model.VoltRange[0]);
    m_widgets.VScroll1->setValue(m_model.VoltRange[0]);
}

void TimeVoltControls::rewriteRow(int channel, RowGap gap) {
    m_neighbours.setRowText(channel, channelRow(m_neighbours.rowText(channel), m_widgets.Combo1->Text(),
                                                m_widgets.Combo2->Text(), gap,
                                                probeFactorText(m_model.ProbeExp[static_cast<std::size_t>(channel)])));
}

void TimeVoltControls::Combo1_Click() {
    const int row = m_neighbours.selectedRow();
    if (m_model.AutoRun || row < 0) {
        return;
    }
    rewriteRow(row, RowGap::Eight);
    m_model.TimeIndexView.at(static_cast<std::size_t>(row)) = static_cast<std::int16_t>(m_widgets.Combo1->ListIndex());
    m_neighbours.PicReDrawT();
    m_neighbours.printTime();
}

void TimeVoltControls::Combo2_Click() {
    const int row = m_neighbours.selectedRow();
    const int volts = m_widgets.Combo2->ListIndex();
    if (m_model.AutoRun || row < 0 || m_selection.CurChannel < 0 || volts < 0) {
        return;
    }
    m_model.VoltIndexView.at(static_cast<std::size_t>(row)) = static_cast<std::int16_t>(volts);
    rewriteRow(row, RowGap::Seven);
    m_selection.ScrollLive = false;
    m_widgets.VScroll1->setMaximum(2 * m_model.VoltRange.at(static_cast<std::size_t>(volts)));
    // A marker outside the new range keeps its place; only the bar goes to its end.
    placeBarAtMarker(m_selection.CurChannel);
    m_selection.ScrollLive = true;
    m_neighbours.PicReDrawT();
    m_neighbours.UpdateVoltCursors();
}

void TimeVoltControls::UpDown1_UpClick() {
    const int row = m_neighbours.selectedRow();
    if (m_selection.CurChannel < 0 || row < 0) {
        return;
    }
    const int volts = m_model.VoltIndexView.at(static_cast<std::size_t>(row));
    if (volts < m_widgets.Combo2->ListCount() - 1) {
        m_widgets.Combo2->setListIndex(volts + 1);
    }
}

void TimeVoltControls::UpDown1_DownClick() {
    const int row = m_neighbours.selectedRow();
    if (m_selection.CurChannel < 0 || row < 0) {
        return;
    }
    const int volts = m_model.VoltIndexView.at(static_cast<std::size_t>(row));
    if (volts >= 1) {
        m_widgets.Combo2->setListIndex(volts - 1);
    }
}

void TimeVoltControls::UpDown2_UpClick() {
    const int row = m_neighbours.selectedRow();
    if (row < 0) {
        return;
    }
    const int time = m_model.TimeIndexView.at(static_cast<std::size_t>(row));
    if (time < m_widgets.Combo1->ListCount() - 1) {
        m_widgets.Combo1->setListIndex(time + 1);
    }
}

void TimeVoltControls::UpDown2_DownClick() {
    const int row = m_neighbours.selectedRow();
    if (row < 0) {
        return;
    }
    const int time = m_model.TimeIndexView.at(static_cast<std::size_t>(row));
    if (time >= 1) {
        m_widgets.Combo1->setListIndex(time - 1);
    }
}

void TimeVoltControls::VScroll1_Scroll() {
    const int channel = m_selection.CurChannel;
    if (channel < 0 || m_model.ChannelPresent.at(static_cast<std::size_t>(channel)) != 1) {
        return;
    }
    m_widgets.CenterPoint->setText(m_neighbours.rowText(m_neighbours.selectedRow()).left(kNameLength) +
                                   QStringLiteral(" 的零点位置格数为") +
                                   generalText(m_widgets.VScroll1->Max() / 2.0 - m_widgets.VScroll1->Value()));
    m_widgets.CenterPoint->show();
}

void TimeVoltControls::VScroll1_Change() {
    if (!m_selection.ScrollLive) {
        return;
    }
    m_widgets.CenterPoint->hide();
    const int channel = m_selection.CurChannel;
    if (channel < 0 || m_model.ChannelPresent.at(static_cast<std::size_t>(channel)) != 1) {
        return;
    }
    const double divisions = m_widgets.VScroll1->Value() - m_widgets.VScroll1->Max() / 2.0;
    m_neighbours.setMarkerTop(channel, divisions * kStripHeight / kDivisionsDown + kCentreTop);
    m_neighbours.PicReDrawT();
    m_neighbours.MarkerClamp(channel);
    m_neighbours.UpdateVoltCursors();
}

void TimeVoltControls::FillVoltList(int probeExp) {
    const auto* texts = voltListTexts(probeExp);
    if (texts == nullptr) {
        return;
    }
    for (int row = 0; row < kVoltRows; ++row) {
        m_widgets.Combo2->setList(row, texts->at(static_cast<std::size_t>(row)));
    }
}

void TimeVoltControls::setTimeListEntry(int row, const QString& text) {
    m_widgets.Combo1->setList(row, text);
}

QString TimeVoltControls::voltListEntry(int row) const {
    return m_widgets.Combo2->List(row);
}

void TimeVoltControls::showTimeAndVoltRows(int timeRow, int voltRow) {
    if (timeRow >= 0 && timeRow < m_widgets.Combo1->ListCount()) {
        m_widgets.Combo1->setText(m_widgets.Combo1->List(timeRow));
    }
    if (voltRow >= 0 && voltRow < m_widgets.Combo2->ListCount()) {
        m_widgets.Combo2->setText(m_widgets.Combo2->List(voltRow));
    }
}

void TimeVoltControls::placeBarAtMarker(int channel) {
    const double top = m_neighbours.markerTop(channel);
    m_widgets.VScroll1->setValueClamped((top - kCentreTop) / kStripHeight * kDivisionsDown +
                                        m_widgets.VScroll1->Max() / 2.0);
}

} // namespace sixtrace
