// SPDX-License-Identifier: MIT
#include "capture/samplespread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace sixtrace {
namespace {

/// Samples as a file holds them, at an odd address.
struct FileSamples {
    std::vector<std::int16_t> values;
    std::vector<std::byte> bytes{std::byte{0}};

    FileSamples(std::mt19937& random, std::size_t count) {
        std::uniform_int_distribution<int> sample(-32768, 32767);
        for (std::size_t i = 0; i < count; ++i) {
            values.push_back(static_cast<std::int16_t>(sample(random)));
            const auto bits = static_cast<std::uint16_t>(values.back());
            bytes.push_back(static_cast<std::byte>(bits & 0xFFU));
            bytes.push_back(static_cast<std::byte>(bits >> 8U));
        }
    }
    [[nodiscard]] const std::byte* data() const { return bytes.data() + 1; }
};

class SampleSpreadTest : public ::testing::TestWithParam<Vectors> {
protected:
    std::unique_ptr<SampleArray<std::int16_t>> target = std::make_unique<SampleArray<std::int16_t>>();
    SampleSpread spread{*target, GetParam()};
    std::mt19937 random{11};

    void fillTarget(std::int16_t value) { std::fill_n(target->channel(0), SampleArray<std::int16_t>::kSize, value); }
};

INSTANTIATE_TEST_SUITE_P(WithAndWithoutVectors, SampleSpreadTest,
                         ::testing::Values(Vectors::Allowed, Vectors::Avoided));

TEST_P(SampleSpreadTest, EachChannelsSamplesLieSixApartAndNothingElseChanges) {
    std::uniform_int_distribution<std::size_t> length(0, 200);
    for (int round = 0; round < 50; ++round) {
        fillTarget(77);
        std::vector<FileSamples> samples;
        samples.reserve(kChannels);
        for (int channel = 0; channel < kChannels; ++channel) {
            samples.emplace_back(random, round % 5 == 0 ? std::size_t{kSampleRows} : length(random));
        }
        for (int channel = 0; channel < kChannels; ++channel) {
            const FileSamples& own = samples[static_cast<std::size_t>(channel)];
            spread.add(channel, own.data(), own.values.size());
        }
        spread.flush();
        for (int channel = 0; channel < kChannels; ++channel) {
            const auto& values = samples[static_cast<std::size_t>(channel)].values;
            for (int i = 0; i < kSampleRows; ++i) {
                const auto at = static_cast<std::size_t>(i);
                ASSERT_EQ((*target)(channel, i), at < values.size() ? values[at] : 77) << channel << ", " << i;
            }
        }
    }
}

TEST_P(SampleSpreadTest, AChannelThatComesAgainOverwritesItsFirstSamples) {
    const FileSamples first(random, 100);
    const FileSamples second(random, 40);
    spread.add(2, first.data(), 100);
    spread.add(2, second.data(), 40);
    spread.flush();
    for (int i = 0; i < 100; ++i) {
        const auto at = static_cast<std::size_t>(i);
        ASSERT_EQ((*target)(2, i), i < 40 ? second.values[at] : first.values[at]) << i;
    }
}

TEST_P(SampleSpreadTest, SamplesBeyondTheArrayAreDropped) {
    const FileSamples samples(random, kSampleRows + 5);
    spread.add(5, samples.data(), samples.values.size());
    spread.flush();
    EXPECT_EQ((*target)(5, kSampleRows - 1), samples.values[kSampleRows - 1]);
}

TEST_P(SampleSpreadTest, AFlushWithNothingGatheredChangesNothing) {
    fillTarget(-3);
    spread.flush();
    EXPECT_TRUE(std::all_of(target->channel(0), target->channel(0) + SampleArray<std::int16_t>::kSize,
                            [](std::int16_t value) { return value == -3; }));
}

TEST_P(SampleSpreadTest, ExtremesAreThoseOfAllSamplesWhereverTheyLie) {
    for (const std::size_t count : {1U, 2U, 31U, 32U, 33U, 63U, 64U, 65U, 96U, 97U, 500U}) {
        for (std::size_t place = 0; place < count; ++place) {
            std::vector<std::byte> bytes(2 * count, std::byte{0});
            bytes[2 * place + 1] = std::byte{0x80}; // -32768
            const SampleExtremes least = extremesOf(bytes.data(), count, GetParam());
            EXPECT_EQ(least.least, -32768);
            EXPECT_EQ(least.greatest, count == 1 ? -32768 : 0);
            bytes[2 * place] = std::byte{0xFF};
            bytes[2 * place + 1] = std::byte{0x7F}; // 32767
            const SampleExtremes greatest = extremesOf(bytes.data(), count, GetParam());
            EXPECT_EQ(greatest.greatest, 32767);
            EXPECT_EQ(greatest.least, count == 1 ? 32767 : 0);
        }
    }
}

TEST_P(SampleSpreadTest, OfNoSamplesTheGreatestLiesBelowTheLeast) {
    const SampleExtremes none = extremesOf(nullptr, 0, GetParam());
    EXPECT_LT(none.greatest, none.least);
}

} // namespace
} // namespace sixtrace
