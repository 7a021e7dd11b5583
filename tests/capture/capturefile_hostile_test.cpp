// SPDX-License-Identifier: MIT
// Damaged and hostile captures, compared with a second reader that goes step by step.
#include "capture/bytes.h"
#include "capture/stepbystep.h"
#include "support/strings.h"

#include <algorithm>
#include <random>

namespace sixtrace::test {
namespace {

/// Everything that a load writes, as one comparable list of numbers.
std::vector<double> numbersOf(const publicM& m) {
    std::vector<double> all{static_cast<double>(m.FileKind)};
    const auto add = [&all](const auto& fields) {
        for (const auto field : fields) {
            all.push_back(static_cast<double>(field));
        }
    };
    add(m.ChannelPresent);
    add(m.ScreenPoints);
    add(m.SampleCount);
    add(m.ScanPoint);
    add(m.TimeIndex);
    add(m.ZeroLevel);
    add(m.VoltIndex);
    add(m.ProbeExp);
    add(m.SampleInterval);
    add(m.Frequency);
    add(m.Period);
    add(m.VoltPerCount);
    add(m.TimeIndexFile);
    add(m.VoltIndexFile);
    add(m.TimeIndexView);
    add(m.VoltIndexView);
    add(m.PeakToPeak);
    add(m.ChannelXShift);
    for (int channel = 0; channel < kChannels; ++channel) {
        for (int i = 0; i < kSampleRows; ++i) {
            all.push_back(m.SampleData(channel, i));
        }
    }
    return all;
}

/// What an earlier load left, recognisable in every field.
void fillStale(publicM& m) {
    for (std::size_t c = 0; c < 6; ++c) {
        const auto n = static_cast<std::int16_t>(c);
        m.ScreenPoints[c] = 7 + n;
        m.ScanPoint[c] = 2;
        m.TimeIndex[c] = m.TimeIndexFile[c] = n;
        m.ZeroLevel[c] = 90 + n;
        m.VoltIndex[c] = m.VoltIndexFile[c] = static_cast<std::int16_t>(n + 1);
        m.SampleInterval[c] = 0.5F;
        m.Frequency[c] = 440;
        m.Period[c] = 2;
        m.VoltPerCount[c] = 3;
        m.PeakToPeak[c] = 1234;
        m.ChannelXShift[c] = 8;
        for (int i = 0; i < kSampleRows; ++i) {
            m.SampleData(static_cast<int>(c), i) = static_cast<std::int16_t>((i * 37 + n * 11) % 401 - 200);
        }
    }
}

class HostileCapture : public CaptureTest {
protected:
    void compare(const QByteArray& content, const std::string& what) {
        fillStale(*model);
        const auto expected = std::make_unique<publicM>(*model);
        load(content);
        expected->FileKind = model->FileKind;
        StepByStep(content, *expected).read();
        ASSERT_TRUE(numbersOf(*model) == numbersOf(*expected)) << what;
    }
};

QByteArray threeBlocks(const char* tag) {
    return capture(tag, {{.screenPoints = 6, .sampleCount = 4, .filling = 2},
                         {.mark = "CHX", .screenPoints = 3, .sampleCount = 3, .samples = {9, -9, 8}},
                         {.mark = "CHD", .zeroLevel = -50, .voltIndex = 2, .probeExp = 1}});
}

TEST_F(HostileCapture, CutAtEveryByteItKeepsWhatWasReadAndLeavesTheRest) {
    for (const char* tag : {"bin", "V11"}) {
        const QByteArray whole = threeBlocks(tag);
        for (int length = 6; length <= whole.size(); ++length) {
            ASSERT_NO_FATAL_FAILURE(
                compare(whole.left(length), std::string(tag) + " cut at " + std::to_string(length)));
        }
    }
}

TEST_F(HostileCapture, CutInsideItsFirstSixBytesItIsRefused) {
    fillStale(*model);
    const std::vector<double> before = numbersOf(*model);
    for (int length = 0; length < 6; ++length) {
        load(threeBlocks("V11").left(length));
        model->FileKind = 0;
        EXPECT_TRUE(numbersOf(*model) == before) << length;
        EXPECT_EQ(view->frames, 0);
    }
}

TEST_F(HostileCapture, CountsOfEverySizeEndAsStepByStepReadingWould) {
    for (const std::int32_t count : {0, -1, 1, 3, 4, 5, 10231, 10232, 2147483647, -2147483647 - 1}) {
        for (const std::int32_t slots : {0, -1, 1, 4, 5, 10232, 2147483647, -2147483647 - 1}) {
            const QByteArray content =
                capture("V11", {{.screenPoints = slots, .sampleCount = count, .filling = 1}, {.mark = "CHA"}});
            ASSERT_NO_FATAL_FAILURE(
                compare(content, std::to_string(count) + " samples in " + std::to_string(slots) + " slots"));
        }
    }
}

TEST_F(HostileCapture, SamplesBeyondTheArrayAreDroppedButSteppedOver) {
    Block full{.screenPoints = 10233, .sampleCount = 10233};
    full.samples.assign(10233, 5);
    full.samples[10230] = 105;
    full.samples[10231] = 3000; // does not count for the extremes
    load("V11", {full, {.mark = "CH2"}});
    EXPECT_EQ(model->SampleCount[0], 10233);
    EXPECT_EQ(model->SampleData(0, 10230), 105);
    EXPECT_EQ(model->PeakToPeak[0], 100);
    EXPECT_EQ(model->SampleData(1, 0), 1); // what follows in memory belongs to other samples
    EXPECT_EQ(model->ChannelPresent[1], 1);
}

TEST_F(HostileCapture, AFullCaptureIsReadWhole) {
    Block full{.screenPoints = 10231, .sampleCount = 10231};
    full.samples.clear();
    for (int i = 0; i < 10231; ++i) {
        full.samples.push_back(i % 3001 - 1500);
    }
    std::vector<Block> blocks;
    for (const char* mark : {"CH1", "CH2", "CHA", "CHB", "CHC", "CHD"}) {
        blocks.push_back(full);
        blocks.back().mark = mark;
        blocks.back().samples[0] = static_cast<int>(blocks.size());
    }
    ASSERT_NO_FATAL_FAILURE(compare(capture("W11", blocks), "full"));
    for (int channel = 0; channel < 6; ++channel) {
        EXPECT_EQ(model->ChannelPresent[channel], 1);
        EXPECT_EQ(model->SampleData(channel, 0), channel + 1);
        EXPECT_EQ(model->SampleData(channel, 10230), 10230 % 3001 - 1500);
    }
}

TEST_F(HostileCapture, SamplesStayWhenTheReadersWindowMovesOn) {
    // 300,000 bytes of filling lie between the two blocks: the window over the file cannot hold both.
    load("V11", {{.screenPoints = 150000, .samples = {21, 22, 23, 24}, .filling = 149996},
                 {.mark = "CH2", .samples = {31, 32, 33, 34}}});
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(model->SampleData(0, i), 21 + i);
        EXPECT_EQ(model->SampleData(1, i), 31 + i);
    }
}

TEST_F(HostileCapture, ManyBlocksBeyondTheReadersWindowAreAllRead) {
    std::vector<Block> blocks(3000);
    blocks.push_back({.mark = "CHD", .samples = {6, 6, 6, 7}});
    ASSERT_NO_FATAL_FAILURE(compare(capture("V11", blocks), "many"));
    EXPECT_EQ(model->SampleData(5, 3), 7);
}

TEST_F(HostileCapture, FlippedBytesNeverReadDifferentlyFromStepByStep) {
    std::mt19937 random(7);
    const QByteArray whole = threeBlocks("V11");
    for (int i = 0; i < 400; ++i) {
        QByteArray content = whole;
        for (int flips = 0; flips <= i % 3; ++flips) {
            const qsizetype at = 10 + static_cast<qsizetype>(random()) % (whole.size() - 10);
            content[at] = static_cast<char>(random());
        }
        fillStale(*model);
        const auto expected = std::make_unique<publicM>(*model);
        load(content);
        expected->FileKind = model->FileKind;
        StepByStep(content, *expected).read();
        const auto actual = numbersOf(*model);
        const auto wanted = numbersOf(*expected);
        const bool same = std::equal(actual.begin(), actual.end(), wanted.begin(), wanted.end(),
                                     [](double a, double b) { return a == b || (a != a && b != b); });
        ASSERT_TRUE(same) << i;
    }
}

TEST_F(HostileCapture, OfAFileWithManyBlocksOnlyTheFirstOnesAndTheLastDrawAFrame) {
    // 100 blocks alternate between two channels; each has no sample and one slot.
    std::vector<Block> blocks;
    for (int i = 0; i < 100; ++i) {
        Block block{.mark = i % 2 == 0 ? "CH1" : "CHD", .sampleCount = 0};
        block.screenPoints = 1;
        block.timeIndex = i % 28;
        block.samples.clear();
        block.filling = 2;
        blocks.push_back(block);
    }
    load("V11", blocks);
    EXPECT_EQ(view->frames, 6 + 64 + 1 + 1) << "cleared ticks, the first blocks, the last block, the end";
    EXPECT_EQ(view->selectedRow, 5);
    EXPECT_EQ(view->CurChannel, 5);
    EXPECT_TRUE(view->ticks[0]);
    EXPECT_TRUE(view->markers[0].shown);
    EXPECT_EQ(view->timeRow, 99 % 28);
    EXPECT_EQ(frameTitles(view->titled).channel, u"D   "_s);
    EXPECT_EQ(model->TimeIndexView[0], 98 % 28);
}

} // namespace
} // namespace sixtrace::test
