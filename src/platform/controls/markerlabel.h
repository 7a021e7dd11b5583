// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/lengths.h"

#include <QColor>
#include <QWidget>

namespace sixtrace {

/// A small flat label on the marker strip. It keeps its place in twips and stands on the nearest pixel, so that
/// calculations with the place do not suffer from rounding to pixels.
///
/// The mouse signals carry the height of the pointer inside the label: whole pixels, in twips.
class MarkerLabel : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString caption READ caption WRITE setCaption)
public:
    MarkerLabel(QString caption, Twips width, Twips height, QWidget* parent);

    [[nodiscard]] QString caption() const { return m_caption; }
    void setCaption(const QString& caption);
    [[nodiscard]] QColor backColor() const { return m_back; }
    void setBackColor(const QColor& back);

    [[nodiscard]] Twips Top() const { return m_top; }
    void setTop(Twips top);
    [[nodiscard]] Twips Height() const { return m_height; }

    /// Shows a thin line inside the box while the label is pressed. Size and place do not change.
    void setBorder(bool shown);
    [[nodiscard]] bool hasBorder() const { return m_border; }
    /// Shows the line of the control that has the keyboard focus.
    void setFocusLine(bool shown);
    [[nodiscard]] bool hasFocusLine() const { return m_focusLine; }

Q_SIGNALS:
    void mouseDown(Twips y);
    /// `buttons` is those of left, right and middle that are down.
    void mouseMove(Qt::MouseButtons buttons, Twips y);
    void mouseUp();
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
    Twips m_top;
    Twips m_height;
    bool m_border = false;
    bool m_focusLine = false;
};

} // namespace sixtrace
