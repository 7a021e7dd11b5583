// SPDX-License-Identifier: MIT
#include "shell/frmcomlinks.h"

#include "output/datatable.h"
#include "platform/labels.h"
#include "platform/look.h"
#include "platform/positionbar.h"
#include "platform/toolbar.h"
#include "view/screenarea.h"

namespace sixtrace {

FrameInputs FrmComLinks::frameInputs() const {
    FrameInputs inputs;
    inputs.graticule = m_areas.appearance->graticule();
    inputs.line = m_areas.appearance->line();
    for (int channel = 0; channel < kChannels; ++channel) {
        inputs.selected[static_cast<std::size_t>(channel)] = m_areas.channelList->Selected(channel);
    }
    inputs.markerTop = m_areas.markers->markerTops();
    return inputs;
}

void FrmComLinks::unloadTable() {
    m_areas.table->unloadTable();
}
void FrmComLinks::loadTable() {
    m_areas.table->loadTable();
}
void FrmComLinks::setModelName(const QString& name) {
    m_areas.Label5->setCaption(name);
}
void FrmComLinks::setTimeListEntry(int row, const QString& text) {
    m_areas.timeVolt->setTimeListEntry(row, text);
}
QString FrmComLinks::rowText(int channel) const {
    return m_areas.channelList->rowText(channel);
}
void FrmComLinks::setRowText(int channel, const QString& text) {
    m_areas.channelList->setRowText(channel, text);
}
void FrmComLinks::setTick(int channel, bool ticked) {
    m_areas.channelList->setTick(channel, ticked);
}
void FrmComLinks::showMarker(int channel, bool shown) {
    m_areas.markers->showMarker(channel, shown);
}
void FrmComLinks::setMarkerTop(int channel, double top) {
    m_areas.markers->setMarkerTop(channel, top);
}
void FrmComLinks::hideStandIns() {
    m_areas.markers->hideStandIns();
}
void FrmComLinks::FillVoltList(int probeExp) {
    m_areas.timeVolt->FillVoltList(probeExp);
}
QString FrmComLinks::voltListEntry(int row) const {
    return m_areas.timeVolt->voltListEntry(row);
}
void FrmComLinks::PicReDrawT() {
    m_areas.screen->PicReDrawT();
}

void FrmComLinks::standOutMarker(int channel) {
    m_areas.markers->standOutMarker(channel);
}
void FrmComLinks::placeBarAtMarker(int channel) {
    m_areas.timeVolt->placeBarAtMarker(channel);
}
void FrmComLinks::showTimeAndVoltRows(int timeRow, int voltRow) {
    m_areas.timeVolt->showTimeAndVoltRows(timeRow, voltRow);
}
void FrmComLinks::UpdateVoltCursors() {
    m_areas.cursors->UpdateVoltCursors();
}
void FrmComLinks::printTime() {
    m_areas.cursors->printTime();
}

PageInputs FrmComLinks::pageInputs() const {
    PageInputs inputs{frameInputs(), {}};
    for (int channel = 0; channel < kChannels; ++channel) {
        inputs.rows[static_cast<std::size_t>(channel)] = rowText(channel);
    }
    return inputs;
}

int FrmComLinks::selectedRow() const {
    return m_areas.channelList->ListIndex();
}
double FrmComLinks::markerTop(int channel) const {
    return m_areas.markers->markerTop(channel);
}
void FrmComLinks::MarkerClamp(int Index) {
    m_areas.markers->MarkerClamp(Index);
}

void FrmComLinks::clearScreen() {
    m_areas.screen->clear();
}

void FrmComLinks::selectRow(int row) {
    m_areas.channelList->setListIndex(row);
}
void FrmComLinks::traceColourChanged(int) {
    m_areas.channelList->showTraceColours(m_areas.screen->BackColor());
}
void FrmComLinks::beginMarkerDrag(int channel) {
    m_areas.screen->beginMarkerDrag(channel);
}
void FrmComLinks::moveMarkerDrag(int channel) {
    m_areas.screen->moveMarkerDrag(channel, m_areas.markers->markerTop(channel));
}
bool FrmComLinks::beginTraceDrag(int channel) {
    return m_areas.screen->beginTraceDrag(channel);
}
bool FrmComLinks::moveTraceDrag(int channel, float delta) {
    return m_areas.screen->moveTraceDrag(channel, delta);
}

void FrmComLinks::setScreenColor(Colour colour) {
    m_areas.screen->setBackColor(colour);
    m_areas.channelList->showTraceColours(colour);
    QPalette palette = m_areas.CenterPoint->palette();
    palette.setColor(QPalette::Window, toQColor(colour));
    m_areas.CenterPoint->setPalette(palette);
}
Colour FrmComLinks::screenColor() const {
    return m_areas.screen->BackColor();
}
void FrmComLinks::setStripColor(Colour colour) {
    m_areas.markers->setBackColor(colour);
}
Colour FrmComLinks::stripColor() const {
    return m_areas.markers->BackColor();
}

void FrmComLinks::loadCapture(const QString& path) {
    m_areas.loading->SimpleWav(path);
}
void FrmComLinks::showCapturePath(const QString& path) {
    m_areas.Label4->setCaption(path);
}
void FrmComLinks::enableVScroll1(bool enabled) {
    m_areas.VScroll1->setEnabled(enabled);
}
void FrmComLinks::enableToolButton(int index, bool enabled) {
    m_areas.Toolbar1->button(index).setEnabled(enabled);
}
void FrmComLinks::setMessageOut(const QString& text) {
    m_areas.messageOut(text);
}

} // namespace sixtrace
