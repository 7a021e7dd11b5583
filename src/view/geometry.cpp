// SPDX-License-Identifier: MIT
#include "view/geometry.h"

#include "capture/markerstrip.h"
#include "platform/text/numbers.h"

namespace sixtrace {

namespace {

constexpr double kDivisionsOfTime = 12;
constexpr double kDivisionsOfVoltage = 8;

/// Heights are placed only where VoltIndexView names a table row.
std::optional<TraceScale> scaleWithoutSteps(const publicM& model, int channel, double width = kScreenWidth) {
    const double middle = width / 2;
    const int c = channel;
    const auto tCap = model.TimeBaseTable.find(model.TimeIndex[c]);
    const auto tView = model.TimeBaseTable.find(model.TimeIndexView[c]);
    if (!tCap || !tView) {
        return std::nullopt;
    }
    TraceScale scale;
    scale.zoom = *tCap / *tView;
    scale.x0 = middle - (middle - static_cast<double>(model.ChannelXShift[c])) * *tCap / *tView;
    scale.yPos = model.ChannelYPos[c];
    scale.perCount = static_cast<double>(model.VoltPerCount[c]);
    scale.divisor = model.VoltTable.find(model.VoltIndexView[c]).value_or(0) * (kDivisionsOfVoltage * 1000);
    return scale;
}

std::optional<TraceScale> scaleWithHeights(const publicM& model, int channel, double width = kScreenWidth) {
    auto scale = scaleWithoutSteps(model, channel, width);
    return scale && scale->placesHeights() ? scale : std::nullopt;
}

std::optional<float> msPerUnit(const publicM& model, int channel, double width) {
    const auto tView = model.TimeBaseTable.find(model.TimeIndexView[channel]);
    return tView ? std::optional(static_cast<float>(*tView * kDivisionsOfTime / width)) : std::nullopt;
}

std::optional<float> voltPerUnit(const publicM& model, int channel, double height) {
    const auto vView = model.VoltTable.find(model.VoltIndexView[channel]);
    return vView ? std::optional(static_cast<float>(*vView * kDivisionsOfVoltage / height)) : std::nullopt;
}

} // namespace

int divisionsAcross(int fileKind) {
    return fileKind == 2 || fileKind == 3 ? 10 : 12;
}

std::optional<std::int16_t> zeroLineOfMarker(Twips top) {
    return toInt16(strip::zeroLine(top) * kScreenHeight);
}

Twips wayOnStrip(ScreenY way) {
    return way.number() * (strip::kHeight / kScreenHeight);
}

bool deriveZeroLines(publicM& model, const PerChannel<Twips>& markerTops) {
    for (std::size_t c = 0; c < kChannels; ++c) {
        const auto y = zeroLineOfMarker(markerTops[c]);
        if (!y) {
            return false;
        }
        model.ChannelYPos[c] = *y;
    }
    return true;
}

std::optional<TraceScale> plotScale(const publicM& model, int channel) {
    const std::int32_t points = model.ScreenPoints[channel];
    auto scale = points != 0 ? scaleWithHeights(model, channel) : std::nullopt;
    if (scale) {
        scale->dx = scale->zoom / points * kScreenWidth;
    }
    return scale;
}

std::optional<TraceScale> pickScale(const publicM& model, int channel) {
    const std::int32_t samples = model.SampleCount[channel];
    auto scale = samples != 0 ? scaleWithoutSteps(model, channel) : std::nullopt;
    if (scale) {
        scale->dx = scale->zoom / samples * kScreenWidth;
    }
    return scale;
}

std::optional<TraceScale> pageScale(const publicM& model, int channel, const PageArea& page) {
    const std::int32_t samples = model.SampleCount[channel];
    auto scale = samples != 0 ? scaleWithHeights(model, channel, page.width.number()) : std::nullopt;
    if (scale) {
        scale->dx = scale->zoom / samples * page.width.number();
        scale->yPos = page.zeroLine.number();
        scale->height = page.height.number();
    }
    return scale;
}

std::optional<float> msPerPixel(const publicM& model, int channel) {
    return msPerUnit(model, channel, kScreenWidth);
}
std::optional<float> msPerPixel(const publicM& model, int channel, const PageArea& page) {
    return msPerUnit(model, channel, page.width.number());
}

std::optional<float> voltPerPixel(const publicM& model, int channel) {
    return voltPerUnit(model, channel, kScreenHeight);
}
std::optional<float> voltPerPixel(const publicM& model, int channel, const PageArea& page) {
    return voltPerUnit(model, channel, page.height.number());
}

} // namespace sixtrace
