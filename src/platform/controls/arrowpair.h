// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <QWidget>

namespace sixtrace {

/// Two small arrows in one box, side by side or one above the other. A press sends one signal, and more while the mouse
/// button stays down. The receiver decides what is stepped, and how far.
class ArrowPair : public QWidget {
    Q_OBJECT
public:
    ArrowPair(Qt::Orientation orientation, QWidget* parent);

Q_SIGNALS:
    /// The arrow that points up or right. It stands for the next higher row of a list.
    void UpClick();
    /// The arrow that points down or left.
    void DownClick();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class Half { None, Up, Down };
    [[nodiscard]] Half halfAt(const QPointF& point) const;
    [[nodiscard]] QRectF halfRect(Half half) const;
    void step();

    Qt::Orientation m_orientation;
    Half m_pressed = Half::None;
    QTimer m_repeat;
};

} // namespace sixtrace
