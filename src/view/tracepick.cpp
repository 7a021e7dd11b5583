// SPDX-License-Identifier: MIT
#include "view/tracepick.h"

#include "view/geometry.h"
#include "view/tracepoints.h"

#include <cmath>

namespace sixtrace {

namespace {

constexpr double kCursorReach = 2; // screen units, exclusive
constexpr ScreenY kTraceReach{5};  // inclusive

template<typename Place>
bool near(Place line, Place pointer) {
    return std::fabs((pointer - line).number()) < kCursorReach;
}

enum class Miss { LeavesPointer, SetsArrow };

TracePick search(const publicM& model, ScreenX x, ScreenY y, Miss miss) {
    TracePick pick;
    for (int channel = 0; channel < kChannels; ++channel) {
        const int c = channel;
        if (model.ChannelPresent[c] == 0) {
            continue;
        }
        const auto scale = pickScale(model, channel);
        if (!scale) {
            pick.failed = true;
            return pick;
        }
        const double sample = scale->sampleAt(x);
        if (!(sample >= 0 && sample <= model.SampleCount[c])) {
            pick.pointer = MousePointer::Arrow;
            continue;
        }
        const double row = std::nearbyint(sample);
        if (!isSampleRow(row) || !scale->placesHeights()) {
            pick.failed = true;
            return pick;
        }
        const ScreenY traceY{scale->y(model.SampleData(channel, static_cast<int>(row)))};
        if (y >= traceY - kTraceReach && y <= traceY + kTraceReach) {
            pick.channel = channel;
            pick.pointer = MousePointer::EastWest;
            return pick;
        }
        if (miss == Miss::SetsArrow) {
            pick.pointer = MousePointer::Arrow;
        }
    }
    return pick;
}

} // namespace

CursorHit cursorUnder(const CursorPlaces& places, ScreenX x, ScreenY y) {
    if (near(places.voltage[0], y)) {
        return CursorHit::Voltage1;
    }
    if (near(places.voltage[1], y)) {
        return CursorHit::Voltage2;
    }
    if (near(places.time[0], x)) {
        return CursorHit::Time1;
    }
    return near(places.time[1], x) ? CursorHit::Time2 : CursorHit::None;
}

bool onVoltageCursor(const CursorPlaces& places, ScreenY y) {
    return near(places.voltage[0], y) || near(places.voltage[1], y);
}
bool onTimeCursor(const CursorPlaces& places, ScreenX x) {
    return near(places.time[0], x) || near(places.time[1], x);
}

TracePick pickTrace(const publicM& model, ScreenX x, ScreenY y) {
    return search(model, x, y, Miss::LeavesPointer);
}
TracePick hoverTrace(const publicM& model, ScreenX x, ScreenY y) {
    return search(model, x, y, Miss::SetsArrow);
}

} // namespace sixtrace
