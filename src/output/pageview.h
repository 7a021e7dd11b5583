// SPDX-License-Identifier: MIT
#pragma once

#include "platform/printing/picturepage.h"

#include <QWidget>

namespace sixtrace {

/// A widget with signals of the mouse. The coordinates are twips inside the widget.
class PagePointing : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button, double x, double y);
    /// `buttons` are those that are down.
    void mouseMove(Qt::MouseButtons buttons, double x, double y);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

/// Shows the picture of a page, stretched to the size of the widget. Place and size are kept in twips; the widget has
/// the nearest pixels.
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
    QImage m_reduced; ///< the picture at the size of the widget, when that is smaller
};

/// The ground behind a page, with a soft shadow of the page.
class PageDesk : public PagePointing {
    Q_OBJECT
public:
    using PagePointing::PagePointing;

    /// Sets the page that has the shadow.
    void setPage(const PageView* page) { m_page = page; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PageView* m_page = nullptr;
};

/// The hidden widget with the picture that the preview's page is composed on.
class PageBox : public QWidget {
public:
    PageBox(double dotsPerInch, QWidget* parent);

    [[nodiscard]] PicturePage& page() { return m_page; }

private:
    PicturePage m_page;
};

} // namespace sixtrace
