// SPDX-License-Identifier: MIT
#include "capture/plaincaptureview.h"

#include "capture/capturefile.h"
#include "capture/channelrows.h"
#include "platform/numbers.h"

namespace sixtrace {

PlainCaptureView::PlainCaptureView(const publicM& model)
    : timeList(model.TimeBaseText)
    , voltList(model.VoltText) {
    for (int channel = 0; channel < kChannels; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        rows[c] = channelRow(channelLabel(channel), model.TimeBaseText[0], model.VoltText[0], RowGap::Eight,
                             QString::number(model.ProbeExp[c]));
        markerTops[c] = kCentreTop;
    }
}

void PlainCaptureView::setTick(int channel, bool ticked) {
    ticks.at(static_cast<std::size_t>(channel)) = ticked;
    currentRow = channel;
}

void PlainCaptureView::FillVoltList(int probeExp) {
    if (const auto* texts = voltListTexts(probeExp)) {
        voltList = *texts;
    }
}

} // namespace sixtrace
