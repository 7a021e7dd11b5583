// SPDX-License-Identifier: MIT
#include "platform/controls/listcombo.h"

#include "platform/controls/look.h"

#include <QPainter>
#include <QWheelEvent>

namespace sixtrace {

ListCombo::ListCombo(QWidget* parent)
    : QComboBox(parent) {
    setMaxVisibleItems(14);
    connect(this, &QComboBox::activated, this, &ListCombo::Click);
}

void ListCombo::setListIndex(int index) {
    if (index < -1 || index >= count() || index == currentIndex()) {
        return;
    }
    setCurrentIndex(index);
    Q_EMIT Click();
}

void ListCombo::setList(int index, const QString& text) {
    if (index >= 0 && index < count()) {
        setItemText(index, text);
    }
}

void ListCombo::setText(const QString& text) {
    for (int i = 0; i < count(); ++i) {
        if (itemText(i) == text) {
            setCurrentIndex(i);
            return;
        }
    }
}

void ListCombo::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        paintFocusLine(painter, rect(), 2);
    }
}

void ListCombo::wheelEvent(QWheelEvent* event) {
    // A wheel turned while the pointer passes over the list would change a range unnoticed.
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

} // namespace sixtrace
