// SPDX-License-Identifier: MIT
// A frame must not differ by one pixel from drawing every dot and segment in order.
#include "view/graticule.h"
#include "view/scene.h"

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <cmath>
#include <random>

namespace sixtrace::test {
namespace {

/// Draws the channels of a screen one segment at a time. Positions are computed here, sample by sample.
class Reference {
public:
    Reference(const publicM& model, const FrameInputs& inputs)
        : m_model(model)
        , m_inputs(inputs) {}

    void draw(Picture& picture, const SampleArray<std::int32_t>& oldX, const SampleArray<std::int32_t>& oldY) {
        drawGraticule(picture, m_model.GridColor, m_inputs.graticule, divisionsAcross(m_model.FileKind));
        for (int channel = 0; channel < kChannels; ++channel) {
            const int c = channel;
            picture.ForeColor = m_model.LineColor[c];
            if (m_inputs.selected[c] && m_model.ChannelPresent[c] == 1) {
                drawChannel(picture, channel, oldX, oldY);
            }
        }
    }

private:
    [[nodiscard]] int x(int channel, double i) const {
        const int c = channel;
        const double capture = m_model.TimeBaseTable[m_model.TimeIndex[c]];
        const double shown = m_model.TimeBaseTable[m_model.TimeIndexView[c]];
        const double start = 300 - (300 - static_cast<double>(m_model.ChannelXShift[c])) * capture / shown;
        return static_cast<int>(std::nearbyint(start + i * (capture / shown / m_model.ScreenPoints[c] * 600)));
    }
    [[nodiscard]] int y(int channel, double i) const {
        const int c = channel;
        const double volts = m_model.VoltTable[m_model.VoltIndexView[c]];
        const double sample = m_model.SampleData(channel, static_cast<int>(std::nearbyint(i)));
        return static_cast<int>(std::nearbyint(
            m_model.ChannelYPos[c] - (sample * static_cast<double>(m_model.VoltPerCount[c]) * 400) / (volts * 8000)));
    }
    void visit(Picture& picture, int channel, double first, double last) const {
        for (double i = first; i <= last; i += 1) {
            if (m_inputs.style == TraceStyle::Lines) {
                picture.Line(x(channel, i), y(channel, i));
            } else {
                picture.PSet(x(channel, i), y(channel, i));
            }
        }
    }
    void lift(Picture& picture, int atX, int atY) const { picture.Line(atX, atY, atX, atY); }

    void drawChannel(Picture& picture, int channel, const SampleArray<std::int32_t>& oldX,
                     const SampleArray<std::int32_t>& oldY) const {
        const int c = channel;
        const int slots = m_model.ScreenPoints[c];
        const int samples = m_model.SampleCount[c];
        const int scan = m_model.ScanPoint[c];
        picture.PSet(x(channel, 0), y(channel, 0));
        if (m_model.TimeIndex[c] < 22 || samples < slots) {
            visit(picture, channel, 0, samples - 1);
        } else if (slots * 0.92 >= scan) {
            const double gap = slots * 0.08 + scan;
            if (m_inputs.style == TraceStyle::Lines) {
                visit(picture, channel, 0, scan - 1);
                lift(picture, oldX(channel, scan), oldY(channel, scan));
                lift(picture, x(channel, gap), y(channel, gap));
            } else {
                visit(picture, channel, 0, scan);
            }
            visit(picture, channel, gap, slots);
        } else {
            const double start = slots * 0.08 - (slots - scan);
            if (m_inputs.style == TraceStyle::Lines) {
                lift(picture, x(channel, start), y(channel, start));
                visit(picture, channel, start + 1, scan);
            } else {
                visit(picture, channel, start, scan);
            }
        }
    }

    const publicM& m_model;
    const FrameInputs& m_inputs;
};

/// What random frames hold.
struct FrameKind {
    bool leftward = false;       ///< traces that run backward, too
    bool scans = true;           ///< slow scans, too
    int tallest = 32767;         ///< greatest count
    bool sharedTimeBase = false; ///< all channels begin and end their columns together
    bool allShown = false; ///< six traces; of four, one is as long as can be and one runs downwards with the count
};

/// Up to six channels of random length, step, height and place.
void randomise(TestScreen& screen, std::mt19937& random, const FrameKind& kind) {
    const auto between = [&random](int least, int greatest) {
        return std::uniform_int_distribution<int>(least, greatest)(random);
    };
    publicM& model = *screen.model;
    screen.inputs.graticule = between(0, 1) == 1 ? Graticule::Dotted : Graticule::Cross;
    screen.inputs.style = between(0, 4) > 0 ? TraceStyle::Lines : TraceStyle::Points;
    model.FileKind = static_cast<std::int16_t>(between(1, 6));
    for (int channel = 0; channel < kChannels; ++channel) {
        const int c = channel;
        model.ChannelPresent[c] = kind.allShown || between(0, 3) > 0 ? 1 : 0;
        screen.inputs.selected[c] = kind.allShown || between(0, 4) > 0;
        // 15 points a screen are 40 columns a sample, 6000 are a tenth of one.
        const int points = between(0, 3) == 0 ? between(15, 60) : between(60, 6000);
        const bool full = kind.allShown && between(0, 3) == 0;
        const int samples = full                 ? kSampleRows
                            : between(0, 2) == 0 ? points
                                                 : between(1, std::min(kSampleRows, 2 * points));
        const bool backward = kind.leftward && between(0, 1) == 1;
        model.ScreenPoints[c] = backward ? -points : points;
        model.SampleCount[c] = samples;
        const bool scan = kind.scans && !backward && between(0, 2) == 0;
        model.TimeIndex[c] = scan ? between(22, 27) : between(0, 21);
        model.TimeIndexView[c] = static_cast<std::int16_t>(std::clamp(model.TimeIndex[c] + between(-3, 3), 0, 27));
        model.ScanPoint[c] = between(0, points);
        model.VoltIndexView[c] = static_cast<std::int16_t>(between(0, 9));
        const int direction = kind.allShown && between(0, 3) == 0 ? -1 : 1;
        model.VoltPerCount[c] = static_cast<float>(direction * between(1, 4000)) / 100.0F;
        model.ChannelXShift[c] = static_cast<float>(between(-900, 900)) / 3.0F;
        screen.inputs.markerTop[c] = Twips(between(-400, 6400));
        if (kind.sharedTimeBase && channel > 0) {
            model.ScreenPoints[c] = model.ScreenPoints[0];
            model.SampleCount[c] = model.SampleCount[0];
            model.TimeIndex[c] = model.TimeIndex[0];
            model.TimeIndexView[c] = model.TimeIndexView[0];
            model.ChannelXShift[c] = model.ChannelXShift[0];
        }
        const int height = between(0, 4) == 0 ? kind.tallest : between(1, 400);
        const int calm = between(1, 30);
        int level = 0;
        for (int i = 0; i < kSampleRows; ++i) {
            level = i % calm == 0 ? between(-height, height) : level;
            model.SampleData(channel, i) = static_cast<std::int16_t>(std::clamp(level + between(-1, 1), -32768, 32767));
        }
    }
}

bool samePositions(const SampleArray<std::int32_t>& a, const SampleArray<std::int32_t>& b) {
    return std::equal(a.channel(0), a.channel(0) + SampleArray<std::int32_t>::kSize, b.channel(0));
}

/// Has the drawing use one kind of vectors that this processor has, for as long as the object lives.
class OneKindOfVectors {
public:
    explicit OneKindOfVectors(std::int64_t target) { choose(target); }
    ~OneKindOfVectors() { choose(0); }
    OneKindOfVectors(const OneKindOfVectors&) = delete;
    OneKindOfVectors& operator=(const OneKindOfVectors&) = delete;

private:
    static void choose(std::int64_t targets) {
        hwy::SetSupportedTargetsForTest(targets);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
};

void compareRandomFrames(unsigned seed, int rounds, const FrameKind& kind) {
    std::mt19937 random(seed);
    const auto screen = std::make_unique<TestScreen>();
    Picture expected(kSurfaceWidth, kSurfaceHeight);
    expected.BackColor = screen->picture2.BackColor;
    const auto oldX = std::make_unique<SampleArray<std::int32_t>>();
    const auto oldY = std::make_unique<SampleArray<std::int32_t>>();
    // The same frames drawn without wide vectors.
    FrameRenderer plainRenderer(Vectors::Avoided);
    Picture plain(kSurfaceWidth, kSurfaceHeight);
    Picture plainCopy(kSurfaceWidth, kSurfaceHeight);
    plain.BackColor = screen->picture2.BackColor;
    const auto plainModel = std::make_unique<publicM>();
    for (int round = 0; round < rounds; ++round) {
        randomise(*screen, random, kind);
        *plainModel = *screen->model;
        *oldX = screen->model->PlotX;
        *oldY = screen->model->PlotY;
        screen->draw();
        Reference(*screen->model, screen->inputs).draw(expected, *oldX, *oldY);
        ASSERT_TRUE(samePicture(screen->picture2, expected)) << "round " << round << " of seed " << seed;
        ASSERT_TRUE(sameRows(screen->picHidden0, expected, 600, 400)) << "round " << round << " of seed " << seed;
        plainRenderer.PicReDrawT(*plainModel, screen->inputs, plain, plainCopy);
        ASSERT_TRUE(samePicture(plain, expected)) << "round " << round << " of seed " << seed;
        ASSERT_TRUE(sameRows(plainCopy, expected, 600, 400)) << "round " << round << " of seed " << seed;
        ASSERT_TRUE(samePositions(plainModel->PlotX, screen->model->PlotX)) << "round " << round << " of seed " << seed;
        ASSERT_TRUE(samePositions(plainModel->PlotY, screen->model->PlotY)) << "round " << round << " of seed " << seed;
    }
}

TEST(FrameReference, FiveHundredRandomFramesEqualDrawingEverySegmentInOrder) {
    compareRandomFrames(1, 500, {});
}

TEST(FrameReference, FramesOfWholeTracesEqualDrawingEverySegmentInOrder) {
    compareRandomFrames(6, 200, {.scans = false, .tallest = 2047});
}

TEST(FrameReference, FramesOfWholeTracesOnOneTimeBaseEqualDrawingEverySegmentInOrder) {
    compareRandomFrames(7, 200, {.scans = false, .tallest = 2047, .sharedTimeBase = true});
}

TEST(FrameReference, EveryKindOfVectorsThatThisProcessorHasDrawsTheSameFrames) {
    std::int64_t left = hwy::SupportedTargets();
    ASSERT_NE(left, 0);
    for (unsigned seed = 20; left != 0; left &= left - 1, ++seed) {
        const std::int64_t target = left & -left;
        SCOPED_TRACE(hwy::TargetName(target));
        const OneKindOfVectors chosen(target);
        compareRandomFrames(seed, 40, {.scans = false, .tallest = 2047, .sharedTimeBase = true, .allShown = true});
        compareRandomFrames(seed, 20, {.scans = false, .tallest = 2060, .sharedTimeBase = true, .allShown = true});
        compareRandomFrames(seed, 20, {.scans = false, .tallest = 2047, .allShown = true});
    }
}

TEST(FrameReference, CountsBeyondTwelveBitsAmongWholeTracesAreDrawnWhereTheyLie) {
    compareRandomFrames(8, 100, {.scans = false, .tallest = 2060});
}

TEST(FrameReference, FramesWithTracesThatRunBackwardEqualDrawingEverySegmentInOrder) {
    compareRandomFrames(2, 100, {.leftward = true});
}

TEST(FrameReference, SegmentsOfAnyLengthAndSlopeFollowThePictureRule) {
    // Two samples make one segment: from (0, y) over the whole screen and beyond, up to the ends of 32 bits.
    std::mt19937 random(3);
    const auto screen = std::make_unique<TestScreen>();
    Picture expected(kSurfaceWidth, kSurfaceHeight);
    expected.BackColor = screen->picture2.BackColor;
    for (int round = 0; round < 400; ++round) {
        publicM& model = *screen->model;
        screen->addChannel(0, 1, 2);
        model.TimeIndex[0] = 13;
        model.TimeIndexView[0] = static_cast<std::int16_t>(std::uniform_int_distribution<int>(5, 20)(random));
        model.ChannelXShift[0] = static_cast<float>(std::uniform_int_distribution<int>(-700, 700)(random));
        model.VoltPerCount[0] = std::pow(10.0F, std::uniform_real_distribution<float>(-2, 5)(random));
        model.SampleData(0, 0) = static_cast<std::int16_t>(std::uniform_int_distribution<int>(-2000, 2000)(random));
        model.SampleData(0, 1) = static_cast<std::int16_t>(std::uniform_int_distribution<int>(-2000, 2000)(random));
        screen->draw();
        Reference(model, screen->inputs).draw(expected, model.PlotX, model.PlotY);
        ASSERT_TRUE(samePicture(screen->picture2, expected)) << "round " << round;
    }
}

TEST(FrameReference, EverySampleVisitedLeavesItsPosition) {
    const auto screen = std::make_unique<TestScreen>();
    std::mt19937 random(5);
    screen->addChannel(3, kSampleRows, kSampleRows);
    screen->model->VoltPerCount[3] = 3.7F;
    screen->model->ChannelXShift[3] = 12.25F;
    for (int i = 0; i < kSampleRows; ++i) {
        screen->model->SampleData(3, i) =
            static_cast<std::int16_t>(std::uniform_int_distribution<int>(-32768, 32767)(random));
    }
    screen->draw();
    const double step = 600.0 / kSampleRows;
    for (int i = 0; i < kSampleRows; ++i) {
        ASSERT_EQ(screen->model->PlotX(3, i), static_cast<int>(std::nearbyint(12.25 + i * step))) << i;
        const double exact = 200 - screen->model->SampleData(3, i) * static_cast<double>(3.7F) * 400 / 4000.0;
        ASSERT_EQ(screen->model->PlotY(3, i), static_cast<int>(std::nearbyint(exact))) << i;
    }
}

TEST(FrameReference, HeightsHalfwayBetweenTwoPixelsGoToTheEvenOne) {
    // Half a pixel a count: count 1 lies at 199.5, count 3 at 198.5, count -1 at 200.5.
    const auto screen = std::make_unique<TestScreen>();
    screen->addChannel(0, 600, 600);
    screen->model->VoltPerCount[0] = 5.0F;
    for (int i = 0; i < 600; ++i) {
        screen->model->SampleData(0, i) = static_cast<std::int16_t>(i % 8 - 4);
    }
    screen->draw();
    const std::array expected{202, 202, 201, 200, 200, 200, 199, 198};
    for (int i = 0; i < 600; ++i) {
        ASSERT_EQ(screen->model->PlotY(0, i), expected[static_cast<std::size_t>(i) % 8]) << i;
    }
}

} // namespace
} // namespace sixtrace::test
