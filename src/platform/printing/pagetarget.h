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
inline constexpr double kTwipsPerPoint = 20;

/// The drawing operations of a page. A printer and a picture of a sheet both have them, so that one can stand for the
/// other. All lengths are twips, with the origin at the top left and Y downward. Lines are 1/96 inch wide. A line of
/// style Dot has dashes of three widths with gaps of three.
///
/// A step that cannot be drawn is left out. The target reports the error when the page is finished.
class PageTarget {
public:
    PageTarget() = default;
    PageTarget(const PageTarget&) = delete;
    PageTarget& operator=(const PageTarget&) = delete;
    virtual ~PageTarget() = default;

    double CurrentX = 0; ///< the current point, where the next text begins, and a line that is given by its end only
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
    /// Draws a text with its upper left corner at the current point, which then moves to the start of the next line.
    void PrintLine(const QString& text);
    /// Does the same, but the current point moves to the right end of the text and stays on its line.
    void PrintText(const QString& text);
    /// A picture, stretched to a size.
    void PaintPicture(const QImage& picture, double left, double top, double width, double height);

    /// The best resolution for a picture that is pasted on this target, in dots per inch.
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
