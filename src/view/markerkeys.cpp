// SPDX-License-Identifier: MIT
#include "view/markerkeys.h"

#include "capture/capturefile.h"
#include "platform/markerlabel.h"
#include "view/geometry.h"
#include "view/markerstrip.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QKeyEvent>

#include <algorithm>

namespace sixtrace {

MarkerKeys::MarkerKeys(MarkerStrip& strip, const PerChannel<MarkerLabel*>& image1, QObject* parent)
    : QObject(parent)
    , m_strip(strip)
    , m_image1(image1) {
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
            step(static_cast<int>(at - m_image1.begin()), key == Qt::Key_Up ? -1 : 1);
            return true;
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void MarkerKeys::step(int channel, int units) {
    constexpr double kUnit = kStripHeight / kScreenHeight;
    const double top = m_strip.markerTop(channel) + units * kUnit;
    // A marker that the mouse holds belongs to the mouse.
    if (QGuiApplication::mouseButtons() != Qt::NoButton || top < MarkerStrip::kStandByTop ||
        top > MarkerStrip::kStandByBottom) {
        return;
    }
    m_strip.image1_MouseDown(channel, 1, 0, 0);
    m_strip.image1_MouseMove(channel, 1, 0, units * kUnit);
    m_strip.image1_MouseUp(channel, 1, 0, 0);
}

} // namespace sixtrace
