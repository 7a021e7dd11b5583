// SPDX-License-Identifier: MIT
#include "view/markerkeys.h"

#include "platform/controls/markerlabel.h"
#include "view/screenmouse.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include <algorithm>

namespace sixtrace {

MarkerKeys::MarkerKeys(ScreenMouse& mouse, const PerChannel<MarkerLabel*>& image1, std::function<void()> moved,
                       QObject* parent)
    : QObject(parent)
    , m_mouse(mouse)
    , m_image1(image1)
    , m_moved(std::move(moved)) {
    for (MarkerLabel* marker : m_image1) {
        marker->setFocusPolicy(Qt::StrongFocus);
        marker->installEventFilter(this);
    }
}

bool MarkerKeys::eventFilter(QObject* watched, QEvent* event) {
    const auto at = std::find(m_image1.begin(), m_image1.end(), watched);
    if (at == m_image1.end()) {
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::FocusIn:
        (*at)->setFocusLine(static_cast<QFocusEvent*>(event)->reason() != Qt::MouseFocusReason);
        break;
    case QEvent::FocusOut:
        (*at)->setFocusLine(false);
        break;
    case QEvent::KeyPress:
        if (const int key = static_cast<QKeyEvent*>(event)->key(); key == Qt::Key_Up || key == Qt::Key_Down) {
            (*at)->setFocusLine(true);
            m_mouse.moveMarkerBy(static_cast<int>(at - m_image1.begin()), ScreenY(key == Qt::Key_Up ? -1 : 1));
            m_moved();
            return true;
        } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Q_EMIT(*at)->doubleClicked();
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace sixtrace
