// SPDX-License-Identifier: MIT
#pragma once

#include "capture/settings.h"
#include "output/printresult.h"
#include "output/recordingpages.h"
#include "output/scriptedprinters.h"
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
            inputs.rows[static_cast<std::size_t>(channel)] = channelLabel(channel) + u" 5 mS 1 V"_s;
        }
    }
    void addChannel(int channel, int samples = 100) {
        const auto c = static_cast<std::size_t>(channel);
        model->ChannelPresent[c] = 1;
        model->ScreenPoints[c] = 200;
        model->SampleCount[c] = samples;
        model->TimeIndex[c] = 10;
        model->TimeIndexView[c] = 10;
        model->VoltIndexView[c] = 6; // 0.5 V a division
        model->VoltPerCount[c] = 10.0F;
        model->SampleInterval[c] = 1.0F;
        inputs.frame.selected[c] = true;
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
