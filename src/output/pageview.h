// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/picturepage.h"

#include <QWidget>

namespace sixtrace {

/// A widget that tells where in it the mouse is pressed and moved, in twips. A press comes with its button, a move with
/// all buttons that are down.
class PagePointing : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button, double x, double y);
    void mouseMove(Qt::MouseButtons buttons, double x, double y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

/// Shows the picture of a page, stretched to its size. Place and size are kept in twips, the widget follows to the
/// nearest pixel.
class PageView : public PagePointing {
    Q_OBJECT
public:
    explicit PageView(QWidget* parent);

    [[nodiscard]] double Left() const { return m_left; }
    [[nodiscard]] double Top() const { return m_top; }
    [[nodiscard]] double Width() const { return m_width; }
    [[nodiscard]] double Height() const { return m_height; }
    void setSize(double width, double height);
    void Move(double left, double top);

    [[nodiscard]] const QImage& Picture() const { return m_picture; }
    void setPicture(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();

    double m_left = 0;
    double m_top = 0;
    double m_width = 0;
    double m_height = 0;
    QImage m_picture;
    QImage m_reduced; ///< the picture at the size shown, while that is smaller than itself
};

/// The desk behind a page, which casts a soft shadow on it.
class PageDesk : public PagePointing {
    Q_OBJECT
public:
    using PagePointing::PagePointing;

    /// The page that casts the shadow.
    void setPage(const PageView* page) { m_page = page; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PageView* m_page = nullptr;
};

/// The hidden box on whose picture a preview's page is composed.
class PageBox : public QWidget {
public:
    PageBox(double dotsPerInch, QWidget* parent);

    [[nodiscard]] PicturePage& page() { return m_page; }

private:
    PicturePage m_page;
};

} // namespace sixtrace
