// SPDX-License-Identifier: MIT
#include "view/drags.h"

#include "platform/text/numbers.h"
#include "view/geometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sixtrace {

namespace {

/// How many samples of a channel may be accessed: its SampleCount, but no more than the arrays hold.
int rowsOf(const publicM& model, int channel) {
    return std::clamp(model.SampleCount[channel], 0, kSampleRows);
}

bool countFits(const publicM& model, int channel) {
    return model.SampleCount[channel] <= kSampleRows;
}

/// Lines from sample `first` on, the pen standing on sample 0.
void drawSamples(const publicM& model, int channel, int first, Picture& picture) {
    const int rows = rowsOf(model, channel);
    for (int i = first; i < rows; ++i) {
        picture.LineTo(model.PlotX(channel, i), model.PlotY(channel, i));
    }
}

void penToSample(const publicM& model, int channel, int sample, Picture& picture) {
    picture.PSet(model.PlotX(channel, sample), model.PlotY(channel, sample));
    picture.MoveToEx(model.PlotX(channel, sample), model.PlotY(channel, sample));
}

/// Adds one distance to many coordinates, each sum rounded, halves to the even integer.
///
/// Unless the distance lies about halfway between two integers, the rounded sum is the sum with the rounded distance.
/// Then integers are added, which is faster: a step of a drag moves ten thousand coordinates.
class Shift {
public:
    explicit Shift(double delta)
        : m_delta(delta) {
        // The sum of a 32-bit integer and the distance is exact to less than a millionth.
        constexpr double kClearOfHalf = 0.4999;
        constexpr double kFar = 1e9;
        const double nearest = std::nearbyint(delta);
        m_isClear = std::fabs(delta - nearest) < kClearOfHalf && std::fabs(nearest) < kFar;
        m_whole = m_isClear ? static_cast<std::int64_t>(nearest) : 0;
    }

    /// False on overflow, which leaves the coordinate as it is.
    bool operator()(std::int32_t& coordinate) const {
        if (!m_isClear) {
            const auto moved = toInt32(m_delta + coordinate);
            coordinate = moved.value_or(coordinate);
            return moved.has_value();
        }
        const std::int64_t moved = coordinate + m_whole;
        if (moved != static_cast<std::int32_t>(moved)) {
            return false;
        }
        coordinate = static_cast<std::int32_t>(moved);
        return true;
    }

private:
    double m_delta;
    std::int64_t m_whole = 0;
    bool m_isClear = false;
};

/// The visible samples of a trace while one of its coordinates is shifted.
struct VisibleRange {
    int first = 0; ///< the first with X above 0, or the number of samples
    int last = -1; ///< the last with X below 600, or -1
};

/// Shifts the samples from both ends up to the first and the last visible one. Of a trace that lies entirely outside
/// the screen, one of the two loops shifts all samples, and the other shifts the sample that it begins with once more.
bool shiftToVisible(const publicM& model, int channel, SampleArray<std::int32_t>& coordinates, const Shift& shift,
                    VisibleRange& range) {
    const int rows = rowsOf(model, channel);
    range = {rows, -1};
    for (int i = 0; i < rows; ++i) {
        if (!shift(coordinates(channel, i))) {
            return false;
        }
        if (model.PlotX(channel, i) > 0) {
            range.first = i;
            break;
        }
    }
    if (!countFits(model, channel)) {
        return false; // the loop from the end would begin outside the arrays
    }
    for (int i = rows - 1; i >= 0; --i) {
        if (!shift(coordinates(channel, i))) {
            return false;
        }
        if (model.PlotX(channel, i) < kScreenWidth) {
            range.last = i;
            break;
        }
    }
    return true;
}

} // namespace

bool beginTraceDrag(const publicM& model, int channel, Picture& picture2, Picture& picHidden1) {
    picture2.ForeColor = kGhostColour;
    const auto scale = pickScale(model, channel);
    const auto x = scale ? toInt32(scale->x0) : std::nullopt;
    const auto y = scale && scale->placesHeights() ? toInt32(scale->y(model.SampleData(channel, 0))) : std::nullopt;
    if (!x || !y) {
        return false;
    }
    picture2.PSet(*x, *y);
    picture2.MoveToEx(model.PlotX(channel, 0), model.PlotY(channel, 0));
    drawSamples(model, channel, 0, picture2);
    if (!countFits(model, channel)) {
        return false;
    }
    picHidden1.ForeColor = kGhostColour;
    penToSample(model, channel, 0, picHidden1);
    drawSamples(model, channel, 0, picHidden1);
    return true;
}

bool moveTraceDrag(publicM& model, int channel, ScreenX delta, const Picture& picHidden0, Picture& picHidden1,
                   Picture& picture2) {
    const int c = channel;
    picHidden1.BitBlt(0, 0, kScreenWidth, kScreenHeight, picHidden0, 0, 0);
    const int viewRow = model.TimeIndexView[c];
    const int fileRow = model.TimeIndexFile[c];
    if (viewRow < 0 || viewRow >= kTimeBaseRows || fileRow < 0 || fileRow >= kTimeBaseRows) {
        return false;
    }
    // A step of the shift is a 32-bit real.
    const auto step = static_cast<double>(static_cast<float>(delta.number()));
    model.ChannelXShift[c] = static_cast<float>(static_cast<double>(model.ChannelXShift[c]) +
                                                step * model.TimeBaseTable[viewRow] / model.TimeBaseTable[fileRow]);

    picHidden1.ForeColor = kGhostColour;
    picHidden1.PSet(model.PlotX(channel, 0), model.PlotY(channel, 0));
    const Shift shift(step);
    VisibleRange visible;
    if (!shiftToVisible(model, channel, model.PlotX, shift, visible)) {
        return false;
    }
    if (visible.first < rowsOf(model, channel)) {
        penToSample(model, channel, visible.first, picHidden1);
    }
    for (int i = visible.first + 1; i < visible.last; ++i) {
        if (!shift(model.PlotX(channel, i))) {
            return false;
        }
    }
    const int thinning =
        std::max(1, static_cast<int>(std::nearbyint((visible.last - visible.first - 2) / double{kScreenWidth})));
    for (int i = visible.first + 1; i < visible.last; i += thinning) {
        picHidden1.LineTo(model.PlotX(channel, i), model.PlotY(channel, i));
    }
    picture2.BitBlt(0, 0, kScreenWidth, kScreenHeight, picHidden1, 0, 0);
    return true;
}

bool beginMarkerDrag(const publicM& model, int channel, Picture& picture2, Picture& picHidden0) {
    penToSample(model, channel, 0, picture2);
    drawSamples(model, channel, 1, picture2);
    if (!countFits(model, channel)) {
        return false;
    }
    picHidden0.BitBlt(0, 0, kScreenWidth, kScreenHeight, picture2, 0, 0);
    return true;
}

bool moveMarkerDrag(publicM& model, int channel, Twips markerTop, const Picture& picHidden0, Picture& picture2) {
    const int c = channel;
    picture2.BitBlt(0, 0, kScreenWidth, kScreenHeight, picHidden0, 0, 0);
    const auto zeroLine = zeroLineOfMarker(markerTop);
    if (!zeroLine) {
        return false;
    }
    const Shift shift(*zeroLine - model.ChannelYPos[c]);
    model.ChannelYPos[c] = *zeroLine;

    VisibleRange visible;
    if (!shiftToVisible(model, channel, model.PlotY, shift, visible)) {
        return false;
    }
    if (visible.first < rowsOf(model, channel)) {
        penToSample(model, channel, visible.first, picture2);
    }
    for (int k = visible.first + 1; k < visible.last; ++k) {
        if (!shift(model.PlotY(channel, k))) {
            return false;
        }
        if (model.PlotX(channel, k) != model.PlotX(channel, k - 1)) {
            picture2.LineTo(model.PlotX(channel, k), model.PlotY(channel, k));
        }
    }
    return true;
}

} // namespace sixtrace
