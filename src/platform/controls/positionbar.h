// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSlider>
#include <QTimer>

namespace sixtrace {

/// The narrow upright bar beside the marker strip. While the thumb is dragged the bar has the new value already and
/// raises Scroll. It raises Change when the thumb is released, and when the value changes in any other way, by code
/// too. A thumb that is released where it was pressed raises only ScrollEnd: the value is a whole number and the place
/// that it stands for may not be, so Change would move what has not been moved.
class PositionBar : public QAbstractSlider {
    Q_OBJECT
public:
    explicit PositionBar(QWidget* parent);

    [[nodiscard]] int Value() const { return sliderPosition(); }
    [[nodiscard]] int Max() const { return maximum(); }
    /// Sets the nearest whole number inside the range. Does nothing for a value that is not a number.
    void setValueClamped(double value);
    /// The place of the thumb, in pixels inside the bar.
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
