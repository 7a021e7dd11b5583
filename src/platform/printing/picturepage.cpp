// SPDX-License-Identifier: MIT
#include "platform/printing/picturepage.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace sixtrace {

namespace {

constexpr double kLinesPerInch = 96;
/// A sheet of A3 at 300 dots per inch has 17 million pixels, the frame of an A4 page at 600 has 12 million.
constexpr double kMostPixels = 64e6;
constexpr double kMostAcross = 32000; // pixels of a side: the painter's own limit
/// Far outside every picture, and well within the range of the painter's coordinates.
constexpr double kFarPixel = 1e6;

} // namespace

PicturePage::PicturePage(double dotsPerInch)
    : m_dotsPerInch(dotsPerInch)
    , m_pixelsPerTwip(dotsPerInch / kTwipsPerInch) {}

bool PicturePage::setSize(double width, double height) {
    if (!(width > 0 && height > 0)) {
        return false;
    }
    m_width = width;
    m_height = height;
    m_pixelsPerTwip = std::min(m_dotsPerInch / kTwipsPerInch, std::sqrt(kMostPixels / (width * height)));
    m_pen = std::max(1, static_cast<int>(std::lround(resolution() / kLinesPerInch)));
    const auto pixels = [this](double twips) {
        return static_cast<int>(std::clamp(std::ceil(twips * m_pixelsPerTwip - 1e-6), 1.0, kMostAcross));
    };
    m_image = QImage(pixels(width), pixels(height), QImage::Format_RGB32);
    if (m_image.isNull()) {
        return false;
    }
    Cls();
    return true;
}

void PicturePage::Cls() {
    m_image.fill(pixelOfColour(BackColor));
    CurrentX = 0;
    CurrentY = 0;
}

int PicturePage::pixelOf(double twips) const {
    // A small amount is added: 15 twips are a whole pixel, but no exact binary fraction of an inch.
    return static_cast<int>(std::floor(std::clamp(twips * m_pixelsPerTwip + 1e-6, -kFarPixel, kFarPixel)));
}

void PicturePage::fill(int x, int y, int width, int height) {
    const QRect place = QRect(x, y, width, height) & m_image.rect();
    const std::uint32_t pixel = pixelOfColour(ForeColor);
    for (int row = place.top(); row <= place.bottom(); ++row) {
        std::fill_n(reinterpret_cast<std::uint32_t*>(m_image.scanLine(row)) + place.left(), place.width(), pixel);
    }
}

void PicturePage::PSet(double x, double y) {
    fill(pixelOf(x), pixelOf(y), m_pen, m_pen);
    CurrentX = x;
    CurrentY = y;
}

/// Draws an upright or level line. Only such lines have patterns.
void PicturePage::drawUpright(QPoint from, QPoint to) {
    const bool across = from.y() == to.y();
    const int start = across ? std::min(from.x(), to.x()) : std::min(from.y(), to.y());
    const int end = (across ? std::max(from.x(), to.x()) : std::max(from.y(), to.y())) + m_pen;
    const bool solid = DrawStyle == sixtrace::DrawStyle::Solid;
    const int on = solid ? end - start : m_dots.on * m_pen;
    const int period = solid ? end - start : m_dots.period * m_pen;
    const int last = std::min(end, across ? m_image.width() : m_image.height());
    for (int at = start; at < last; at += period) {
        const int length = std::min(on, end - at);
        if (across) {
            fill(at, from.y(), length, m_pen);
        } else {
            fill(from.x(), at, m_pen, length);
        }
    }
}

void PicturePage::drawLine(double x1, double y1, double x2, double y2) {
    const QPoint from(pixelOf(x1), pixelOf(y1));
    const QPoint to(pixelOf(x2), pixelOf(y2));
    if (from.x() == to.x() || from.y() == to.y()) {
        drawUpright(from, to);
        return;
    }
    QPainter painter(&m_image);
    painter.setPen(pen());
    painter.drawLine(QPointF(from) + penOffset(), QPointF(to) + penOffset());
}

QPen PicturePage::pen() const {
    return {QColor::fromRgb(pixelOfColour(ForeColor)), static_cast<double>(m_pen), Qt::SolidLine, Qt::RoundCap};
}

QPointF PicturePage::penOffset() const {
    const double middle = m_pen > 1 ? m_pen / 2.0 : 0;
    return {middle, middle};
}

void PicturePage::Polyline(std::span<const QPointF> points) {
    if (points.empty()) {
        return;
    }
    QPainter painter(&m_image);
    painter.setClipRect(m_image.rect());
    painter.setPen(pen());
    QPoint at(pixelOf(CurrentX), pixelOf(CurrentY));
    for (const QPointF& point : points) {
        const QPoint next(pixelOf(point.x()), pixelOf(point.y()));
        if (next != at) {
            painter.drawLine(QPointF(at) + penOffset(), QPointF(next) + penOffset());
        }
        at = next;
    }
    CurrentX = points.back().x();
    CurrentY = points.back().y();
}

void PicturePage::drawText(double left, double baseline, const QString& text, const QFont& font) {
    QPainter painter(&m_image);
    painter.scale(m_pixelsPerTwip, m_pixelsPerTwip);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(pixelOfColour(ForeColor)));
    painter.drawText(QPointF(left, baseline), text);
}

void PicturePage::drawPicture(const QImage& picture, const QRectF& place) {
    QPainter painter(&m_image);
    const QPoint corner(pixelOf(place.left()), pixelOf(place.top()));
    const QSizeF size = place.size() * m_pixelsPerTwip;
    if (std::abs(size.width() - picture.width()) <= 1 && std::abs(size.height() - picture.height()) <= 1) {
        painter.drawImage(corner, picture); // it was made for this size, so that it need not be stretched
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(corner, size), picture);
    }
}

} // namespace sixtrace
