// SPDX-License-Identifier: MIT
#include "capture/capturecheck.h"

#include "capture/bytes.h"
#include "support/strings.h"

#include <sys/stat.h>

namespace sixtrace::test {
namespace {

/// Offset of a field of the first block, behind the header.
constexpr int kScreenPointsAt = 10 + 7;
constexpr int kSampleCountAt = 10 + 11;
constexpr int kTimeIndexAt = 10 + 19;
constexpr int kZeroLevelAt = 10 + 23;
constexpr int kVoltIndexAt = 10 + 27;
constexpr int kProbeExpAt = 10 + 31;
constexpr int kFrequencyAt = 10 + 39;

class CaptureCheck : public CaptureTest {
protected:
    [[nodiscard]] std::vector<CaptureFault> check(const QByteArray& content) const {
        return checkCapture(put(content));
    }
    [[nodiscard]] std::vector<CaptureFault> check(const std::vector<Block>& blocks) const {
        return check(capture("V11", blocks));
    }
    /// Exactly one fault, at `offset`, that speaks of `word`.
    static void expectOne(const std::vector<CaptureFault>& faults, std::int64_t offset, const QString& word) {
        ASSERT_EQ(faults.size(), 1U) << (faults.empty() ? QString() : faults.back().text).toStdString();
        EXPECT_EQ(faults[0].offset, offset);
        EXPECT_TRUE(faults[0].text.contains(word)) << faults[0].text.toStdString();
    }
};

TEST_F(CaptureCheck, ASoundFileHasNoFault) {
    EXPECT_TRUE(check({{}, {.mark = "CHD", .screenPoints = 9, .filling = 5}}).empty());
    EXPECT_TRUE(check(std::vector<Block>{}).empty());
    EXPECT_TRUE(check(capture("bin", {{}, {.mark = "CH2"}})).empty());
}

TEST_F(CaptureCheck, OneZeroByteAfterTheLastBlockIsNoFaultAndTwoAre) {
    const QByteArray sound = capture("V11", {{}});
    EXPECT_TRUE(check(sound + QByteArray(1, '\0')).empty());
    EXPECT_EQ(check(sound + QByteArray(2, '\0')).size(), 1U);
    EXPECT_EQ(check(sound + QByteArray(1, 'x')).size(), 1U);
}

TEST_F(CaptureCheck, WrongMagic) {
    expectOne(check(QByteArray("PNGV11....")), 0, u"\"PNG\""_s);
    expectOne(check(QByteArray()), 0, u"empty"_s);
    expectOne(check(QByteArray("\x01\x02\x03")), 0, u"\\x01\\x02\\x03"_s);
}

TEST_F(CaptureCheck, UnknownTag) {
    expectOne(check(QByteArray("KQXV02\0\0\0\0", 10)), 3, u"\"V02\""_s);
}

TEST_F(CaptureCheck, CutInItsHeader) {
    expectOne(check(QByteArray("KQXV11\0\0", 8)), 8, u"header"_s);
}

TEST_F(CaptureCheck, CutAtAnyByteAfterTheHeaderItHasAFault) {
    const QByteArray whole = capture("V11", {{}});
    for (int length = 0; length < whole.size(); ++length) {
        const auto faults = check(whole.left(length));
        EXPECT_EQ(faults.empty(), length == 10) << length; // a header alone is a sound capture without channels
        for (const CaptureFault& fault : faults) {
            EXPECT_LE(fault.offset, length);
        }
    }
}

TEST_F(CaptureCheck, CutInAFieldNamesTheField) {
    expectOne(check(capture("V11", {{}}).left(kTimeIndexAt + 2)), kTimeIndexAt, u"TimeIndex"_s);
}

TEST_F(CaptureCheck, CutInItsSamplesSaysHowManyThereAre) {
    const QByteArray whole = capture("V11", {{}});
    expectOne(check(whole.left(whole.size() - 3)), whole.size() - 3, u"after sample 2 of 4"_s);
}

TEST_F(CaptureCheck, CutInItsFilling) {
    const QByteArray whole = capture("V11", {{.screenPoints = 9, .filling = 5}});
    expectOne(check(whole.left(whole.size() - 4)), whole.size() - 4, u"4 bytes"_s);
}

TEST_F(CaptureCheck, AChannelMayHoldNoSample) {
    // Four slots, and nothing behind them: the further slot that a reader steps over need not be there.
    EXPECT_TRUE(check({{.sampleCount = 0}}).empty());
    EXPECT_TRUE(check({{.sampleCount = 0, .filling = 1}}).empty());
    EXPECT_TRUE(check({{.screenPoints = 1, .sampleCount = 0, .samples = {9}}}).empty());
}

TEST_F(CaptureCheck, SlotsWithoutSamplesHaveToBeInTheFile) {
    const QByteArray whole = capture("V11", {{.sampleCount = 0}});
    expectOne(check(whole.left(whole.size() - 1)), whole.size() - 1, u"ends 1 bytes before"_s);
}

TEST_F(CaptureCheck, TheBlockAfterOneWithoutSamplesIsReadOneSlotLater) {
    EXPECT_TRUE(check({{.sampleCount = 0, .filling = 1}, {.mark = "CH2"}}).empty());
    expectOne(check({{.sampleCount = 0}, {.mark = "CH2"}}), 10 + 51 + 8 + 2, u"57 bytes after the last channel"_s);
}

TEST_F(CaptureCheck, ASampleCountOfMinus1) {
    const auto faults = check({{.sampleCount = -1}});
    ASSERT_FALSE(faults.empty());
    EXPECT_EQ(faults[0].offset, kSampleCountAt);
    EXPECT_EQ(faults[0].text, u"ch1: SampleCount is -1, a channel holds 0 to 10231 samples"_s);
}

TEST_F(CaptureCheck, ASampleCountOf10232) {
    Block block{.screenPoints = 10232, .sampleCount = 10232};
    block.samples.assign(10232, 1);
    expectOne(check({block}), kSampleCountAt, u"SampleCount is 10232"_s);
}

TEST_F(CaptureCheck, ASampleCountOf2147483647) {
    const auto faults = check({{.sampleCount = 2147483647}});
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_EQ(faults[0].offset, kSampleCountAt);
    EXPECT_TRUE(faults[1].text.contains(u"after sample 4 of 2147483647"_s));
}

TEST_F(CaptureCheck, ScreenPointsOf0) {
    expectOne(check({{.screenPoints = 0}}), kScreenPointsAt, u"ScreenPoints is 0"_s);
}

TEST_F(CaptureCheck, ATimeIndexOf28OrNegative) {
    expectOne(check({{.timeIndex = 28}}), kTimeIndexAt, u"TimeIndex is 28"_s);
    expectOne(check({{.timeIndex = -1}}), kTimeIndexAt, u"TimeIndex is -1"_s);
    EXPECT_TRUE(check({{.timeIndex = 27}}).empty());
}

TEST_F(CaptureCheck, AVoltIndexOf0Or11) {
    expectOne(check({{.voltIndex = 0}}), kVoltIndexAt, u"VoltIndex is 0"_s);
    expectOne(check({{.voltIndex = 11}}), kVoltIndexAt, u"VoltIndex is 11"_s);
    EXPECT_TRUE(check({{.voltIndex = 10}}).empty());
}

TEST_F(CaptureCheck, AZeroLevelOffTheScreen) {
    expectOne(check({{.zeroLevel = 101}}), kZeroLevelAt, u"ZeroLevel is 101"_s);
    EXPECT_TRUE(check({{.zeroLevel = -100}}).empty());
}

TEST_F(CaptureCheck, CutInTheMarkOfABlock) {
    const QByteArray whole = capture("V11", {{}, {.mark = "CH2"}});
    expectOne(check(whole.left(10 + 59 + 1)), 10 + 59, u"the file ends in the mark of a channel block"_s);
    expectOne(check(whole.left(10 + 59 + 2)), 10 + 59, u"the file ends in the mark of a channel block"_s);
}

TEST_F(CaptureCheck, NeitherSlotsNorSamplesNeedAByte) {
    const QByteArray whole = capture("V11", {{.screenPoints = 0, .sampleCount = 0, .samples = {}}});
    expectOne(check(whole), kScreenPointsAt, u"ScreenPoints is 0"_s);
}

TEST_F(CaptureCheck, AForeignProbe) {
    EXPECT_TRUE(check({{.probeExp = 3}}).empty());
    expectOne(check({{.probeExp = -1}}), kProbeExpAt, u"ProbeExp is -1"_s);
    expectOne(check({{.probeExp = 4}}), kProbeExpAt, u"ProbeExp is 4"_s);
}

TEST_F(CaptureCheck, AMeasurementThatIsNoNumber) {
    expectOne(check({{.frequency = std::numeric_limits<float>::quiet_NaN()}}), kFrequencyAt, u"Frequency"_s);
}

TEST_F(CaptureCheck, AnUnknownIdNamesTheChannelThatTakesItsValues) {
    expectOne(check({{.mark = "CHB"}, {.mark = "CHX"}}), 10 + 59 + 2,
              u"channel \"X\": unknown channel id; its values land in B"_s);
    // The first block of a file has no channel before it.
    expectOne(check({{.mark = "CH7"}}), 12, u"channel \"7\": unknown channel id; its values land in ch1"_s);
    const auto both = check({{.mark = "CH2"}, {.mark = "CHX"}, {.mark = "CHY"}});
    ASSERT_EQ(both.size(), 2U);
    EXPECT_TRUE(both[1].text.endsWith(u"land in ch2"_s));
}

TEST_F(CaptureCheck, TwoBlocksOfOneId) {
    expectOne(check(std::vector<Block>(2)), 10 + 59, u"second block"_s);
}

TEST_F(CaptureCheck, TrailingGarbage) {
    expectOne(check(capture("V11", {{}}) + "garbage"), 10 + 59, u"7 bytes after the last channel"_s);
}

TEST_F(CaptureCheck, AFolderInPlaceOfACapture) {
    expectOne(checkCapture(u"/"_s), 0, u"folder"_s);
}

TEST_F(CaptureCheck, AMissingFile) {
    expectOne(checkCapture(path(u"none"_s)), 0, u"no such file"_s);
}

TEST_F(CaptureCheck, APipeIsNoOrdinaryFileAndIsNotWaitedFor) {
    const QString pipe = path(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    expectOne(checkCapture(pipe), 0, u"not an ordinary file"_s);
}

TEST_F(CaptureCheck, AtMostFiftyFaultsAreNamed) {
    EXPECT_EQ(check(std::vector<Block>(500, Block{.voltIndex = 99})).size(), kFaultLimit);
}

} // namespace
} // namespace sixtrace::test
