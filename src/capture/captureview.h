// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QString>

namespace sixtrace {

/// What a load does to the window, step by step, in the order in which the reading takes these steps. The window
/// implements it with its controls; tests, the fuzzers and the command line with plain records, so that reading runs
/// without any window.
class CaptureView {
public:
    CaptureView() = default;
    CaptureView(const CaptureView&) = delete;
    CaptureView& operator=(const CaptureView&) = delete;
    virtual ~CaptureView() = default;

    /// Closes the data table; the load that follows changes what it lists.
    virtual void unloadTable() = 0;
    /// Loads the data table without showing it.
    virtual void loadTable() = 0;

    /// Caption of Label5.
    virtual void setModelName(const QString& name) = 0;
    /// Entry `row` of the time list (Combo1) takes a new text.
    virtual void setTimeListEntry(int row, const QString& text) = 0;

    /// Text of a row of the channel list.
    [[nodiscard]] virtual QString rowText(int channel) const = 0;
    virtual void setRowText(int channel, const QString& text) = 0;
    /// Sets or clears a tick. The row becomes the current one and raises its check and click events, whether or not
    /// the tick changes.
    virtual void setTick(int channel, bool ticked) = 0;
    /// Whether setTick looks at the model's samples, as a window does that draws a frame. A load that nobody watches
    /// stores the samples of all channels in one go at its end.
    [[nodiscard]] virtual bool ticksShowSamples() const = 0;

    virtual void showMarker(int channel, bool shown) = 0;
    /// Moves a marker; `top` in twips inside the strip.
    virtual void setMarkerTop(int channel, double top) = 0;
    /// Hides the six stand-by labels.
    virtual void hideStandIns() = 0;

    /// Relabels the volt list (Combo2) for a probe exponent; outside 0 to 3 it stays as it is.
    virtual void FillVoltList(int probeExp) = 0;
    /// Entry `row` of the volt list; only for rows 0 to 9.
    [[nodiscard]] virtual QString voltListEntry(int row) const = 0;

    /// A new frame of the screen.
    virtual void PicReDrawT() = 0;
};

} // namespace sixtrace
