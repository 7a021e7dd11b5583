// SPDX-License-Identifier: MIT
#include "capture/scenes.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace sixtrace {

namespace {

constexpr double kTurn = 6.283185307179586476925287;
constexpr int kUsualPoints = 1200; // two samples a screen unit

/// A small generator of its own, so that a seed means the same everywhere (numerical recipes' constants).
class Noise {
public:
    explicit Noise(std::uint32_t seed)
        : m_state(seed * 2654435761U + 1U) {}

    /// Evenly spread over -spread .. spread.
    int operator()(int spread) {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<int>((m_state >> 8) % static_cast<std::uint32_t>(2 * spread + 1)) - spread;
    }

private:
    std::uint32_t m_state;
};

std::int16_t counts(double value) {
    return static_cast<std::int16_t>(std::lround(std::clamp(value, -32768.0, 32767.0)));
}

/// Front panel of a channel: rows of the time and volt tables, probe, place of the zero line.
struct Panel {
    char id;
    int timeRow;
    double msPerDivision;
    int voltRow; ///< zero-based
    double voltsPerDivision;
    int probeExp;
    int zeroLevel;
};

/// A block of `points` samples over a full screen. 25 counts are one division. `signal` gives counts for the time in
/// milliseconds; `hertz` is what the instrument would have measured.
CaptureBlock block(const Panel& panel, int points, double hertz, const std::function<double(double)>& signal) {
    CaptureBlock made;
    made.id = panel.id;
    made.screenPoints = points;
    made.sampleCount = points;
    made.timeIndex = panel.timeRow;
    made.zeroLevel = panel.zeroLevel;
    made.voltIndex = panel.voltRow + 1;
    made.probeExp = static_cast<std::int16_t>(panel.probeExp);
    const double msPerSample = panel.msPerDivision * 12 / points;
    made.sampleInterval = static_cast<float>(msPerSample * 1000);
    made.frequency = static_cast<float>(hertz);
    made.period = hertz > 0 ? static_cast<float>(1e6 / hertz) : 0.0F;
    made.voltPerCount = static_cast<float>(panel.voltsPerDivision * 1000 / 25);
    made.samples.reserve(static_cast<std::size_t>(points));
    for (int i = 0; i < points; ++i) {
        made.samples.push_back(counts(signal(i * msPerSample)));
    }
    return made;
}

double phase(double ms, double periodMs) {
    return ms / periodMs - std::floor(ms / periodMs);
}
double sine(double ms, double periodMs) {
    return std::sin(kTurn * ms / periodMs);
}
double square(double ms, double periodMs) {
    return phase(ms, periodMs) < 0.5 ? 1 : -1;
}
double triangle(double ms, double periodMs) {
    return std::fabs(4 * phase(ms, periodMs) - 2) - 1;
}
double ramp(double ms, double periodMs) {
    return 2 * phase(ms, periodMs) - 1;
}
double burst(double ms, double periodMs) {
    const double since = phase(ms, periodMs) * periodMs;
    return std::exp(-4 * since / periodMs) * std::sin(kTurn * 8 * since / periodMs);
}

using Blocks = std::vector<CaptureBlock>;

Blocks sineScene(std::uint32_t) {
    return {block({'1', 16, 1, 6, 0.5, 0, 0}, kUsualPoints, 500, [](double ms) { return 75 * sine(ms, 2); })};
}

Blocks squareScene(std::uint32_t seed) {
    Noise noise(seed);
    return {block({'2', 15, 0.5, 7, 1, 1, 0}, kUsualPoints, 1000,
                  [&](double ms) { return 50 * square(ms, 1) + noise(3); })};
}

Blocks rampScene(std::uint32_t) {
    return {block({'A', 13, 0.1, 5, 0.2, 0, 0}, kUsualPoints, 2000, [](double ms) { return 60 * ramp(ms, 0.5); })};
}

Blocks noiseScene(std::uint32_t seed) {
    Noise noise(seed);
    return {block({'1', 14, 0.25, 6, 0.5, 0, 0}, kUsualPoints, 0, [&](double) { return noise(90); })};
}

/// Six different signals, staggered over the screen.
Blocks sixScene(std::uint32_t seed, int points) {
    Noise noise(seed);
    return {
        block({'1', 15, 0.5, 6, 0.5, 0, 71}, points, 1e6 / 1500, [](double ms) { return 15.6 * sine(ms, 1.5); }),
        block({'2', 15, 0.5, 4, 0.1, 1, 41}, points, 1000, [](double ms) { return 9.6 * square(ms, 1); }),
        block({'A', 16, 1, 5, 0.2, 0, 6}, points, 1e6 / 2400, [](double ms) { return 11.5 * triangle(ms, 2.4); }),
        block({'B', 14, 0.25, 2, 0.02, 2, -22}, points, 1000, [](double ms) { return 18 * burst(ms, 1); }),
        block({'C', 15, 0.5, 4, 0.1, 0, -52}, points, 1e6 / 750, [](double ms) { return 8 * ramp(ms, 0.75); }),
        block({'D', 17, 2.5, 2, 0.02, 3, -78}, points, 1e6 / 15000,
              [&](double ms) { return 5 * sine(ms, 15) + noise(3); }),
    };
}

/// A slow scan whose write position stands at `scanPoint`; `samples` of the `points` slots are filled.
Blocks scanScene(int timeRow, double msPerDivision, int points, int samples, int scanPoint) {
    CaptureBlock made = block({'1', timeRow, msPerDivision, 6, 0.5, 0, 0}, points, 1000 / (msPerDivision * 3),
                              [=](double ms) { return 60 * sine(ms, msPerDivision * 3); });
    made.samples.resize(static_cast<std::size_t>(samples));
    made.sampleCount = samples;
    made.scanPoint = scanPoint;
    return {made};
}

Blocks lengthsScene(std::uint32_t seed) {
    Noise noise(seed);
    Blocks blocks;
    const std::array<int, 6> lengths{1200, 900, 600, 41, 40, 1};
    for (std::size_t c = 0; c < kChannelIds.size(); ++c) {
        CaptureBlock made = block({kChannelIds[c], 15, 0.5, 6, 0.5, 0, 60 - 24 * static_cast<int>(c)}, kUsualPoints,
                                  1000, [&](double ms) { return 12 * sine(ms, 1) + noise(1); });
        made.samples.resize(static_cast<std::size_t>(lengths[c]));
        made.sampleCount = lengths[c];
        blocks.push_back(std::move(made));
    }
    return blocks;
}

struct NamedScene {
    Scene scene;
    Blocks (*make)(std::uint32_t seed);
};

const std::vector<NamedScene>& table() {
    static const std::vector<NamedScene> entries{
        {{"sine", "one channel, 500 Hz sine"}, sineScene},
        {{"square", "one channel behind a 10:1 probe, 1 kHz square wave with noise"}, squareScene},
        {{"ramp", "one channel, 2 kHz ramp"}, rampScene},
        {{"noise", "one channel of noise over most of the screen"}, noiseScene},
        {{"six", "six channels: sine, square, triangle, damped bursts, ramp, noisy sine"},
         [](std::uint32_t seed) { return sixScene(seed, kUsualPoints); }},
        {{"full", "six channels of 10231 samples each, all that the program holds"},
         [](std::uint32_t seed) { return sixScene(seed, kSampleRows); }},
        {{"scan-a", "the slowest time base that is no slow scan, 50 mS per division"},
         [](std::uint32_t) { return scanScene(21, 50, 1000, 1000, 300); }},
        {{"scan-b", "slow scan in its first sweep: fewer samples than the screen is wide"},
         [](std::uint32_t) { return scanScene(22, 100, 1000, 640, 640); }},
        {{"scan-c", "slow scan with the fresh sweep, the gap and the rest of the old sweep"},
         [](std::uint32_t) { return scanScene(25, 1000, 1000, 1000, 400); }},
        {{"scan-d", "slow scan whose gap has wrapped round to the start of the screen"},
         [](std::uint32_t) { return scanScene(27, 5000, 1000, 1000, 970); }},
        {{"lengths", "six channels of different length, from 1200 samples down to 1"}, lengthsScene},
        {{"empty", "a header without any channel"}, [](std::uint32_t) { return Blocks{}; }},
    };
    return entries;
}

} // namespace

const std::vector<Scene>& scenes() {
    static const std::vector<Scene> list = [] {
        std::vector<Scene> made;
        for (const NamedScene& entry : table()) {
            made.push_back(entry.scene);
        }
        return made;
    }();
    return list;
}

std::optional<std::vector<CaptureBlock>> sceneBlocks(const QString& name, std::uint32_t seed) {
    for (const NamedScene& entry : table()) {
        if (name == QLatin1String(entry.scene.name)) {
            return entry.make(seed);
        }
    }
    return std::nullopt;
}

} // namespace sixtrace
