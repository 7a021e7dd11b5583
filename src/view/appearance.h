// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

class QAction;

namespace sixtrace {

/// How the screen looks: dotted graticule or cross, lines or points. The ticks of the menu are the state; the toolbar
/// shows the same ticks. Owned by the window, as are its actions.
class Appearance : public QObject {
public:
    struct Widgets {
        QAction* mnuGraticule;
        QAction* mnuLine;
        QAction* mnuPoint;
    };

    Appearance(const Widgets& widgets, QObject* parent);

    [[nodiscard]] bool graticule() const;
    [[nodiscard]] bool line() const;
    void setGraticule(bool ticked);
    void setLine(bool ticked);
    void setPoint(bool ticked);

private:
    Widgets m_widgets;
};

} // namespace sixtrace
