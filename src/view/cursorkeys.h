// SPDX-License-Identifier: MIT
#pragma once

#include "view/screenmouse.h"

#include <QObject>
#include <QWidget>

#include <array>
#include <functional>

namespace sixtrace {

class CursorLine;
class PictureBox;

/// Gives a cursor line the keyboard focus: a transparent strip over the line, there while the line is shown. It shows
/// the focus by accent lines on both sides of the line and lets the mouse through. Owned by the picture box.
class CursorHandle : public QWidget {
public:
    CursorHandle(PictureBox& box, const CursorLine& line, const QString& name);

    /// Whether the focus is shown: when the keyboard gave it, or after the first key that moved the line.
    [[nodiscard]] bool hasFocusLine() const { return m_focusLine; }
    void setFocusLine(bool shown);

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void follow();

    const CursorLine& m_line;
    bool m_focusLine = false;
};

/// Arrow keys for the cursor lines: they move the line that has the focus, or that the mouse holds, by one screen unit.
/// A press of the mouse on a line gives it the focus. Owned by the window.
class CursorKeys : public QObject {
public:
    static constexpr std::size_t kLines = 4; ///< Line1(0), Line1(1), Line2(0), Line2(1)
    using Lines = std::array<CursorLine*, kLines>;

    /// `moved` is called after every key that has changed something.
    CursorKeys(ScreenMouse& mouse, PictureBox& Picture2, const Lines& lines, std::function<void()> moved,
               QObject* parent);

    /// In the order of the Tab key.
    [[nodiscard]] const std::array<CursorHandle*, kLines>& handles() const { return m_handles; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// False where the key does not move this line.
    bool keyPressed(std::size_t line, int key);
    void step(std::size_t line, int units);
    void focusGrabbed();

    ScreenMouse& m_mouse;
    PictureBox& m_Picture2;
    Lines m_lines;
    std::function<void()> m_moved;
    std::array<CursorHandle*, kLines> m_handles{};
};

} // namespace sixtrace
