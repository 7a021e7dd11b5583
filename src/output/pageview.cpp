// SPDX-License-Identifier: MIT
#include "output/pageview.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace sixtrace {

namespace {

constexpr QRgb kDesk = 0xFF7E8794;
constexpr int kShadow = 3; ///< pixels

/// The nearest pixel that a widget can have.
int pixelOf(Twips place) {
    constexpr Twips kMost = QWIDGETSIZE_MAX * kPixel;
    return nearestPixel(std::clamp(place, -kMost, kMost));
}

} // namespace

void PagePointing::mousePressEvent(QMouseEvent* event) {
    Q_EMIT mouseDown(event->button(), twipsOfPixels(event->position().x()), twipsOfPixels(event->position().y()));
}

void PagePointing::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT mouseMove(event->buttons(), twipsOfPixels(event->position().x()), twipsOfPixels(event->position().y()));
}

PageView::PageView(QWidget* parent)
    : PagePointing(parent) {}

void PageView::setSize(Twips width, Twips height) {
    m_width = std::max(width, Twips{0});
    m_height = std::max(height, Twips{0});
    follow();
}

void PageView::Move(Twips left, Twips top) {
    m_left = left;
    m_top = top;
    follow();
}

void PageView::follow() {
    const QRect place(pixelOf(m_left), pixelOf(m_top), pixelOf(m_width), pixelOf(m_height));
    if (place.size() != size()) {
        m_reduced = {};
    }
    setGeometry(place);
    if (parentWidget() != nullptr) {
        parentWidget()->update(); // the shadow moves along
    }
}

void PageView::setPicture(const QImage& picture) {
    m_picture = picture;
    m_reduced = {};
    update();
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), Qt::white);
    if (m_picture.isNull()) {
        return;
    }
    const QSize target = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (target.width() < m_picture.width() && target.height() < m_picture.height()) {
        // A picture of averaged pixels keeps thin lines and small text.
        if (m_reduced.isNull()) {
            m_reduced = m_picture.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            m_reduced.setDevicePixelRatio(devicePixelRatioF());
        }
        painter.drawImage(QPoint(), m_reduced);
        return;
    }
    // Only the visible part is drawn: a picture that is enlarged a thousand times is too large for a painter.
    const QRect part = event->rect();
    const double sx = static_cast<double>(m_picture.width()) / std::max(width(), 1);
    const double sy = static_cast<double>(m_picture.height()) / std::max(height(), 1);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, target != m_picture.size());
    painter.drawImage(QRectF(part), m_picture, {part.x() * sx, part.y() * sy, part.width() * sx, part.height() * sy});
}

void PageDesk::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), QColor::fromRgb(kDesk));
    if (m_page == nullptr) {
        return;
    }
    for (int ring = kShadow; ring > 0; --ring) {
        painter.fillRect(m_page->geometry().adjusted(1 - ring, 1 - ring, ring, ring), QColor(0, 0, 0, 40));
    }
}

PageBox::PageBox(double dotsPerInch, QWidget* parent)
    : QWidget(parent)
    , m_page(dotsPerInch) {
    hide();
}

} // namespace sixtrace
