// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSlider>
#include <QTimer>

namespace sixtrace {

/// The slim upright bar beside the marker strip. While the thumb is dragged it raises Scroll and already has the new
/// value; when it is let go, or the value changes in any other way (by code too), it raises Change. A thumb that is let
/// go where it was taken raises ScrollEnd alone: it may stand for more than the value can say.
class PositionBar : public QAbstractSlider {
    Q_OBJECT
public:
    explicit PositionBar(QWidget* parent);

    [[nodiscard]] int Value() const { return sliderPosition(); }
    [[nodiscard]] int Max() const { return maximum(); }
    /// A value outside the range goes to the nearer end.
    void setValueClamped(double value);
    /// Where the thumb stands, in pixels of the bar.
    [[nodiscard]] QRect thumbRect() const;

Q_SIGNALS:
    void Change();
    void Scroll();
    void ScrollEnd();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int valueAt(double y) const;
    [[nodiscard]] int trackLength() const;

    double m_pressY = 0;
    int m_valueAtPress = 0;
    QTimer m_repeat;
    SliderAction m_repeatAction = SliderNoAction;
};

} // namespace sixtrace
