// SPDX-License-Identifier: MIT
#include "capture/bytes.h"
#include "capture/capturecheck.h"
#include "capture/capturewriter.h"
#include "capture/scenes.h"
#include "support/strings.h"

#include <QLatin1String>

#include <set>

namespace sixtrace::test {
namespace {

class Writer : public CaptureTest {
protected:
    QByteArray scene(const char* tag, const char* name, std::uint32_t seed = 1) {
        const auto blocks = sceneBlocks(QString::fromLatin1(name), seed);
        EXPECT_TRUE(blocks.has_value()) << name;
        return captureBytes(*captureForm(tag), *blocks);
    }
};

CaptureBlock smallBlock() {
    CaptureBlock block;
    block.id = 'B';
    block.screenPoints = 3;
    block.sampleCount = 2;
    block.scanPoint = 1;
    block.timeIndex = 16;
    block.zeroLevel = -2;
    block.voltIndex = 5;
    block.probeExp = 1;
    block.sampleInterval = 1;
    block.frequency = 2;
    block.period = 0.5F;
    block.voltPerCount = -1;
    block.samples = {258, -1};
    return block;
}

TEST_F(Writer, EveryByteOfASmallCapture) {
    const QByteArray expected = QByteArray::fromHex("4b5158"
                                                    "563131"
                                                    "01000000" // KQX V11, one block
                                                    "434842"
                                                    "32000000" // CHB, 50 bytes follow
                                                    "03000000"
                                                    "02000000"
                                                    "01000000"
                                                    "10000000"
                                                    "feffffff"
                                                    "05000000"
                                                    "01000000" // probe
                                                    "0000803f"
                                                    "00000040"
                                                    "0000003f"
                                                    "000080bf" // 1 2 0.5 -1
                                                    "0201"
                                                    "ffff"
                                                    "0000"); // samples, filling
    EXPECT_EQ(captureBytes(*captureForm("V11"), {smallBlock()}).toHex(), expected.toHex());
}

TEST_F(Writer, TheFormBinHasNoProbeField) {
    const QByteArray plain = captureBytes(*captureForm("bin"), {smallBlock()});
    EXPECT_EQ(plain.size(), 10 + 47 + 6);
    EXPECT_EQ(plain.mid(10 + 31, 4).toHex(), "0000803f");
}

TEST_F(Writer, ABlockWithoutSamplesIsOneSlotLonger) {
    CaptureBlock block = smallBlock();
    block.samples.clear();
    block.sampleCount = 0;
    EXPECT_EQ(captureBytes(*captureForm("V11"), {block}).size(), 10 + 51 + 2 * 4);
}

TEST_F(Writer, EveryFormOfEverySceneIsSoundAndReadsBack) {
    for (const CaptureForm& form : captureForms()) {
        for (const Scene& entry : scenes()) {
            const auto blocks = sceneBlocks(QString::fromLatin1(entry.name), 3);
            ASSERT_TRUE(blocks.has_value());
            const QByteArray bytes = captureBytes(form, *blocks);
            load(bytes);
            EXPECT_TRUE(checkCapture(path()).empty()) << entry.name;
            EXPECT_EQ(model->FileKind, form.fileKind);
            int present = 0;
            for (const auto flag : model->ChannelPresent) {
                present += flag;
            }
            EXPECT_EQ(static_cast<std::size_t>(present), blocks->size()) << entry.name;
            for (const CaptureBlock& block : *blocks) {
                const int channel = channelOfId(block.id).value();
                const int c = channel;
                EXPECT_EQ(model->SampleCount[c], static_cast<std::int32_t>(block.samples.size()));
                EXPECT_EQ(model->SampleData(channel, model->SampleCount[c] - 1), block.samples.back());
                EXPECT_EQ(model->ZeroLevel[c], 100 - block.zeroLevel);
                EXPECT_EQ(model->ProbeExp[c], form.fileKind == 1 ? 0 : block.probeExp);
            }
        }
    }
}

TEST_F(Writer, ASeedGivesTheSameBytesAndAnotherSeedOthers) {
    EXPECT_EQ(scene("V11", "noise", 5), scene("V11", "noise", 5));
    EXPECT_NE(scene("V11", "noise", 5), scene("V11", "noise", 6));
    EXPECT_EQ(scene("V11", "sine", 5), scene("V11", "sine", 6)); // has no noise
}

TEST_F(Writer, TheScenesAreThoseThatArePromised) {
    std::set<std::string> names;
    for (const Scene& entry : scenes()) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
        EXPECT_NE(std::string(entry.description), "");
    }
    for (const char* name :
         {"sine", "square", "ramp", "six", "full", "scan-a", "scan-b", "scan-c", "scan-d", "lengths", "empty"}) {
        EXPECT_EQ(names.count(name), 1U) << name;
    }
    EXPECT_FALSE(sceneBlocks(u"no such scene"_s, 1).has_value());
    EXPECT_FALSE(sceneBlocks(QString(), 1).has_value());
}

TEST_F(Writer, TheFullSceneFillsTheArrays) {
    load(scene("W11", "full"));
    EXPECT_EQ(model->SampleCount, (PerChannel<std::int32_t>{10231, 10231, 10231, 10231, 10231, 10231}));
}

TEST_F(Writer, TheScanScenesMeetTheFourPlottingCases) {
    const auto first = [this](const char* name) {
        load(scene("V11", name));
        return std::tuple{model->TimeIndex[0] >= 22, model->SampleCount[0] >= model->ScreenPoints[0],
                          model->ScreenPoints[0] * 0.92 >= model->ScanPoint[0]};
    };
    EXPECT_FALSE(std::get<0>(first("scan-a")));
    EXPECT_EQ(std::get<0>(first("scan-b")), true);
    EXPECT_EQ(std::get<1>(first("scan-b")), false);
    EXPECT_EQ(first("scan-c"), (std::tuple{true, true, true}));
    EXPECT_EQ(first("scan-d"), (std::tuple{true, true, false}));
}

TEST_F(Writer, TheChannelsOfTheSceneLengthsDifferInLength) {
    load(scene("V11", "lengths"));
    const std::set<std::int32_t> lengths(model->SampleCount.begin(), model->SampleCount.end());
    EXPECT_EQ(lengths.size(), 6U);
}

} // namespace
} // namespace sixtrace::test
