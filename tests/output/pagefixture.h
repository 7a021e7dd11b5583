// SPDX-License-Identifier: MIT
#pragma once

#include "capture/settings.h"
#include "output/printresult.h"
#include "output/recordingpages.h"
#include "output/scriptedprinters.h"
#include "support/flatcapture.h"
#include "support/strings.h"

#include <gtest/gtest.h>

namespace sixtrace::test {

/// A capture without channels, a printer that records what is drawn, and the picture of a sheet.
class PageTest : public ::testing::Test {
protected:
    PageTest() {
        model->fillTables();
        applyDefaultColours(*model);
        model->FileKind = 4;
        setDefaultMargins(settings);
        settings.PaperWidth = 11900;
        settings.PaperHeight = 16840;
        inputs.frame.markerTop.fill(Twips{2910}); // (210 / 2 + 2910) / 6030 is half of the strip
        for (int channel = 0; channel < kChannels; ++channel) {
            inputs.rows[channel] = channelLabel(channel) + u" 5 mS 1 V"_s;
        }
    }
    void addChannel(int channel, int samples = 100) {
        test::addChannel(*model, channel, 200, samples);
        inputs.frame.selected[channel] = true;
    }
    void print() { ASSERT_TRUE(composer.PrintResult(printer, 100, inputs)); }
    void preview(int percent = 100) { ASSERT_TRUE(composer.PrintResult(sheet, percent, inputs)); }
    void layOnItsSide() {
        auto properties = printer.properties().value();
        properties.Orientation = 2;
        printer.set(properties);
    }

    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    MdlPrinter settings;
    PageInputs inputs;
    ScriptedPrinters devices;
    RecordingPrinter printer{devices};
    RecordingSheet sheet{96.0};
    PageComposer composer{*model, settings, printer};
};

inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kBlue = 0xFF0000;
inline constexpr Colour kRed = 0x0000FF;

} // namespace sixtrace::test
