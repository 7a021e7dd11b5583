// SPDX-License-Identifier: MIT
#pragma once

#include "capture/settings.h"
#include "support/flatcapture.h"
#include "view/frame.h"
#include "view/geometry.h"

#include <memory>
#include <set>
#include <utility>

namespace sixtrace::test {

/// A screen with a model in which channels can be set up by hand: one pixel a count, one sample a pixel, zero line in
/// the middle, unless a test says otherwise.
struct TestScreen {
    std::unique_ptr<publicM> model = std::make_unique<publicM>();
    FrameInputs inputs;
    FrameRenderer renderer;
    Picture picture2{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden0{kSurfaceWidth, kSurfaceHeight};
    Picture picHidden1{kSurfaceWidth, kSurfaceHeight};

    TestScreen() {
        model->fillTables();
        applyDefaultColours(*model);
        model->FileKind = 4;
        picture2.BackColor = model->BackColor;
        picture2.Cls();
        inputs.markerTop.fill(Twips{2910}); // (105 + 2910) / 6030 * 400 = 200
    }

    void addChannel(int channel, int points, int samples) {
        test::addChannel(*model, channel, points, samples);
        inputs.selected[channel] = true;
    }

    void draw() { renderer.PicReDrawT(*model, inputs, picture2, picHidden0); }
};

/// Places of the cursor lines: rows of the voltage cursors, columns of the time cursors.
inline CursorPlaces placesAt(double y1, double y2, double x1, double x2) {
    return {{ScreenY(y1), ScreenY(y2)}, {ScreenX(x1), ScreenX(x2)}};
}

inline bool sameRows(const Picture& a, const Picture& b, int width, int height) {
    for (int y = 0; y < height; ++y) {
        if (!std::equal(a.row(y), a.row(y) + width, b.row(y))) {
            return false;
        }
    }
    return true;
}

inline bool samePicture(const Picture& a, const Picture& b) {
    return sameRows(a, b, a.width(), a.height());
}

inline constexpr Colour kRed = 255; ///< of the trace of channel 0

/// Columns and rows at which a picture shows a colour.
inline std::set<std::pair<int, int>> pixelsOf(const Picture& picture, Colour colour) {
    std::set<std::pair<int, int>> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.Point(x, y) == colour) {
                pixels.insert({x, y});
            }
        }
    }
    return pixels;
}

inline std::set<int> columnsOf(const Picture& picture, Colour colour) {
    std::set<int> columns;
    for (const auto& [x, y] : pixelsOf(picture, colour)) {
        columns.insert(x);
    }
    return columns;
}

inline std::set<int> range(int first, int last) {
    std::set<int> numbers;
    for (int i = first; i <= last; ++i) {
        numbers.insert(i);
    }
    return numbers;
}

} // namespace sixtrace::test
