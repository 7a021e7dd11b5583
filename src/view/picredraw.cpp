// SPDX-License-Identifier: MIT
// The older renderer: a screen of 500 by 400 and 1024 points of ScreenTrace. Nothing calls it; the public operations of
// the main window include it.
#include "platform/text/numbers.h"
#include "view/frame.h"
#include "view/geometry.h"

namespace sixtrace {

namespace {

constexpr int kWidth = 500;
constexpr int kHeight = 400;
constexpr int kPoints = 1024;
constexpr Colour kWindowColour = 0x00FFFFFF; // the desktop's window colour, which the older screen drew its grid in

std::optional<double> exactY(const publicM& model, int channel, double value) {
    const int c = channel;
    const auto vFile = model.VoltTable.find(model.VoltIndexFile[c]);
    const auto vView = model.VoltTable.find(model.VoltIndexView[c]);
    if (!vFile || !vView) {
        return std::nullopt;
    }
    return (value * *vFile / *vView + 128) / 256 * kHeight + model.ChannelYPos[c] - kHeight / 2.0;
}

void drawGrid(Picture& picture) {
    picture.Cls();
    picture.drawMode = DrawMode::CopyPen;
    picture.ForeColor = kWindowColour;
    picture.drawStyle = DrawStyle::Dot;
    for (int i = 0; i <= 8; ++i) {
        picture.Line(0, 50 * i, kWidth, 50 * i);
    }
    for (int i = 0; i <= 10; ++i) {
        picture.Line(50 * i, 0, 50 * i, kHeight);
    }
    picture.drawStyle = DrawStyle::Solid;
    for (int i = 0; i <= 41; ++i) {
        picture.Line(0, 10 * i, 5, 10 * i);
        picture.Line(495, 10 * i, kWidth, 10 * i);
        picture.Line(245, 10 * i, 255, 10 * i);
    }
    for (int i = 0; i <= 51; ++i) {
        picture.Line(10 * i, 0, 10 * i, 5);
        picture.Line(10 * i, 395, 10 * i, kHeight);
        picture.Line(10 * i, 195, 10 * i, 205);
    }
}

/// False when it ends in a run-time error.
bool drawTrace(publicM& model, int channel, Picture& picture) {
    const int c = channel;
    const auto tFile = model.TimeBaseTable.find(model.TimeIndexFile[c]);
    const auto tView = model.TimeBaseTable.find(model.TimeIndexView[c]);
    if (!tFile || !tView) {
        return false;
    }
    model.SampleStep[c] = static_cast<float>(*tFile * 10 / kPoints);
    const double x0 = kWidth / 2.0 - *tFile * (kWidth / 2.0 - static_cast<double>(model.ChannelXShift[c])) / *tView;
    for (int i = 0; i < kPoints; ++i) {
        const double value = model.ScreenTrace[c + kChannels * i];
        const auto x = toInt32(x0 + kWidth * (i * *tFile / *tView) / kPoints);
        const auto exact = exactY(model, channel, value);
        const auto y = exact ? toInt32(*exact) : std::nullopt;
        if (!x || !y) {
            return false;
        }
        if (i == 0) {
            picture.PSet(*x, *y);
        } else {
            picture.Line(*x, *y);
        }
    }
    return true;
}

} // namespace

void PicReDraw(publicM& model, const FrameInputs& inputs, Picture& picture2) {
    drawGrid(picture2);
    if (!deriveZeroLines(model, inputs.markerTop)) {
        return;
    }
    for (int channel = 0; channel < kChannels; ++channel) {
        const int c = channel;
        if (!inputs.selected[c]) {
            continue;
        }
        picture2.ForeColor = model.LineColor[c];
        if (!drawTrace(model, channel, picture2)) {
            return;
        }
    }
}

std::optional<std::int16_t> SampleToScreenY(const publicM& model, int channel, double value) {
    const auto exact = exactY(model, channel, value);
    return exact ? toInt16(*exact) : std::nullopt;
}

} // namespace sixtrace
