// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/colour.h"
#include "platform/drawing/picture.h"

#include <QFont>
#include <QImage>
#include <QString>

namespace sixtrace {

inline constexpr double kTwipsPerInch = 1440;
inline constexpr double kTwipsPerCentimetre = 567;

/// The drawing operations that a page needs, so that a printer and a picture of a sheet are interchangeable. All
/// lengths are twips, origin top left, Y downward. Lines are 1/96 inch wide. Dots of a line drawn on a page are dashes
/// of three widths with gaps of three.
///
/// What goes wrong while drawing is told by whoever finishes the page; a step that cannot be drawn is left out.
class PageTarget {
public:
    PageTarget() = default;
    PageTarget(const PageTarget&) = delete;
    PageTarget& operator=(const PageTarget&) = delete;
    virtual ~PageTarget() = default;

    double CurrentX = 0; ///< the current point: where the next text begins, and a line that names only its end
    double CurrentY = 0;
    Colour ForeColor = 0;
    sixtrace::DrawStyle DrawStyle = sixtrace::DrawStyle::Solid;
    double FontSize = 12; ///< points

    /// A line with both its end points. The current point moves to the second.
    void Line(double x1, double y1, double x2, double y2);
    /// A line from the current point.
    void LineTo(double x2, double y2) { Line(CurrentX, CurrentY, x2, y2); }
    /// The outline of a rectangle given by its upper left corner and its size.
    void LineBox(double left, double top, double width, double height);
    /// Text with its upper left corner at the current point, which moves to the start of the next line.
    void PrintLine(const QString& text);
    /// The same; the current point moves to the text's right end and stays on its line.
    void PrintText(const QString& text);
    /// A picture, stretched to a size.
    void PaintPicture(const QImage& picture, double left, double top, double width, double height);

    /// Dots per inch at which a picture for this target is best made.
    [[nodiscard]] virtual double resolution() const = 0;

protected:
    virtual void drawLine(double x1, double y1, double x2, double y2) = 0;
    virtual void drawText(double left, double baseline, const QString& text, const QFont& font) = 0;
    virtual void drawPicture(const QImage& picture, const QRectF& place) = 0;

private:
    [[nodiscard]] QFont font() const;
    void print(const QString& text);
};

} // namespace sixtrace
