// SPDX-License-Identifier: MIT
#include "view/scene.h"

#include <gtest/gtest.h>

namespace sixtrace::test {
namespace {

TEST(PicReDraw, DrawsAFlatTraceOfZerosOnAScreenOf500Columns) {
    // (0 + 128) / 256 * 400 + 200 - 200 = 200, and 1024 points run from X = 0 to 500 * 1023 / 1024 = 499.5.
    TestScreen screen;
    screen.inputs.selected[0] = true;
    screen.inputs.markerTop[0] = Twips(2910 - 30 * 15.075); // 30 rows higher: row 170
    PicReDraw(*screen.model, screen.inputs, screen.picture2);
    for (int x = 0; x <= 500; ++x) {
        EXPECT_EQ(screen.picture2.Point(x, 170), screen.model->LineColor[0]) << x;
    }
    EXPECT_EQ(screen.picture2.Point(502, 170), screen.picture2.BackColor);
    EXPECT_FLOAT_EQ(screen.model->SampleStep[0], static_cast<float>(0.000005 * 10 / 1024));
}

TEST(PicReDraw, DottedLinesStandEveryFiftyUnitsUpTo500) {
    TestScreen screen;
    PicReDraw(*screen.model, screen.inputs, screen.picture2);
    EXPECT_EQ(screen.picture2.Point(450, 15), 0xFFFFFF);
    EXPECT_EQ(screen.picture2.Point(450, 16), screen.picture2.BackColor);
    EXPECT_EQ(screen.picture2.Point(550, 15), screen.picture2.BackColor);
    EXPECT_EQ(screen.picture2.Point(497, 10), 0xFFFFFF) << "a tick at the right edge";
}

TEST(SampleToScreenY, HoldsTheSameFormulaRoundedTo16Bits) {
    TestScreen screen;
    publicM& model = *screen.model;
    model.ChannelYPos[2] = 250;
    model.VoltIndexFile[2] = 7; // 1 V
    model.VoltIndexView[2] = 6; // 0.5 V
    // (16 * 2 + 128) / 256 * 400 + 250 - 200 = 300
    EXPECT_EQ(SampleToScreenY(model, 2, 16), 300);
    EXPECT_EQ(SampleToScreenY(model, 2, 1e6), std::nullopt);
    model.VoltIndexFile[2] = 10;
    EXPECT_EQ(SampleToScreenY(model, 2, 16), std::nullopt);
}

} // namespace
} // namespace sixtrace::test
