// SPDX-License-Identifier: MIT
#include "platform/controls/arrowpair.h"

#include "platform/controls/look.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace sixtrace {

namespace {
constexpr int kFirstRepeatMs = 400;
constexpr int kNextRepeatMs = 100;
constexpr double kTriangleBase = 7;
constexpr double kTriangleHeight = 4;
} // namespace

ArrowPair::ArrowPair(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent)
    , m_orientation(orientation) {
    setFocusPolicy(Qt::StrongFocus);
    connect(&m_repeat, &QTimer::timeout, this, [this] {
        m_repeat.setInterval(kNextRepeatMs);
        step();
    });
}

QRectF ArrowPair::halfRect(Half half) const {
    const QRectF box(rect());
    if (m_orientation == Qt::Horizontal) {
        const double middle = box.width() / 2;
        return half == Half::Up ? QRectF(middle, 0, middle, box.height()) : QRectF(0, 0, middle, box.height());
    }
    const double middle = box.height() / 2;
    return half == Half::Up ? QRectF(0, 0, box.width(), middle) : QRectF(0, middle, box.width(), middle);
}

ArrowPair::Half ArrowPair::halfAt(const QPointF& point) const {
    if (halfRect(Half::Up).contains(point)) {
        return Half::Up;
    }
    return halfRect(Half::Down).contains(point) ? Half::Down : Half::None;
}

void ArrowPair::step() {
    if (m_pressed == Half::Up) {
        Q_EMIT UpClick();
    } else if (m_pressed == Half::Down) {
        Q_EMIT DownClick();
    }
}

void ArrowPair::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    m_pressed = halfAt(event->position());
    m_repeat.start(kFirstRepeatMs);
    update();
    step();
}

void ArrowPair::mouseReleaseEvent(QMouseEvent*) {
    m_repeat.stop();
    m_pressed = Half::None;
    update();
}

void ArrowPair::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Right) {
        Q_EMIT UpClick();
    } else if (event->key() == Qt::Key_Down || event->key() == Qt::Key_Left) {
        Q_EMIT DownClick();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void ArrowPair::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(bench::kFieldLine), 1));
    painter.setBrush(QColor::fromRgb(bench::kArrowBox));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    if (m_pressed != Half::None) {
        painter.fillRect(halfRect(m_pressed).adjusted(1, 1, -1, -1), QColor::fromRgb(bench::kTicked));
    }
    const QRectF upper = halfRect(Half::Up);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const QColor hairline = QColor::fromRgb(bench::kRule);
    if (m_orientation == Qt::Horizontal) {
        painter.fillRect(QRect(width() / 2, 3, 1, height() - 6), hairline);
    } else {
        painter.fillRect(QRect(3, static_cast<int>(upper.bottom()), width() - 6, 1), hairline);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(isEnabled() ? bench::kInk : bench::kDisabledIcon));
    for (const Half half : {Half::Up, Half::Down}) {
        const double sign = half == Half::Up ? 1 : -1;
        painter.save();
        painter.translate(halfRect(half).center());
        QPolygonF triangle{QPointF(-kTriangleBase / 2, sign * kTriangleHeight / 2),
                           QPointF(kTriangleBase / 2, sign * kTriangleHeight / 2),
                           QPointF(0, -sign * kTriangleHeight / 2)};
        if (m_orientation == Qt::Horizontal) {
            painter.rotate(90);
        }
        painter.drawPolygon(triangle);
        painter.restore();
    }
    if (hasFocus()) {
        paintFocusLine(painter, rect(), 3);
    }
}

} // namespace sixtrace
