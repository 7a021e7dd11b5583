// SPDX-License-Identifier: MIT
#include "platform/controls/positionbar.h"

#include "platform/controls/look.h"
#include "platform/text/numbers.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace sixtrace {

namespace {
constexpr int kEndLength = 12;
constexpr int kThumbWidth = 6;
constexpr int kShortestThumb = 32;
constexpr int kVisibleWidth = 8; ///< the marker strip covers the ninth pixel
constexpr int kFirstRepeatMs = 400;
constexpr int kNextRepeatMs = 60;
} // namespace

PositionBar::PositionBar(QWidget* parent)
    : QAbstractSlider(parent) {
    setOrientation(Qt::Vertical);
    setInvertedControls(true); // larger values are lower
    setTracking(false);
    setSingleStep(1);
    setPageStep(1);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QAbstractSlider::valueChanged, this, &PositionBar::Change);
    connect(this, &QAbstractSlider::sliderMoved, this, &PositionBar::Scroll);
    connect(&m_repeat, &QTimer::timeout, this, [this] {
        m_repeat.setInterval(kNextRepeatMs);
        triggerAction(m_repeatAction);
    });
}

void PositionBar::setValueClamped(double value) {
    if (std::isnan(value)) {
        return;
    }
    const double bounded = std::clamp(value, 1.0 * minimum(), 1.0 * maximum());
    setValue(toInt32(bounded).value_or(minimum()));
}

int PositionBar::trackLength() const {
    return height() - 2 * kEndLength;
}

QRect PositionBar::thumbRect() const {
    const int range = maximum() - minimum();
    const int length = std::clamp(range > 0 ? trackLength() / (range + 1) : trackLength(), kShortestThumb,
                                  std::max(kShortestThumb, trackLength()));
    const int travel = trackLength() - length;
    const double share = range > 0 ? 1.0 * (Value() - minimum()) / range : 0.5;
    return {(kVisibleWidth - kThumbWidth) / 2, kEndLength + static_cast<int>(std::lround(share * travel)), kThumbWidth,
            length};
}

int PositionBar::valueAt(double y) const {
    const int travel = trackLength() - thumbRect().height();
    if (travel <= 0) {
        return m_valueAtPress;
    }
    // Counted from the place of the press, so that a pointer that returns there gives the old value: one pixel may
    // stand for several values.
    const double moved = (y - m_pressY) / travel * (maximum() - minimum());
    return std::clamp(m_valueAtPress + static_cast<int>(std::lround(moved)), minimum(), maximum());
}

void PositionBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const double y = event->position().y();
    const QRect thumb = thumbRect();
    if (y >= thumb.top() && y <= thumb.bottom()) {
        m_pressY = y;
        m_valueAtPress = value();
        setSliderDown(true);
        update();
        return;
    }
    m_repeatAction = y < kEndLength               ? SliderSingleStepSub
                     : y >= height() - kEndLength ? SliderSingleStepAdd
                     : y < thumb.top()            ? SliderPageStepSub
                                                  : SliderPageStepAdd;
    triggerAction(m_repeatAction);
    m_repeat.start(kFirstRepeatMs);
}

void PositionBar::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) {
        setSliderPosition(valueAt(event->position().y()));
        update();
    }
}

void PositionBar::mouseReleaseEvent(QMouseEvent*) {
    m_repeat.stop();
    if (!isSliderDown()) {
        return;
    }
    setSliderDown(false);
    if (value() == m_valueAtPress) {
        Q_EMIT ScrollEnd();
    }
    update();
}

void PositionBar::wheelEvent(QWheelEvent* event) {
    // A wheel turned while the pointer passes over the bar would move a trace unnoticed.
    if (hasFocus()) {
        QAbstractSlider::wheelEvent(event);
    } else {
        event->ignore();
    }
}

void PositionBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        m_repeat.stop();
        update();
    }
    QAbstractSlider::changeEvent(event);
}

void PositionBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, kVisibleWidth, height()), QColor::fromRgb(bench::kScrollTrack));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgb(isEnabled() ? bench::kInk : bench::kDisabledIcon));
    const double centre = kVisibleWidth / 2.0;
    const double top = kEndLength / 2.0;
    const double bottom = height() - kEndLength / 2.0;
    painter.drawPolygon(
        QPolygonF{QPointF(centre - 3, top + 2), QPointF(centre + 3, top + 2), QPointF(centre, top - 2)});
    painter.drawPolygon(
        QPolygonF{QPointF(centre - 3, bottom - 2), QPointF(centre + 3, bottom - 2), QPointF(centre, bottom + 2)});
    painter.setBrush(QColor::fromRgb(!isEnabled()     ? bench::kScrollThumbDisabled
                                     : isSliderDown() ? bench::kMuted
                                                      : bench::kScrollThumb));
    painter.drawRoundedRect(thumbRect(), 3, 3);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor::fromRgb(bench::kAccent), 2));
        painter.drawRect(QRectF(1, 1, kVisibleWidth - 2, height() - 2));
    }
}

} // namespace sixtrace
