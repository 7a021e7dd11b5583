// SPDX-License-Identifier: MIT
#pragma once

#include "capture/captureview.h"

#include <array>

namespace sixtrace {

/// The controls that a load touches, as plain values: for programs and tests without a window. It starts in the state
/// that the window has after start-up.
class PlainCaptureView : public CaptureView {
public:
    explicit PlainCaptureView(const publicM& model);

    PerChannel<QString> rows;
    PerChannel<bool> ticks{};
    PerChannel<bool> markers{};
    PerChannel<double> markerTops{};
    std::array<QString, kTimeBaseRows> timeList;
    std::array<QString, kVoltRows> voltList;
    QString modelName;
    int currentRow = 0;
    bool tableLoaded = false;
    bool standInsShown = false;
    int frames = 0; ///< frames asked for

    void unloadTable() override { tableLoaded = false; }
    void loadTable() override { tableLoaded = true; }
    void setModelName(const QString& name) override { modelName = name; }
    void setTimeListEntry(int row, const QString& text) override { timeList.at(static_cast<std::size_t>(row)) = text; }
    [[nodiscard]] QString rowText(int channel) const override { return rows.at(static_cast<std::size_t>(channel)); }
    void setRowText(int channel, const QString& text) override { rows.at(static_cast<std::size_t>(channel)) = text; }
    void setTick(int channel, bool ticked) override;
    [[nodiscard]] bool ticksShowSamples() const override { return false; }
    void showMarker(int channel, bool shown) override { markers.at(static_cast<std::size_t>(channel)) = shown; }
    void setMarkerTop(int channel, double top) override { markerTops.at(static_cast<std::size_t>(channel)) = top; }
    void hideStandIns() override { standInsShown = false; }
    void FillVoltList(int probeExp) override;
    [[nodiscard]] QString voltListEntry(int row) const override { return voltList.at(static_cast<std::size_t>(row)); }
    void PicReDrawT() override { ++frames; }
};

} // namespace sixtrace
