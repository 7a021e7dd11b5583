// SPDX-License-Identifier: MIT
#pragma once

#include "acquire/acquisition.h"
#include "capture/captureloading.h"
#include "capture/captureview.h"
#include "capture/channellist.h"
#include "output/printresult.h"
#include "view/appearance.h"
#include "view/cursors.h"
#include "view/frame.h"
#include "view/markerstrip.h"
#include "view/timevoltcontrols.h"

#include <functional>

class QLabel;

namespace sixtrace {

class DataTable;
class PathLabel;
class PositionBar;
class ScreenArea;
class ToolBar;

/// Connects the areas of the main window: what one asks of its neighbours goes through here to the area whose business
/// it is. It decides nothing. Made before the areas, which it learns afterwards.
class FrmComLinks : public CaptureView,
                    public ChannelListNeighbours,
                    public TimeVoltNeighbours,
                    public CaptureLoadingNeighbours,
                    public MarkerNeighbours,
                    public CursorNeighbours,
                    public AppearanceNeighbours,
                    public AcquisitionNeighbours {
public:
    struct Areas {
        ChannelList* channelList = nullptr;
        ScreenArea* screen = nullptr;
        MarkerStrip* markers = nullptr;
        TimeVoltControls* timeVolt = nullptr;
        Cursors* cursors = nullptr;
        Appearance* appearance = nullptr;
        CaptureLoading* loading = nullptr;
        DataTable* table = nullptr;
        PathLabel* Label4 = nullptr;
        PathLabel* Label5 = nullptr;
        QLabel* CenterPoint = nullptr;
        PositionBar* VScroll1 = nullptr;
        ToolBar* Toolbar1 = nullptr;
        /// Loads the message window with a text.
        std::function<void(const QString& text)> messageOut;
    };

    void connectAreas(const Areas& areas) { m_areas = areas; }
    [[nodiscard]] FrameInputs frameInputs() const;
    /// What a printed page shows beside the model.
    [[nodiscard]] PageInputs pageInputs() const;

    void unloadTable() override;
    void loadTable() override;
    void setModelName(const QString& name) override;
    void setTimeListEntry(int row, const QString& text) override;
    [[nodiscard]] QString rowText(int channel) const override;
    void setRowText(int channel, const QString& text) override;
    void setTick(int channel, bool ticked) override;
    [[nodiscard]] bool ticksShowSamples() const override { return true; }
    void showMarker(int channel, bool shown) override;
    void setMarkerTop(int channel, double top) override;
    void hideStandIns() override;
    void FillVoltList(int probeExp) override;
    [[nodiscard]] QString voltListEntry(int row) const override;
    void PicReDrawT() override;

    void standOutMarker(int channel) override;
    void placeBarAtMarker(int channel) override;
    void showTimeAndVoltRows(int timeRow, int voltRow) override;
    void UpdateVoltCursors() override;
    void printTime() override;

    [[nodiscard]] int selectedRow() const override;
    [[nodiscard]] double markerTop(int channel) const override;
    void MarkerClamp(int Index) override;

    void clearScreen() override;

    void selectRow(int row) override;
    void traceColourChanged(int channel) override;
    void beginMarkerDrag(int channel) override;
    void moveMarkerDrag(int channel) override;
    bool beginTraceDrag(int channel) override;
    bool moveTraceDrag(int channel, float delta) override;

    void setScreenColor(Colour colour) override;
    [[nodiscard]] Colour screenColor() const override;
    void setStripColor(Colour colour) override;
    [[nodiscard]] Colour stripColor() const override;

    void loadCapture(const QString& path) override;
    void showCapturePath(const QString& path) override;
    void enableVScroll1(bool enabled) override;
    void enableToolButton(int index, bool enabled) override;
    void setMessageOut(const QString& text) override;

private:
    Areas m_areas;
};

} // namespace sixtrace
