// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"

#include <QObject>

#include <functional>

namespace sixtrace {

class MarkerLabel;
class ScreenMouse;

/// Keys for the zero marker that has the focus: the arrows move it by one screen unit, and the trace, the bar and the
/// readouts follow; Enter does what a double click does. Owned by the window.
class MarkerKeys : public QObject {
public:
    /// `moved` is called after every key that may have changed something.
    MarkerKeys(ScreenMouse& mouse, const PerChannel<MarkerLabel*>& image1, std::function<void()> moved,
               QObject* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ScreenMouse& m_mouse;
    PerChannel<MarkerLabel*> m_image1;
    std::function<void()> m_moved;
};

} // namespace sixtrace
