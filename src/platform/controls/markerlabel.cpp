// SPDX-License-Identifier: MIT
#include "platform/controls/markerlabel.h"

#include "platform/controls/look.h"
#include "platform/controls/picturebox.h"
#include "platform/drawing/twips.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace sixtrace {

namespace {

/// Twips of the pixel that a place lies in. The label itself stands on whole pixels: fractions of a pointer would add
/// up from move to move.
double wholePixel(double place) {
    return std::floor(place) * kTwips;
}

} // namespace

MarkerLabel::MarkerLabel(QString caption, double width, double height, QWidget* parent)
    : QWidget(parent)
    , m_caption(std::move(caption))
    , m_back(Qt::white)
    , m_height(height) {
    resize(pixelsOfTwips(width), pixelsOfTwips(height));
}

void MarkerLabel::setCaption(const QString& caption) {
    m_caption = caption;
    update();
}

void MarkerLabel::setBackColor(const QColor& back) {
    m_back = back;
    update();
}

void MarkerLabel::setTop(double twips) {
    m_top = twips;
    // A place far outside is as good as any other there; the bound keeps it inside what widgets can hold.
    constexpr double kFar = 100000;
    const double bounded = std::isnan(twips) ? 0 : std::clamp(twips, -kFar, kFar);
    move(0, pixelsOfTwips(bounded));
}

void MarkerLabel::setBorder(bool shown) {
    m_border = shown;
    update();
}

void MarkerLabel::setFocusLine(bool shown) {
    m_focusLine = shown;
    update();
}

void MarkerLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), m_back);
    const QColor ink = contrastingText(m_back);
    painter.setFont(interfaceFont(kSmallTextPixels));
    painter.setPen(ink);
    // The strip's edge may cover a part: the caption is centred in what is left to see.
    const QRect visible =
        parentWidget() != nullptr ? parentWidget()->rect().translated(-pos()).intersected(rect()) : rect();
    painter.drawText(visible, Qt::AlignCenter | Qt::TextSingleLine, m_caption);
    if (m_border) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(ink, 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    if (m_focusLine) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(bench::kAccent), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}

void MarkerLabel::mousePressEvent(QMouseEvent* event) {
    Q_EMIT mouseDown(buttonNumber(event->button()), wholePixel(event->position().y()));
}

void MarkerLabel::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT mouseMove(buttonNumber(event->buttons()), wholePixel(event->position().y()));
}

void MarkerLabel::mouseReleaseEvent(QMouseEvent* event) {
    Q_EMIT mouseUp(buttonNumber(event->button()), wholePixel(event->position().y()));
}

void MarkerLabel::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT doubleClicked();
}

} // namespace sixtrace
