// SPDX-License-Identifier: MIT
#include "platform/controls/markerlabel.h"

#include "platform/controls/look.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace sixtrace {

namespace {

/// The upper edge of the pixel that a place lies in. The label stands on whole pixels, so fractions of the pointer's
/// place would add up from move to move.
Twips wholePixel(double place) {
    return twipsOfPixels(std::floor(place));
}

} // namespace

MarkerLabel::MarkerLabel(QString caption, Twips width, Twips height, QWidget* parent)
    : QWidget(parent)
    , m_caption(std::move(caption))
    , m_back(Qt::white)
    , m_height(height) {
    resize(nearestPixel(width), nearestPixel(height));
}

void MarkerLabel::setCaption(const QString& caption) {
    m_caption = caption;
    update();
}

void MarkerLabel::setBackColor(const QColor& back) {
    m_back = back;
    update();
}

void MarkerLabel::setTop(Twips top) {
    m_top = top;
    // A label far outside the strip is unseen wherever it is; the bound keeps its place within what a widget can hold.
    constexpr Twips kFar{100000};
    const Twips bounded = std::isnan(top.number()) ? Twips() : std::clamp(top, -kFar, kFar);
    move(0, nearestPixel(bounded));
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
    // The edge of the strip may cover a part of the label. The caption is centred in the part that is seen.
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
    Q_EMIT mouseDown(wholePixel(event->position().y()));
}

void MarkerLabel::mouseMoveEvent(QMouseEvent* event) {
    constexpr Qt::MouseButtons kKnown = Qt::LeftButton | Qt::RightButton | Qt::MiddleButton;
    Q_EMIT mouseMove(event->buttons() & kKnown, wholePixel(event->position().y()));
}

void MarkerLabel::mouseReleaseEvent(QMouseEvent*) {
    Q_EMIT mouseUp();
}

void MarkerLabel::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT doubleClicked();
}

} // namespace sixtrace
