// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/picture.h"

#include <QWidget>

namespace sixtrace {

class PictureBox;

/// A straight line that lies over a picture box without being part of its picture: a cursor. Coordinates are the
/// picture's. Owned by its box, which paints it one screen unit wide, never thinner than its twin.
class CursorLine : public QObject {
    Q_OBJECT
public:
    CursorLine(PictureBox& box, const QString& name, double x1, double y1, double x2, double y2, Colour colour);

    [[nodiscard]] double X1() const { return m_x1; }
    [[nodiscard]] double Y1() const { return m_y1; }
    [[nodiscard]] double X2() const { return m_x2; }
    [[nodiscard]] double Y2() const { return m_y2; }
    [[nodiscard]] bool isHorizontal() const { return m_y1 == m_y2; }
    [[nodiscard]] bool isVisible() const { return m_visible; }
    [[nodiscard]] Colour colour() const { return m_colour; }

    /// Moves a horizontal line to a height, both ends at once.
    void setY(double y);
    /// Moves an upright line sideways, both ends at once.
    void setX(double x);
    void setVisible(bool visible);

Q_SIGNALS:
    /// Place or visibility have changed.
    void changed();

private:
    PictureBox& m_box;
    double m_x1;
    double m_y1;
    double m_x2;
    double m_y2;
    Colour m_colour;
    bool m_visible = true;
};

/// Shows a Picture, which it owns, by a plain blit: one picture pixel is one logical pixel, sharp at whole display
/// scales, smooth between them. It draws nothing itself but the cursor lines on top.
///
/// Mouse signals carry screen units; the left button counts as 1, the right as 2, the middle one as 4.
class PictureBox : public QWidget {
    Q_OBJECT
public:
    PictureBox(int width, int height, QWidget* parent);

    [[nodiscard]] Picture& picture() { return m_picture; }
    [[nodiscard]] const Picture& picture() const { return m_picture; }

    /// The lines over the picture, in the order in which they were made.
    [[nodiscard]] const std::vector<CursorLine*>& lines() const { return m_lines; }
    void addLine(CursorLine& line) { m_lines.push_back(&line); }

Q_SIGNALS:
    void mouseDown(int button, double x, double y);
    void mouseMove(int button, double x, double y);
    void mouseUp(int button, double x, double y);
    void doubleClicked();
    /// Its words for assistive tools are now others: see platform/controls/spokentext.h.
    void spokenTextChanged(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    Picture m_picture;
    std::vector<CursorLine*> m_lines;
};

/// Number of a mouse button as handlers know it; for moves, the sum of all that are down.
[[nodiscard]] int buttonNumber(Qt::MouseButtons buttons);

} // namespace sixtrace
