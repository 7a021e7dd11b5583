// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/picturepage.h"
#include "view/channelplot.h"

#include <vector>

namespace sixtrace {

/// What the picture of a frame is larger than the frame, twips, so that its right and lower border show.
inline constexpr int kFrameBorder = 10;

/// Border, graticule and ticks of a page's frame in the picture's ForeColor, at the origin: dotted division lines, or
/// a dotted centre cross with division ticks. `divisions` across, 8 down; sizes in twips.
void drawPageGraticule(PicturePage& picture, double width, double height, Graticule style, int divisions);

/// Draws a channel's samples into the picture of a frame.
class PageSink : public TraceSink {
public:
    PageSink(PicturePage& picture, const publicM& model, int channel, TraceStyle style)
        : m_picture(picture)
        , m_model(model)
        , m_channel(channel)
        , m_style(style) {}

    void dot(std::int32_t x, std::int32_t y) override { m_picture.PSet(x, y); }
    void samples(const PointRun& points) override;

private:
    PicturePage& m_picture;
    const publicM& m_model;
    int m_channel;
    TraceStyle m_style;
    std::vector<QPointF> m_points;
};

} // namespace sixtrace
