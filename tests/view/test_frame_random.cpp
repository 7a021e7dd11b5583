// SPDX-License-Identifier: MIT
// Frames of random traces, pixel for pixel against drawing every segment in order.
#include "view/naiveframe.h"

#include "view/defaults.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>

namespace sixtrace {
namespace {

class Rendered {
public:
    Rendered()
        : picture2(kSurfaceWidth, kSurfaceHeight)
        , picHidden0(kSurfaceWidth, kSurfaceHeight) {
        model->fillTables();
        applyDefaultColours(*model);
        picture2.BackColor = model->BackColor;
        picHidden0.BackColor = 0x123456;
        picHidden0.Cls();
    }
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    Picture picture2;
    Picture picHidden0;
};

void expectSamePicture(const Picture& actual, const Picture& expected, const std::string& what) {
    for (int y = 0; y < kSurfaceHeight; ++y) {
        ASSERT_EQ(std::memcmp(actual.row(y), expected.row(y), kSurfaceWidth * 4), 0) << what << ", row " << y;
    }
}

void expectSameModel(const publicM& actual, const publicM& expected, const std::string& what) {
    ASSERT_EQ(actual.ChannelYPos, expected.ChannelYPos) << what;
    ASSERT_EQ(actual.SampleStep, expected.SampleStep) << what;
    ASSERT_EQ(actual.MsPerPixel, expected.MsPerPixel) << what;
    ASSERT_EQ(actual.VoltPerPixel, expected.VoltPerPixel) << what;
    constexpr std::size_t kBytes = SampleArray<std::int32_t>::kSize * sizeof(std::int32_t);
    ASSERT_EQ(std::memcmp(actual.PlotX.channel(0), expected.PlotX.channel(0), kBytes), 0) << what << ", PlotX";
    ASSERT_EQ(std::memcmp(actual.PlotY.channel(0), expected.PlotY.channel(0), kBytes), 0) << what << ", PlotY";
}

/// Draws the same state both ways and compares all that a frame leaves behind.
class Comparison {
public:
    publicM& model() { return *m_fast.model; }
    FrameInputs inputs;

    void run(const std::string& what) {
        *m_slow.model = *m_fast.model;
        m_renderer.PicReDrawT(*m_fast.model, inputs, m_fast.picture2, m_fast.picHidden0);
        test::NaiveFrame(*m_slow.model, inputs, m_slow.picture2).draw(m_slow.picHidden0);
        ASSERT_NO_FATAL_FAILURE(expectSamePicture(m_fast.picture2, m_slow.picture2, what));
        ASSERT_NO_FATAL_FAILURE(expectSamePicture(m_fast.picHidden0, m_slow.picHidden0, what + ", hidden"));
        ASSERT_NO_FATAL_FAILURE(expectSameModel(*m_fast.model, *m_slow.model, what));
        ASSERT_EQ(m_fast.picture2.ForeColor, m_slow.picture2.ForeColor) << what;
    }

private:
    Rendered m_fast;
    Rendered m_slow;
    FrameRenderer m_renderer;
};

class RandomFrames : public ::testing::Test {
protected:
    int between(int least, int greatest) { return std::uniform_int_distribution<int>(least, greatest)(m_random); }
    bool oneIn(int n) { return between(1, n) == 1; }

    /// Samples of several tempers: flat, noise, spikes, steps.
    void fillSamples(publicM& m, int channel, int count) {
        const int temper = between(0, 4);
        int level = between(-100, 100);
        for (int i = 0; i < count; ++i) {
            switch (temper) {
            case 0:
                break;
            case 1:
                level = between(-120, 120);
                break;
            case 2:
                level = oneIn(10) ? between(-32768, 32767) : level;
                break;
            case 3:
                level = std::clamp(level + between(-3, 3), -32768, 32767);
                break;
            default:
                level = i / 7 % 2 == 0 ? 80 : -80;
                break;
            }
            m.SampleData(channel, i) = static_cast<std::int16_t>(level);
        }
    }

    void randomChannel(publicM& m, int channel, int count, int leastStep, int greatestStep) {
        const auto c = static_cast<std::size_t>(channel);
        m.ChannelPresent[c] = oneIn(12) ? 0 : 1;
        m.SampleCount[c] = count;
        const int step = between(leastStep, greatestStep); // columns from sample to sample
        m.ScreenPoints[c] = step == 0 ? between(600, 12000) : 600 / step;
        m.TimeIndex[c] = m.TimeIndexFile[c] = m.TimeIndexView[c] = 15;
        if (oneIn(3)) {
            m.TimeIndexView[c] = static_cast<std::int16_t>(between(13, 17));
        }
        m.ChannelXShift[c] = oneIn(3) ? static_cast<float>(between(-900, 900)) / 3 : 0;
        m.VoltIndexView[c] = static_cast<std::int16_t>(between(3, 9));
        m.VoltPerCount[c] = oneIn(5) ? static_cast<float>(between(-9000, 9000)) : 20.0F;
        m.SampleInterval[c] = static_cast<float>(between(1, 50));
        fillSamples(m, channel, count);
    }

    void randomInputs(FrameInputs& inputs) {
        inputs.graticule = oneIn(2);
        for (std::size_t c = 0; c < 6; ++c) {
            inputs.selected[c] = !oneIn(8);
            inputs.markerTop[c] = between(-105, 5925);
        }
    }

private:
    std::mt19937 m_random{20240229};
};

TEST_F(RandomFrames, StepsOf0To40ColumnsInLineMode) {
    Comparison comparison;
    for (int frame = 0; frame < 180; ++frame) {
        for (int channel = 0; channel < 6; ++channel) {
            randomChannel(comparison.model(), channel, between(0, 700), 0, 40);
        }
        randomInputs(comparison.inputs);
        comparison.model().FileKind = static_cast<std::int16_t>(between(0, 6));
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, StepsOf0To40ColumnsInPointMode) {
    Comparison comparison;
    comparison.inputs.line = false;
    for (int frame = 0; frame < 60; ++frame) {
        for (int channel = 0; channel < 6; ++channel) {
            randomChannel(comparison.model(), channel, between(0, 700), 0, 40);
        }
        randomInputs(comparison.inputs);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, TracesFarOutsideTheScreen) {
    Comparison comparison;
    for (int frame = 0; frame < 80; ++frame) {
        publicM& m = comparison.model();
        for (int channel = 0; channel < 6; ++channel) {
            const auto c = static_cast<std::size_t>(channel);
            randomChannel(m, channel, between(1, 400), 0, 40);
            m.TimeIndexView[c] = static_cast<std::int16_t>(between(0, 27)); // zooms up to a hundred million times
            m.ChannelXShift[c] = static_cast<float>(between(-100000, 100000));
            m.VoltPerCount[c] = static_cast<float>(between(-30000000, 30000000)) / 7;
        }
        randomInputs(comparison.inputs);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, FallingXByNegativeScreenPoints) {
    Comparison comparison;
    for (int frame = 0; frame < 60; ++frame) {
        publicM& m = comparison.model();
        for (int channel = 0; channel < 6; ++channel) {
            const auto c = static_cast<std::size_t>(channel);
            randomChannel(m, channel, between(1, 400), 0, 40);
            if (oneIn(2)) {
                m.ScreenPoints[c] = -m.ScreenPoints[c];
                m.ChannelXShift[c] = static_cast<float>(between(0, 600));
            }
        }
        randomInputs(comparison.inputs);
        comparison.inputs.line = !oneIn(4);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, SlowScansInLineAndPointMode) {
    Comparison comparison;
    for (int frame = 0; frame < 120; ++frame) {
        publicM& m = comparison.model();
        for (int channel = 0; channel < 6; ++channel) {
            const auto c = static_cast<std::size_t>(channel);
            randomChannel(m, channel, between(1, 1300), 0, 3);
            m.ScreenPoints[c] = between(1, 1250);
            m.ScanPoint[c] = oneIn(10) ? between(-20, 20) : between(0, m.ScreenPoints[c] + 5);
            m.TimeIndex[c] = between(20, 27);
            m.TimeIndexView[c] = static_cast<std::int16_t>(std::clamp(m.TimeIndex[c] + between(-1, 1), 0, 27));
        }
        randomInputs(comparison.inputs);
        comparison.inputs.line = oneIn(2);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, RunTimeErrorsEndAFrameWhereTheyOccur) {
    Comparison comparison;
    for (int frame = 0; frame < 80; ++frame) {
        publicM& m = comparison.model();
        for (int channel = 0; channel < 6; ++channel) {
            randomChannel(m, channel, between(1, 300), 0, 40);
        }
        randomInputs(comparison.inputs);
        const auto c = static_cast<std::size_t>(between(0, 5));
        switch (frame % 8) {
        case 0:
            m.TimeIndex[c] = 28;
            break;
        case 1:
            m.VoltIndexView[c] = -1;
            break;
        case 2:
            m.ScreenPoints[c] = 0;
            break;
        case 3:
            m.SampleCount[c] = 10232; // a row behind the array
            break;
        case 4:
            m.VoltPerCount[c] = 3e38F;
            break;
        case 5:
            m.TimeIndexView[c] = -1;
            break;
        case 6:
            comparison.inputs.markerTop[c] = 1e12;
            break;
        default:
            m.ChannelXShift[c] = std::numeric_limits<float>::quiet_NaN();
            break;
        }
        comparison.inputs.line = oneIn(2);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

TEST_F(RandomFrames, SixFullTraces) {
    Comparison comparison;
    for (int frame = 0; frame < 4; ++frame) {
        for (int channel = 0; channel < 6; ++channel) {
            randomChannel(comparison.model(), channel, kSampleRows, 0, 0);
            comparison.model().ScreenPoints[static_cast<std::size_t>(channel)] = kSampleRows;
        }
        randomInputs(comparison.inputs);
        ASSERT_NO_FATAL_FAILURE(comparison.run("frame " + std::to_string(frame)));
    }
}

} // namespace
} // namespace sixtrace
