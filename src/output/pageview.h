// SPDX-License-Identifier: MIT
#pragma once

#include "platform/drawing/lengths.h"
#include "platform/printing/picturepage.h"

#include <QWidget>

namespace sixtrace {

/// A widget with signals of the mouse, whose places count from the widget's corner.
class PagePointing : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

Q_SIGNALS:
    void mouseDown(Qt::MouseButton button, Twips x, Twips y);
    /// `buttons` are those that are down.
    void mouseMove(Qt::MouseButtons buttons, Twips x, Twips y);

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

    [[nodiscard]] Twips Left() const { return m_left; }
    [[nodiscard]] Twips Top() const { return m_top; }
    [[nodiscard]] Twips Width() const { return m_width; }
    [[nodiscard]] Twips Height() const { return m_height; }
    void setSize(Twips width, Twips height);
    void Move(Twips left, Twips top);

    [[nodiscard]] const QImage& Picture() const { return m_picture; }
    void setPicture(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();

    Twips m_left;
    Twips m_top;
    Twips m_width;
    Twips m_height;
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
