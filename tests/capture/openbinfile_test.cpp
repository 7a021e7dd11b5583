// SPDX-License-Identifier: MIT
#include "capture/bytes.h"

#include "support/strings.h"

namespace sixtrace::test {
namespace {

/// A block in the field order of the older reader: frequency after the time index, no probe, no filling.
struct OlderBlock {
    const char* mark = "CH1";
    std::int32_t screenPoints = 9;
    std::int32_t scanPoint = 2;
    std::int32_t timeIndex = 15;
    float frequency = 1000;
    std::int32_t zeroLevel = 40;
    std::int32_t voltIndex = 6;
    float interval = 5;
    float period = 900;
    float voltPerCount = 20;
    std::vector<int> samples{1, 2, 3};

    void appendTo(Bytes& bytes) const {
        bytes.text(mark).int32(0).int32(screenPoints).int32(static_cast<std::int32_t>(samples.size()));
        bytes.int32(scanPoint).int32(timeIndex).real(frequency).int32(zeroLevel).int32(voltIndex);
        bytes.real(interval).real(period).real(voltPerCount);
        for (const int sample : samples) {
            bytes.int16(sample);
        }
    }
};

class OpenBinFileTest : public CaptureTest {
protected:
    BinFileOutcome open(const std::vector<OlderBlock>& blocks, const char* tag = "bin") {
        Bytes bytes;
        bytes.header(tag);
        for (const OlderBlock& block : blocks) {
            block.appendTo(bytes);
        }
        return OpenBinFile(put(bytes.bytes()), view->scope());
    }
};

TEST_F(OpenBinFileTest, AFirstBlockOfUnknownIdLandsInChannel0WhichStaysAbsent) {
    ASSERT_EQ(open({{.mark = "CHX", .timeIndex = 3, .samples = {41, 42}}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->TimeIndex[0], 3);
    EXPECT_EQ(model->SampleCount[0], 2);
    EXPECT_EQ(model->SampleData(0, 1), 42);
    EXPECT_EQ(model->ChannelPresent, PerChannel<std::uint8_t>{});
}

TEST_F(OpenBinFileTest, ReadsAFieldOrderOfItsOwn) {
    ASSERT_EQ(open({{}, {.mark = "CHD", .samples = {-7, -8}}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 1}));
    EXPECT_EQ(model->ScreenPoints[0], 9);
    EXPECT_EQ(model->SampleCount[0], 3);
    EXPECT_EQ(model->ScanPoint[0], 2);
    EXPECT_EQ(model->TimeIndex[0], 15);
    EXPECT_EQ(model->VoltIndex[0], 6);
    EXPECT_EQ(model->SampleInterval[0], 5.0F);
    EXPECT_EQ(model->Period[0], 900.0F);
    EXPECT_EQ(model->VoltPerCount[0], 20.0F);
    EXPECT_EQ(model->SampleData(0, 2), 3);
    EXPECT_EQ(model->SampleData(5, 1), -8); // no gap was skipped after the first block
    EXPECT_TRUE(view->ticks[5]);
    EXPECT_TRUE(view->markers[5].shown);
}

TEST_F(OpenBinFileTest, TakesTheTagBinOnly) {
    EXPECT_EQ(open({{}}, "V11"), BinFileOutcome::NotACapture);
    EXPECT_EQ(model->ChannelPresent[0], 0);
    EXPECT_EQ(OpenBinFile(put("KQ"), view->scope()), BinFileOutcome::NotACapture);
    EXPECT_EQ(OpenBinFile(path(u"none.bin"_s), view->scope()), BinFileOutcome::MissingFile);
    EXPECT_FALSE(QFile::exists(path(u"none.bin"_s)));
    EXPECT_EQ(view->frames, 0);
}

TEST_F(OpenBinFileTest, LeavesTimeBasesNameAndFileKindAlone) {
    load("W11", {{}});
    view->modelName = u"kept"_s;
    ASSERT_EQ(open({{}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->FileKind, 5);
    EXPECT_EQ(model->TimeBaseText[2], u"20 nS"_s);
    EXPECT_EQ(view->timeList[2], u"20 nS"_s);
    EXPECT_EQ(view->modelName, u"kept"_s);
}

TEST_F(OpenBinFileTest, ClearsOnlyChannelPresent) {
    load("V11", {{.probeExp = 1}, {.mark = "CH2"}});
    model->ChannelXShift[1] = 12;
    const QString row = view->rows[1];
    ASSERT_EQ(open({{}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->ChannelPresent, (PerChannel<std::uint8_t>{1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(model->SampleCount[1], 4);
    EXPECT_EQ(model->ChannelXShift[1], 12.0F);
    EXPECT_EQ(view->rows[1], row);
    EXPECT_TRUE(view->markers[1].shown);
    EXPECT_TRUE(view->ticks[1]);
}

TEST_F(OpenBinFileTest, StoresEveryFrequencyInChannel0) {
    ASSERT_EQ(open({{.frequency = 50}, {.mark = "CHB", .frequency = 60}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->Frequency, (PerChannel<float>{60, 0, 0, 0, 0, 0}));
}

TEST_F(OpenBinFileTest, StoresTheZeroLevelRawAndMovesNoMarker) {
    ASSERT_EQ(open({{.zeroLevel = -30}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->ZeroLevel[0], -30);
    EXPECT_EQ(view->markers[0].top, Twips(3000.0));
}

TEST_F(OpenBinFileTest, VoltIndexViewIsVoltIndexFile) {
    ASSERT_EQ(open({{.voltIndex = 6}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->VoltIndexFile[0], 6);
    EXPECT_EQ(model->VoltIndexView[0], 6);
    EXPECT_EQ(view->rows[0], u"ch1          500uS          500 mV       / 1"_s); // VoltText, row 6
}

TEST_F(OpenBinFileTest, ComputesNoPeakToPeakAndKeepsTheProbe) {
    load("V11", {{.probeExp = 2, .samples = {0, 10, 20, 30}}});
    ASSERT_EQ(open({{.samples = {5, 500}}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->PeakToPeak[0], 30);
    EXPECT_EQ(model->ProbeExp[0], 2);
    EXPECT_EQ(view->rows[0], u"ch1          500uS          500 mV       / 100"_s);
}

TEST_F(OpenBinFileTest, LeavesTheStandInsAndLoadsTheTableAfterwards) {
    view->tableLoaded = false;
    ASSERT_EQ(open({{}}), BinFileOutcome::Loaded);
    EXPECT_TRUE(view->markers[3].standInShown);
    EXPECT_TRUE(view->tableLoaded);
    EXPECT_EQ(view->frames, 2); // a tick, and the end
}

TEST_F(OpenBinFileTest, ABlockWithoutSamplesReadsNone) {
    model->SampleData(0, 0) = 99;
    ASSERT_EQ(open({{.samples = {}}, {.mark = "CH2"}}), BinFileOutcome::Loaded);
    EXPECT_EQ(model->SampleData(0, 0), 99);
    EXPECT_EQ(model->ChannelPresent[1], 1);
}

TEST_F(OpenBinFileTest, CutAtEveryByteItEndsQuietly) {
    Bytes bytes;
    bytes.header("bin");
    OlderBlock{}.appendTo(bytes);
    OlderBlock{.mark = "CH2"}.appendTo(bytes);
    for (int length = 6; length <= bytes.bytes().size(); ++length) {
        ASSERT_EQ(OpenBinFile(put(bytes.bytes().left(length)), view->scope()), BinFileOutcome::Loaded);
    }
    EXPECT_EQ(model->ChannelPresent[1], 1);
    EXPECT_EQ(model->SampleData(1, 2), 3);
}

} // namespace
} // namespace sixtrace::test
