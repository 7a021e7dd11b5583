// SPDX-License-Identifier: MIT
#pragma once

#include "capture/capturewriter.h"
#include "capture/publicm.h"
#include "platform/text/numbers.h"

#include <vector>

namespace sixtrace::test {

/// Sets up a channel of the model by hand, with samples of 0: one sample of 1 microsecond a pixel, and 0.5 V a division
/// at 10 mV a count, so that 50 counts are a division.
inline void addChannel(publicM& model, int channel, int points, int samples) {
    model.ChannelPresent[channel] = 1;
    model.ScreenPoints[channel] = points;
    model.SampleCount[channel] = samples;
    model.TimeIndex[channel] = 10;
    model.TimeIndexFile[channel] = 10;
    model.TimeIndexView[channel] = 10;
    model.VoltIndexView[channel] = 6; // 0.5 V a division
    model.VoltPerCount[channel] = 10.0F;
    model.SampleInterval[channel] = 1.0F;
}

/// A capture of which every figure is known. One screen unit is one sample and one count: 0.5 V a division at 10 mV a
/// count, 600 samples of 2.5 microseconds at 10 microseconds a division. Test fixtures derive from it.
struct FlatCapture {
    /// A channel whose samples are all 0. A zero level of 0 puts its zero line on row 200 of the screen; 25 less is 50
    /// rows further down.
    static CaptureBlock flat(char id, int zeroLevel, int probeExp = 0) {
        return {.id = id,
                .screenPoints = 600,
                .sampleCount = 600,
                .timeIndex = 10,
                .zeroLevel = zeroLevel,
                .voltIndex = 7,
                .probeExp = static_cast<std::int16_t>(probeExp),
                .sampleInterval = 2.5F,
                .voltPerCount = 10,
                .samples = std::vector<std::int16_t>(600, 0)};
    }
    /// ch1 on row 200 and A on row 250.
    static std::vector<CaptureBlock> flatBlocks() { return {flat('1', 0), flat('A', -25)}; }

    /// A number with the decimal and group marks of the system, from "1,234.50".
    static QString number(const char* text) {
        const NumberMarks marks = NumberMarks::system();
        QString result;
        for (const QChar c : QString::fromLatin1(text)) {
            result += c == u'.' ? QString(marks.decimal) : c == u',' ? QString(marks.group) : QString(c);
        }
        return result;
    }
};

} // namespace sixtrace::test
