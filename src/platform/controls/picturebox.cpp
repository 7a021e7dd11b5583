// SPDX-License-Identifier: MIT
#include "platform/controls/picturebox.h"

#include "platform/controls/look.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace sixtrace {

CursorLine::CursorLine(PictureBox& box, const QString& name, double x1, double y1, double x2, double y2, Colour colour)
    : QObject(&box)
    , m_box(box)
    , m_x1(x1)
    , m_y1(y1)
    , m_x2(x2)
    , m_y2(y2)
    , m_colour(colour) {
    setObjectName(name);
    box.addLine(*this);
}

void CursorLine::setY(double y) {
    m_y1 = m_y2 = y;
    m_box.update();
    Q_EMIT changed();
}

void CursorLine::setX(double x) {
    m_x1 = m_x2 = x;
    m_box.update();
    Q_EMIT changed();
}

void CursorLine::setVisible(bool visible) {
    m_visible = visible;
    m_box.update();
    Q_EMIT changed();
}

namespace {

/// A picture box as assistive tools see it. Qt's cache of accessible objects owns it.
class SpokenPicture : public QAccessibleWidget {
public:
    explicit SpokenPicture(PictureBox* box)
        : QAccessibleWidget(box, QAccessible::Graphic)
        , m_box(*box) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        // Some tools read the value of a picture, others only its description.
        const bool isSpoken = kind == QAccessible::Value || kind == QAccessible::Description;
        return isSpoken && m_box.hasSpokenText() ? m_box.spokenText() : QAccessibleWidget::text(kind);
    }

private:
    const PictureBox& m_box;
};

QAccessibleInterface* makeSpokenPicture(const QString&, QObject* object) {
    auto* box = qobject_cast<PictureBox*>(object);
    return box != nullptr ? new SpokenPicture(box) : nullptr;
}

} // namespace

PictureBox::PictureBox(int width, int height, QWidget* parent)
    : QWidget(parent)
    , m_picture(width, height) {
    // The picture covers the whole widget, so nothing has to be cleared before it is painted.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    // Has to be done before a tool first looks at a box. Further calls change nothing.
    QAccessible::installFactory(&makeSpokenPicture);
}

namespace {

/// Paints a line as a strip of whole device pixels, so that both lines of a pair are equally wide wherever they stand.
void paintLine(QPainter& painter, const CursorLine& line, double ratio) {
    const QTransform toDevice = painter.deviceTransform();
    const int thickness = std::max(1, static_cast<int>(std::lround(ratio)));
    const double x1 = std::min(line.X1(), line.X2());
    const double y1 = std::min(line.Y1(), line.Y2());
    const double x2 = std::max(line.X1(), line.X2()) + 1;
    const double y2 = std::max(line.Y1(), line.Y2()) + 1;
    QRectF device = toDevice.mapRect(QRectF(x1, y1, x2 - x1, y2 - y1));
    if (line.isHorizontal()) {
        device.setTop(std::round(device.top()));
        device.setHeight(thickness);
    } else {
        device.setLeft(std::round(device.left()));
        device.setWidth(thickness);
    }
    painter.fillRect(toDevice.inverted().mapRect(device), toQColor(line.colour()));
}

} // namespace

void PictureBox::announceSpokenText(const QString& text) {
    QAccessibleValueChangeEvent value(this, text);
    QAccessible::updateAccessibility(&value);
    QAccessibleEvent description(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&description);
    Q_EMIT spokenTextChanged(text);
}

void PictureBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // The scale of the device, not of the display: a picture of the window may be taken at any scale.
    const double ratio = painter.deviceTransform().m11();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != std::floor(ratio));
    painter.drawImage(QRectF(0, 0, m_picture.width(), m_picture.height()), m_picture.view());
    for (const CursorLine* line : m_lines) {
        if (line->isVisible()) {
            paintLine(painter, *line, ratio);
        }
    }
}

void PictureBox::mousePressEvent(QMouseEvent* event) {
    Q_EMIT mouseDown(event->position().x(), event->position().y());
}

void PictureBox::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT mouseMove(event->position().x(), event->position().y());
}

void PictureBox::mouseReleaseEvent(QMouseEvent*) {
    Q_EMIT mouseUp();
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent*) {
    Q_EMIT doubleClicked();
}

} // namespace sixtrace
