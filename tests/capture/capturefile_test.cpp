// SPDX-License-Identifier: MIT
#include "capture/bytes.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(SimpleWavTest, ReadsEveryFieldOfABlock) {
    Block block;
    block.mark = "CHB";
    block.screenPoints = 6;
    block.sampleCount = 4;
    block.scanPoint = 3;
    block.timeIndex = 16;
    block.zeroLevel = 40;
    block.voltIndex = 5;
    block.probeExp = 1;
    block.interval = 0.25F;
    block.frequency = 123.5F;
    block.period = 8097.166F;
    block.voltPerCount = -1.5F;
    block.samples = {-5, 300, 7, -32000};
    block.filling = 2;
    load("V11", {block});
    EXPECT_EQ(model->FileKind, 4);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{0, 0, 0, 1, 0, 0}));
    EXPECT_EQ(model->ScreenPoints[3], 6);
    EXPECT_EQ(model->SampleCount[3], 4);
    EXPECT_EQ(model->ScanPoint[3], 3);
    EXPECT_EQ(model->TimeIndex[3], 16);
    EXPECT_EQ(model->ZeroLevel[3], 60);
    EXPECT_EQ(model->VoltIndex[3], 5);
    EXPECT_EQ(model->ProbeExp[3], 1);
    EXPECT_EQ(model->SampleInterval[3], 0.25F);
    EXPECT_EQ(model->Frequency[3], 123.5F);
    EXPECT_EQ(model->Period[3], 8097.166F);
    EXPECT_EQ(model->VoltPerCount[3], -1.5F);
    EXPECT_EQ(model->TimeIndexFile[3], 16);
    EXPECT_EQ(model->VoltIndexFile[3], 5);
    EXPECT_EQ(model->TimeIndexView[3], 16);
    EXPECT_EQ(model->VoltIndexView[3], 4);
    EXPECT_EQ(model->SampleData(3, 0), -5);
    EXPECT_EQ(model->SampleData(3, 1), 300);
    EXPECT_EQ(model->SampleData(3, 2), 7);
    EXPECT_EQ(model->SampleData(3, 3), -32000);
    EXPECT_EQ(model->PeakToPeak[3], 32300);
    EXPECT_EQ(view->rows[3], u"B            1  mS          1.00 V       / 10"_s);
}

TEST_F(SimpleWavTest, TheTagBinHasNoProbeField) {
    Block block;
    block.interval = 0.75F;
    load("bin", {block, {.mark = "CH2"}});
    EXPECT_EQ(model->FileKind, 1);
    EXPECT_EQ(model->ProbeExp[0], 0);
    EXPECT_EQ(model->SampleInterval[0], 0.75F);
    EXPECT_EQ(model->SampleData(0, 3), 4);
    EXPECT_EQ(model->ChannelPresent[1], 1);
}

struct Form {
    const char* tag;
    int fileKind;
    QString row2;
};

void PrintTo(const Form& form, std::ostream* out) {
    *out << form.tag;
}

class EveryForm : public SimpleWavTest, public ::testing::WithParamInterface<Form> {};

TEST_P(EveryForm, SetsFileKindAndTheTimeBaseFamily) {
    load(GetParam().tag, {{}});
    EXPECT_EQ(model->FileKind, GetParam().fileKind);
    EXPECT_EQ(model->TimeBaseText[2], GetParam().row2);
    EXPECT_EQ(view->timeList[2], GetParam().row2);
    EXPECT_EQ(model->ChannelPresent[0], 1);
    EXPECT_EQ(view->modelName, QString()); // set and cleared in the same load
}

INSTANTIATE_TEST_SUITE_P(SimpleWav, EveryForm,
                         ::testing::Values(Form{"bin", 1, u"25 nS"_s}, Form{"V01", 2, u"25 nS"_s},
                                           Form{"W01", 3, u"20 nS"_s}, Form{"V11", 4, u"25 nS"_s},
                                           Form{"W11", 5, u"20 nS"_s}, Form{"V10", 6, u"20 nS"_s}));

TEST_F(SimpleWavTest, AChannelAbsentFromAFileKeepsItsSamplesButHasNoCountAndIsNotPresent) {
    load("V11", {{}, {.mark = "CH2", .samples = {11, 12, 13, 14}}});
    model->ChannelXShift[1] = 25;
    load("V11", {{}});
    EXPECT_EQ(model->SampleData(1, 2), 13);
    EXPECT_EQ(model->SampleCount[1], 0);
    EXPECT_EQ(model->ChannelPresent[1], 0);
    EXPECT_EQ(model->ProbeExp[1], 0);
    EXPECT_EQ(model->ChannelXShift[1], 0.0F);
    // Everything else stays.
    EXPECT_EQ(model->ScreenPoints[1], 4);
    EXPECT_EQ(model->TimeIndex[1], 15);
    EXPECT_EQ(model->VoltIndex[1], 7);
    EXPECT_FALSE(view->ticks[1]);
    EXPECT_FALSE(view->markers[1].shown);
}

TEST_F(SimpleWavTest, TheRowOfAnAbsentChannelShowsOneStepAboveTheOthers) {
    load("V11", {{}, {.mark = "CH2"}});
    EXPECT_EQ(view->rows[1], u"ch2          500uS          500 mV       / 1"_s);
    load("V11", {{}});
    EXPECT_EQ(view->rows[1], u"ch2          500uS          1.00 V       / 1"_s);
}

TEST_F(SimpleWavTest, AFileThatEndsAfterItsHeaderLeavesAllChannelsAbsent) {
    load("V11", {{}, {.mark = "CHD"}});
    const int frames = view->frames;
    load("V11", {});
    EXPECT_EQ(model->ChannelPresent, PerChannel<std::uint8_t>{});
    EXPECT_EQ(view->ticks, PerChannel<bool>{});
    for (const ZeroMarker& marker : view->markers) {
        EXPECT_FALSE(marker.shown);
    }
    EXPECT_EQ(view->frames, frames + 7); // the graticule only, once for each tick that is cleared and at the end
    EXPECT_TRUE(view->tableLoaded);
    EXPECT_EQ(view->selectedRow, 5); // clearing ticks moves the row
}

TEST_F(SimpleWavTest, ASampleCountOf0StillReadsOneSampleAndSeeksTheNextBlockOneSlotLater) {
    Block none{.screenPoints = 3, .sampleCount = 0, .samples = {77}, .filling = 3};
    load("V11", {none, {.mark = "CH2"}});
    EXPECT_EQ(model->SampleData(0, 0), 77);
    EXPECT_EQ(model->SampleCount[0], 0);
    EXPECT_EQ(model->PeakToPeak[0], 0);
    EXPECT_EQ(model->ChannelPresent[1], 1);
    EXPECT_EQ(model->SampleData(1, 3), 4);
}

TEST_F(SimpleWavTest, ASampleCountOf0WithoutTheFurtherSlotLosesTheNextBlock) {
    Block none{.screenPoints = 3, .sampleCount = 0, .samples = {77}, .filling = 2};
    load("V11", {none, {.mark = "CH2"}});
    EXPECT_EQ(model->ChannelPresent[1], 0);
}

TEST_F(SimpleWavTest, ASampleCountLargerThanScreenPointsSkipsNoFilling) {
    load("V11", {{.screenPoints = 2, .sampleCount = 4}, {.mark = "CH2"}});
    EXPECT_EQ(model->ChannelPresent[1], 1);
    EXPECT_EQ(model->SampleData(0, 3), 4);
}

TEST_F(SimpleWavTest, FillingIsSkippedByScreenPoints) {
    load("V11", {{.screenPoints = 9, .sampleCount = 4, .filling = 5}, {.mark = "CH2"}});
    EXPECT_EQ(model->ChannelPresent[1], 1);
}

TEST_F(SimpleWavTest, OfTwoBlocksWithTheSameIdTheLaterOverwritesTheEarlier) {
    load("V11", {{}, {.voltIndex = 3, .samples = {9, 8, 7, 6}}});
    EXPECT_EQ(model->SampleData(0, 0), 9);
    EXPECT_EQ(model->VoltIndexView[0], 2);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 0}));
}

TEST_F(SimpleWavTest, ABlockIdOfXAfterAGoodBlockOverwritesThatChannelsFields) {
    load("V11", {{.mark = "CH2"}, {.mark = "CHX", .timeIndex = 3, .samples = {-1, -2, -3, -4}}});
    EXPECT_EQ(model->TimeIndex[1], 3);
    EXPECT_EQ(model->SampleData(1, 0), -1);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{0, 1, 0, 0, 0, 0}));
    EXPECT_TRUE(view->ticks[1]);
}

TEST_F(SimpleWavTest, AFirstBlockOfUnknownIdLandsInChannel0WhichStaysAbsent) {
    load("V11", {{.mark = "CHX", .timeIndex = 3}});
    EXPECT_EQ(model->TimeIndex[0], 3);
    EXPECT_EQ(model->SampleCount[0], 4);
    EXPECT_EQ(model->ChannelPresent, PerChannel<std::uint8_t>{});
    EXPECT_FALSE(view->ticks[0]);
    EXPECT_FALSE(view->markers[0].shown);
    EXPECT_EQ(view->rows[0], u"ch1          50 nS          500 mV       / 1"_s);
}

TEST_F(SimpleWavTest, BytesAfterTheLastBlockThatDoNotBeginWithCEndLoadingQuietly) {
    QByteArray content = capture("V11", {{}});
    content += "garbage";
    load(content);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(view->frames, 8); // six ticks cleared, one set, and the end
    EXPECT_TRUE(view->tableLoaded);
}

TEST_F(SimpleWavTest, BytesAfterTheLastBlockThatBeginWithCButNotWithChEndLoadingToo) {
    QByteArray content = capture("V11", {{}});
    content += "CX1";
    load(content);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 0}));
}

TEST_F(SimpleWavTest, AW11FileAfterAV01FileRelabelsTheNineRows) {
    load("V01", {{}});
    EXPECT_EQ(model->FileKind, 2);
    EXPECT_EQ(view->timeList[26], u"2.5 S"_s);
    load("W11", {{}});
    EXPECT_EQ(model->FileKind, 5);
    const std::vector<std::pair<std::size_t, QString>> rows{{2, u"20 nS"_s},  {5, u"200nS"_s},  {8, u"2  uS"_s},
                                                            {11, u"20 uS"_s}, {14, u"200uS"_s}, {17, u"2  mS"_s},
                                                            {20, u"20 mS"_s}, {23, u"200mS"_s}, {26, u"2   S"_s}};
    for (const auto& [row, text] : rows) {
        EXPECT_EQ(view->timeList[row], text);
        EXPECT_EQ(model->TimeBaseText[row], text);
    }
    EXPECT_EQ(view->timeList[3], u"50 nS"_s);
}

TEST_F(SimpleWavTest, TheMarkerIsPlacedByTheZeroLevel) {
    load("V11", {{.zeroLevel = 100}, {.mark = "CH2", .zeroLevel = 0}, {.mark = "CHA", .zeroLevel = -100}});
    EXPECT_EQ(view->markers[0].top, Twips(-105.0)); // 6030 x 0 / 200 - 210 / 2
    EXPECT_EQ(view->markers[1].top, Twips(2910.0));
    EXPECT_EQ(view->markers[2].top, Twips(5925.0));
    EXPECT_EQ(view->markers[3].top, Twips(3000.0)); // never placed
}

TEST_F(SimpleWavTest, TheVoltListFollowsTheLastProbeAndStaysForAnUnknownOne) {
    load("V11", {{.probeExp = 2}});
    EXPECT_EQ(view->voltList[0], u"500 mV"_s);
    EXPECT_EQ(view->rows[0], u"ch1          500uS          50.0 V       / 100"_s);
    load("V11", {{.mark = "CH2", .probeExp = 4}});
    EXPECT_EQ(view->voltList[0], u"5.00mv"_s) << "the list of the channels that the load has cleared";
    EXPECT_EQ(view->rows[1], u"ch2          500uS          500 mV       / 10000"_s);
}

TEST_F(SimpleWavTest, OnlyTheLowerHalfOfTheProbeFieldIsRead) {
    load("V11", {{.probeExp = -1}});
    EXPECT_EQ(model->ProbeExp[0], -1);
    EXPECT_EQ(view->rows[0], u"ch1          500uS          500 mV       / 0.1"_s);
}

TEST_F(SimpleWavTest, ALoadHidesTheStandInsAndEndsOnTheLastChannelThatItTicked) {
    load("V11", {{}, {.mark = "CHC"}});
    EXPECT_FALSE(view->markers[3].standInShown);
    EXPECT_EQ(view->selectedRow, 4);
    EXPECT_TRUE(view->markers[0].shown);
    EXPECT_TRUE(view->markers[4].shown);
}

TEST_F(SimpleWavTest, BlocksInAnotherOrderLeaveTheRowOfTheLastBlockCurrent) {
    load("V11", {{.mark = "CHC"}, {.mark = "CH1"}, {.mark = "CHA"}});
    EXPECT_EQ(view->selectedRow, 2);
    EXPECT_EQ(view->CurChannel, 2);
    EXPECT_EQ(frameTitles(view->titled).channel, u"A   "_s);
    load("V11", {{.mark = "CHD"}, {.mark = "CH1"}});
    EXPECT_EQ(view->selectedRow, 0);
    EXPECT_EQ(view->markers[0].back, model->LineColor[0]);
}

TEST_F(SimpleWavTest, LoadingAShorterCaptureDoesNotClearTheTail) {
    load("V11", {{}});
    load("V11", {{.screenPoints = 2, .sampleCount = 2, .samples = {50, 60}}});
    EXPECT_EQ(model->SampleData(0, 0), 50);
    EXPECT_EQ(model->SampleData(0, 2), 3);
    EXPECT_EQ(model->PeakToPeak[0], 10);
}

} // namespace
} // namespace sixtrace::test
