// SPDX-License-Identifier: MIT
#include "view/appearance.h"

#include <QAction>

namespace sixtrace {

Appearance::Appearance(const Widgets& widgets, QObject* parent)
    : QObject(parent)
    , m_widgets(widgets) {}

bool Appearance::graticule() const {
    return m_widgets.mnuGraticule->isChecked();
}
bool Appearance::line() const {
    return m_widgets.mnuLine->isChecked();
}
void Appearance::setGraticule(bool ticked) {
    m_widgets.mnuGraticule->setChecked(ticked);
}
void Appearance::setLine(bool ticked) {
    m_widgets.mnuLine->setChecked(ticked);
}
void Appearance::setPoint(bool ticked) {
    m_widgets.mnuPoint->setChecked(ticked);
}

} // namespace sixtrace
