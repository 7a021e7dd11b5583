// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

namespace sixtrace {

/// A small flat label on the marker strip. Its place is kept in twips as a number of its own; the widget follows it to
/// the nearest pixel, so that positions survive arithmetic that the pixels would round away.
///
/// Mouse signals carry the pointer's height inside the label, whole pixels in twips, and button numbers as PictureBox
/// does.
class MarkerLabel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    /// Width and height in twips.
    MarkerLabel(QString caption, double width, double height, QWidget* parent);

    [[nodiscard]] QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    [[nodiscard]] QColor backColor() const { return m_back; }
    void setBackColor(const QColor& back);

    [[nodiscard]] double Top() const { return m_top; }
    void setTop(double twips);
    [[nodiscard]] double Height() const { return m_height; }

    /// The pressed look: a thin line inside the box; size and place do not change.
    void setBorder(bool shown);
    [[nodiscard]] bool hasBorder() const { return m_border; }
    /// The accent line of a control that has the keyboard.
    void setFocusLine(bool shown);
    [[nodiscard]] bool hasFocusLine() const { return m_focusLine; }

Q_SIGNALS:
    void mouseDown(int button, double y);
    void mouseMove(int button, double y);
    void mouseUp(int button, double y);
    void doubleClicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QString m_caption;
    QColor m_back;
    double m_top = 0;
    double m_height;
    bool m_border = false;
    bool m_focusLine = false;
};

} // namespace sixtrace
