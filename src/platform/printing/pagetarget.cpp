// SPDX-License-Identifier: MIT
#include "platform/printing/pagetarget.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace sixtrace {

void PageTarget::Line(double x1, double y1, double x2, double y2) {
    drawLine(x1, y1, x2, y2);
    CurrentX = x2;
    CurrentY = y2;
}

void PageTarget::LineBox(double left, double top, double width, double height) {
    const double right = left + width;
    const double bottom = top + height;
    drawLine(left, top, right, top);
    drawLine(left, bottom, right, bottom);
    drawLine(left, top, left, bottom);
    drawLine(right, top, right, bottom);
    CurrentX = right;
    CurrentY = bottom;
}

// One pixel of this font is a twip, so that texts have the same size on every target and the preview looks like the
// printed page. The font is monospaced, since the rows of the channel list align their columns by blanks.
QFont PageTarget::font() const {
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("WenQuanYi Micro Hei Mono"),
                      QStringLiteral("Consolas"), QStringLiteral("Menlo")});
    font.setStyleHint(QFont::Monospace);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(std::clamp(static_cast<int>(std::lround(FontSize * kTwipsPerPoint)), 1, 100'000));
    return font;
}

void PageTarget::print(const QString& text) {
    const QFont shownFont = font();
    const QFontMetricsF metrics(shownFont);
    drawText(CurrentX, CurrentY + metrics.ascent(), text, shownFont);
}

void PageTarget::PrintLine(const QString& text) {
    print(text);
    CurrentX = 0;
    CurrentY += QFontMetricsF(font()).height();
}

void PageTarget::PrintText(const QString& text) {
    print(text);
    CurrentX += QFontMetricsF(font()).horizontalAdvance(text);
}

void PageTarget::PaintPicture(const QImage& picture, double left, double top, double width, double height) {
    drawPicture(picture, {left, top, width, height});
}

} // namespace sixtrace
