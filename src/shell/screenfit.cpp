// SPDX-License-Identifier: MIT
#include "shell/screenfit.h"

#include <QMainWindow>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace sixtrace {

namespace {
/// What a window manager usually adds above a window, pixels. At the sides it adds next to nothing.
constexpr int kTitleHeight = 40;
} // namespace

void fitToScreen(QMainWindow& form, QWidget& client, const QSize& clientSize, int barHeight, const QRect& freeArea) {
    const QSize whole(clientSize.width(), clientSize.height() + barHeight);
    const QSize room(freeArea.width(), freeArea.height() - kTitleHeight);
    if (whole.width() <= room.width() && whole.height() <= room.height()) {
        form.setCentralWidget(&client);
        form.setFixedSize(whole);
        return;
    }
    client.setFixedSize(clientSize);
    auto* area = new QScrollArea(&form);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(&client);
    form.setCentralWidget(area);
    // A scroll bar of one direction needs room in the other.
    const int bar = area->verticalScrollBar()->sizeHint().width();
    QSize size = whole;
    if (whole.height() > room.height()) {
        size.setWidth(size.width() + bar);
    }
    if (whole.width() > room.width()) {
        size.setHeight(size.height() + bar);
    }
    // At fractional display scales the sizes may differ by half a pixel, which must not bring up another scroll bar.
    if (size.width() <= room.width()) {
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    if (size.height() <= room.height()) {
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    form.setMaximumSize(whole + QSize(bar, bar));
    form.resize(size.boundedTo(room));
}

QPoint centredPlace(const QSize& window, const QRect& screen, const QRect& freeArea) {
    const int left = screen.left() + (screen.width() - window.width()) / 2;
    const int top = screen.top() + (screen.height() - window.height()) / 2;
    return {std::max(left, freeArea.left()), std::max(top, freeArea.top())};
}

} // namespace sixtrace
