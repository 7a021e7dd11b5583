// SPDX-License-Identifier: MIT
#include "output/pagegraticule.h"

namespace sixtrace {

namespace {

// Lengths of ticks, twips.
constexpr double kEdgeTick = 110;
constexpr double kDivisionTick = 220;
// The fine ticks of the upright centre line are longer to the right than to the left.
constexpr double kFineLeft = 100;
constexpr double kFineRight = 110;

void drawDottedDivisions(PicturePage& picture, double width, double height, int divisions) {
    picture.DrawStyle = DrawStyle::Dot;
    for (int i = 1; i <= 7; ++i) {
        const double y = height * i / 8;
        picture.Line(0, y, width, y);
    }
    for (int i = 1; i < divisions; ++i) {
        const double x = i * width / divisions;
        picture.Line(x, 0, x, height);
    }
}

void drawCross(PicturePage& picture, double width, double height, int divisions) {
    picture.DrawStyle = DrawStyle::Dot;
    picture.Line(width / 2, 0, width / 2, height);
    picture.Line(0, height / 2, width, height / 2);
    picture.DrawStyle = DrawStyle::Solid;
    for (int i = 1; i <= 7; ++i) {
        const double y = height * i / 8;
        picture.Line(0, y, kEdgeTick, y);
        picture.Line(width - kEdgeTick, y, width, y);
        picture.Line(width / 2 - kDivisionTick, y, width / 2 + kDivisionTick, y);
    }
    for (int i = 1; i < divisions; ++i) {
        const double x = i * width / divisions;
        picture.Line(x, 0, x, kDivisionTick);
        picture.Line(x, height - kDivisionTick, x, height);
        picture.Line(x, height / 2 - kDivisionTick, x, height / 2 + kDivisionTick);
    }
}

void drawFineTicks(PicturePage& picture, double width, double height, int divisions) {
    picture.DrawStyle = DrawStyle::Solid;
    for (int i = 0; i <= 40; ++i) {
        const double y = height * i / 40;
        picture.Line(0, y, kEdgeTick, y);
        picture.Line(width - kEdgeTick, y, width, y);
        picture.Line(width / 2 - kFineLeft, y, width / 2 + kFineRight, y);
    }
    const double step = width / divisions / 5;
    // The last tick is outside the frame.
    for (int i = 0; i <= 5 * divisions + 1; ++i) {
        const double x = i * step;
        picture.Line(x, 0, x, kEdgeTick);
        picture.Line(x, height - kEdgeTick, x, height);
        picture.Line(x, height / 2 - kEdgeTick, x, height / 2 + kEdgeTick);
    }
}

} // namespace

void drawPageGraticule(PicturePage& picture, double width, double height, Graticule style, int divisions) {
    picture.DrawStyle = DrawStyle::Solid;
    picture.Line(0, 0, width, 0);
    picture.Line(0, 0, 0, height);
    picture.Line(width, 0, width, height);
    picture.Line(0, height, width, height);
    if (style == Graticule::Dotted) {
        drawDottedDivisions(picture, width, height, divisions);
    } else {
        drawCross(picture, width, height, divisions);
    }
    drawFineTicks(picture, width, height, divisions);
}

void PageSink::samples(const PointRun& points) {
    m_points.clear();
    for (int row = points.firstRow; row < points.firstRow + points.count; ++row) {
        m_points.emplace_back(m_model.PlotX(m_channel, row), m_model.PlotY(m_channel, row));
    }
    if (m_style == TraceStyle::Lines) {
        m_picture.Polyline(m_points);
        return;
    }
    for (const QPointF& point : m_points) {
        m_picture.PSet(point.x(), point.y());
    }
}

} // namespace sixtrace
