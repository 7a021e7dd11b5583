// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/picture.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace sixtrace {

class PictureBox;

/// A cursor: a straight line over a picture box that is no part of the picture. Coordinates are those of the picture.
/// Owned by its box, which paints it one screen unit wide.
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

    /// Moves both ends of a horizontal line to a height.
    void setY(double y);
    /// Moves both ends of an upright line sideways.
    void setX(double x);
    void setVisible(bool visible);

Q_SIGNALS:
    /// The line has moved, or was shown or hidden.
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

/// Shows a Picture, which it owns. One pixel of the picture is one logical pixel of the display, sharp at whole display
/// scales and smooth between them. The box itself draws nothing but the cursor lines on top.
///
/// The mouse signals carry places in screen units, for any button.
class PictureBox : public QWidget {
    Q_OBJECT
public:
    PictureBox(int width, int height, QWidget* parent);

    [[nodiscard]] Picture& picture() { return m_picture; }
    [[nodiscard]] const Picture& picture() const { return m_picture; }

    /// The lines over the picture, in the order in which they were made.
    [[nodiscard]] const std::vector<CursorLine*>& lines() const { return m_lines; }
    void addLine(CursorLine& line) { m_lines.push_back(&line); }

    /// Sets the text that assistive tools read as value and description of the box. `text` is called whenever a tool
    /// asks, as long as the box exists.
    void setSpokenText(std::function<QString()> text) { m_spokenText = std::move(text); }
    [[nodiscard]] bool hasSpokenText() const { return m_spokenText != nullptr; }
    /// Empty until one is set.
    [[nodiscard]] QString spokenText() const { return hasSpokenText() ? m_spokenText() : QString(); }
    /// Tells assistive tools that the text has changed to `text`.
    void announceSpokenText(const QString& text);

Q_SIGNALS:
    void mouseDown(double x, double y);
    void mouseMove(double x, double y);
    void mouseUp();
    void doubleClicked();
    /// Assistive tools have been told of a new text.
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
    std::function<QString()> m_spokenText;
};

} // namespace sixtrace
