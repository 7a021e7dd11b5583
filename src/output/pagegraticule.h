// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/picturepage.h"
#include "view/channelplot.h"

#include <vector>

namespace sixtrace {

/// The twips by which the picture of a frame is larger than the frame, so that it holds the right and lower border.
inline constexpr int kFrameBorder = 10;

/// Draws the border, the graticule and the ticks of a page's frame at the origin, in the picture's ForeColor. The
/// graticule has dotted division lines, or a dotted cross in the centre with division ticks. It has `divisions` columns
/// and 8 rows; sizes are in twips.
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
