// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/pagetarget.h"

#include <functional>
#include <span>

namespace sixtrace {

/// A picture with the drawing operations of a page: the sheet of a preview, or the frame that is pasted on a page. It
/// uses no widget. Coordinates are rounded down to whole pixels, so that upright and level lines are sharp at every
/// resolution. Lines stay 1/96 inch wide. A picture that would be too large for the memory gets a lower resolution.
class PicturePage : public PageTarget {
public:
    explicit PicturePage(double dotsPerInch);

    Colour BackColor = 0x00FFFFFF;

    /// Called with the picture when a page is finished.
    std::function<void(const QImage& image)> showPicture;

    /// Makes a new picture of a size in twips and fills it with BackColor. False when the size is not above 0.
    [[nodiscard]] bool setSize(double width, double height);
    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height() const { return m_height; }

    /// Fills the picture with BackColor and moves the current point to the origin.
    void Cls();
    /// A dot as wide as a line. The current point moves there.
    void PSet(double x, double y);
    /// Solid lines from the current point through all points, in twips. The current point moves to the last.
    void Polyline(std::span<const QPointF> points);
    /// From now on a line of style Dot has dots with gaps of four widths, as on the scope screen, instead of dashes.
    void setScreenDots() { m_dots = {1, 5}; }

    [[nodiscard]] const QImage& Image() const { return m_image; }
    [[nodiscard]] double resolution() const override { return m_pixelsPerTwip * kTwipsPerInch; }

protected:
    void drawLine(double x1, double y1, double x2, double y2) override;
    void drawText(double left, double baseline, const QString& text, const QFont& font) override;
    void drawPicture(const QImage& picture, const QRectF& place) override;

private:
    struct Pattern {
        int on;
        int period;
    };

    [[nodiscard]] int pixelOf(double twips) const;
    void drawUpright(QPoint from, QPoint to);
    [[nodiscard]] QPen pen() const;
    /// The offset that makes the first pixel of the pen the pixel of the point.
    [[nodiscard]] QPointF penOffset() const;
    void fill(int x, int y, int width, int height);

    double m_dotsPerInch;
    double m_pixelsPerTwip;
    int m_pen = 1; ///< width of a line, pixels
    double m_width = 0;
    double m_height = 0;
    Pattern m_dots{3, 6};
    QImage m_image;
};

} // namespace sixtrace
